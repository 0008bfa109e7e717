#include "device/driverfolder.h"

#include "device/ifpax.h"
#include "device/krdlibrary.h"

#include <QTest>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

using LUM::Fpax::IFpax;
using Library = KRDLibrary<IFpax>;

namespace {

/// One call through the program's interface: what it must leave in the driver's record, and what must come back.
struct Operation
{
    const char* name;
    QString recorded;                       ///< the arguments in the record
    std::function<QVariant(IFpax&)> run;    ///< what the driver wrote, or nothing
    std::function<QVariant(int)> expected;  ///< the same for the operation that stands at this place, from 1
    std::function<int(int)> expectedStatus; ///< likewise
};

// Set by each call, to be compared after it.
int lastStatus = 0;

int itsPlace(int place)
{
    return place;
}

QVariant nothing(int)
{
    return {};
}

QString textOf(const char* name)
{
    return QStringLiteral("text of %1").arg(QLatin1String(name));
}

Operation execute(const char* name, int (IFpax::*call)())
{
    const auto run = [call](IFpax& driver) {
        lastStatus = (driver.*call)();
        return QVariant();
    };
    return {name, QString(), run, nothing, itsPlace};
}

Operation setNumber(const char* name, int (IFpax::*call)(int))
{
    const auto run = [call](IFpax& driver) {
        lastStatus = (driver.*call)(-70123);
        return QVariant();
    };
    return {name, QStringLiteral("-70123"), run, nothing, itsPlace};
}

Operation setSum(const char* name, int (IFpax::*call)(double))
{
    const auto run = [call](IFpax& driver) {
        lastStatus = (driver.*call)(-1234567.0625);
        return QVariant();
    };
    return {name, QStringLiteral("-1234567.0625"), run, nothing, itsPlace};
}

Operation setText(const char* name, int (IFpax::*call)(const wchar_t*))
{
    const auto run = [call](IFpax& driver) {
        lastStatus = (driver.*call)(L"Чек \U0001F9FE 1");
        return QVariant();
    };
    return {name, QStringLiteral("\"Чек 🧾 1\""), run, nothing, itsPlace};
}

Operation number(const char* name, int (IFpax::*call)(int*))
{
    const auto run = [call](IFpax& driver) {
        int value = -1;
        lastStatus = (driver.*call)(&value);
        return QVariant(value);
    };
    return {name, QString(), run, [](int place) { return QVariant(7000 + place); }, itsPlace};
}

Operation sum(const char* name, int (IFpax::*call)(double*))
{
    const auto run = [call](IFpax& driver) {
        double value = -1;
        lastStatus = (driver.*call)(&value);
        return QVariant(value);
    };
    return {name, QString(), run, [](int place) { return QVariant(7000.125 + place); }, itsPlace};
}

std::function<int(int)> lengthOf(const QString& text)
{
    return [length = static_cast<int>(text.size())](int) { return length; };
}

Operation text(const char* name, int (IFpax::*call)(wchar_t*, int))
{
    const auto run = [call](IFpax& driver) {
        std::vector<wchar_t> buffer(77, L'?');
        lastStatus = (driver.*call)(buffer.data(), 77);
        return QVariant(QString::fromWCharArray(buffer.data()));
    };
    const auto expected = [name](int) { return QVariant(textOf(name)); };
    return {name, QStringLiteral("77"), run, expected, lengthOf(textOf(name))};
}

Operation namedText(const char* name, int (IFpax::*call)(const wchar_t*, wchar_t*, int))
{
    const auto run = [call](IFpax& driver) {
        std::vector<wchar_t> buffer(77, L'?');
        lastStatus = (driver.*call)(L"Имя", buffer.data(), 77);
        return QVariant(QString::fromWCharArray(buffer.data()));
    };
    const auto expected = [name](int) { return QVariant(textOf(name)); };
    return {name, QStringLiteral("\"Имя\", 77"), run, expected, lengthOf(textOf(name))};
}

Operation setNamedText(const char* name, int (IFpax::*call)(const wchar_t*, const wchar_t*))
{
    const auto run = [call](IFpax& driver) {
        lastStatus = (driver.*call)(L"Имя", L"значение");
        return QVariant();
    };
    return {name, QStringLiteral("\"Имя\", \"значение\""), run, nothing, itsPlace};
}

/// All operations of a driver in their order.
const std::vector<Operation>& operations()
{
    static const std::vector<Operation> list = {
        text("getDriverVersion", &IFpax::getDriverVersion),
        text("getDriverName", &IFpax::getDriverName),
        setNumber("setDeviceEnabled", &IFpax::setDeviceEnabled),
        number("getResultCode", &IFpax::getResultCode),
        text("getResultDescription", &IFpax::getResultDescription),
        number("getBadParam", &IFpax::getBadParam),
        text("getBadParamDescription", &IFpax::getBadParamDescription),
        execute("ShowProperties", &IFpax::ShowProperties),
        namedText("getSingleSetting", &IFpax::getSingleSetting),
        setNamedText("setSingleSetting", &IFpax::setSingleSetting),
        namedText("getSingleMapping", &IFpax::getSingleMapping),
        execute("applySingleSettings", &IFpax::applySingleSettings),
        text("getCaption", &IFpax::getCaption),
        setText("setCaption", &IFpax::setCaption),
        execute("readStatus", &IFpax::readStatus),
        text("getSerialNumber", &IFpax::getSerialNumber),
        number("getFiscal", &IFpax::getFiscal),
        execute("enterMode", &IFpax::enterMode),
        execute("resetMode", &IFpax::resetMode),
        setNumber("setMode", &IFpax::setMode),
        execute("makePayment", &IFpax::makePayment),
        setNumber("setPaymentType", &IFpax::setPaymentType),
        sum("getSumm", &IFpax::getSumm),
        setSum("setSumm", &IFpax::setSumm),
        execute("openCheck", &IFpax::openCheck),
        execute("closeCheck", &IFpax::closeCheck),
        execute("cancelCheck", &IFpax::cancelCheck),
        setNumber("setCheckType", &IFpax::setCheckType),
        number("getCheckState", &IFpax::getCheckState),
        number("getSessionOpened", &IFpax::getSessionOpened),
        setText("setPositionName", &IFpax::setPositionName),
        setSum("setPrice", &IFpax::setPrice),
        setSum("setQuantity", &IFpax::setQuantity),
        setNumber("setPositionGroup", &IFpax::setPositionGroup),
        setNumber("setRoundTarget", &IFpax::setRoundTarget),
        execute("registerPosition", &IFpax::registerPosition),
        execute("makeReport", &IFpax::makeReport),
        setNumber("setReportType", &IFpax::setReportType),
        number("getModelId", &IFpax::getModelId),
        setNumber("setPositionTax", &IFpax::setPositionTax),
        execute("applyRounding", &IFpax::applyRounding),
        setNumber("setTableNumber", &IFpax::setTableNumber),
        setNumber("setRowNumber", &IFpax::setRowNumber),
        setNumber("setFieldNumber", &IFpax::setFieldNumber),
        setNumber("setFieldType", &IFpax::setFieldType),
        execute("writeTableField", &IFpax::writeTableField),
        execute("readTableField", &IFpax::readTableField),
        setText("setCommandBuffer", &IFpax::setCommandBuffer),
        text("getAnswerBuffer", &IFpax::getAnswerBuffer),
        execute("execCommandBuffer", &IFpax::execCommandBuffer),
        setNumber("setUnitType", &IFpax::setUnitType),
        number("getCharLineLength", &IFpax::getCharLineLength),
        text("getUnitVersionMajor", &IFpax::getUnitVersionMajor),
        text("getUnitVersionMinor", &IFpax::getUnitVersionMinor),
        text("getUnitVersionBuild", &IFpax::getUnitVersionBuild),
        setNumber("setRoundMode", &IFpax::setRoundMode),
        execute("makePaymentVariant", &IFpax::makePaymentVariant),
        text("getDeviceDescription", &IFpax::getDeviceDescription),
        setNumber("setTagNumber", &IFpax::setTagNumber),
        setText("setTagValue", &IFpax::setTagValue),
        setNumber("setTagType", &IFpax::setTagType),
        setNumber("setTagPrint", &IFpax::setTagPrint),
        execute("writeTag", &IFpax::writeTag),
        execute("readUnitVersion", &IFpax::readUnitVersion),
        setSum("setPositionSum", &IFpax::setPositionSum),
    };
    return list;
}

} // namespace

/// A driver that was built from the list of operations alone answers through the program's own interface.
class TestDriverContract : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { forgetContractCalls(*library); }
    void factoryIsAskedForVersion13();
    void everyOperationReachesItsSlot_data();
    void everyOperationReachesItsSlot();
    void allOperationsInARowReachTheDriverInTheirOrder();
    void textThatDoesNotFitIsCutByTheDriver();
    void releaseFunctionGetsTheInstance();
    void cleanupTestCase() { library.reset(); }

private:
    DriverFolder folder;
    std::unique_ptr<Library> library;
    IFpax* driver = nullptr;
};

void TestDriverContract::initTestCase()
{
    QVERIFY(folder.install("contract_driver"));
    library = std::make_unique<Library>(folder.driverPath(), "Fpax");
    QVERIFY2(library->load(), qPrintable(library->errorString()));
    driver = library->CoCreateInstance(13);
    QVERIFY(driver);
}

void TestDriverContract::factoryIsAskedForVersion13()
{
    QCOMPARE(LUM::Fpax::kInterfaceVersion, 13);
    QCOMPARE(library->CoCreateInstance(LUM::Fpax::kInterfaceVersion), driver);
    QCOMPARE(contractCalls(*library), QStringList("CreateFpaxInterface(13)"));
}

void TestDriverContract::everyOperationReachesItsSlot_data()
{
    QTest::addColumn<int>("place");
    QCOMPARE(operations().size(), std::size_t{65});
    int place = 0;
    for (const Operation& operation : operations())
        QTest::newRow(operation.name) << ++place;
}

void TestDriverContract::everyOperationReachesItsSlot()
{
    QFETCH(const int, place);
    const Operation& operation = operations().at(static_cast<std::size_t>(place) - 1);

    const QVariant written = operation.run(*driver);

    QCOMPARE(contractCalls(*library),
             QStringList(QLatin1String(operation.name) + u'(' + operation.recorded + u')'));
    QCOMPARE(written, operation.expected(place));
    QCOMPARE(lastStatus, operation.expectedStatus(place));
}

void TestDriverContract::allOperationsInARowReachTheDriverInTheirOrder()
{
    QStringList expected;
    for (const Operation& operation : operations()) {
        operation.run(*driver);
        expected.append(QLatin1String(operation.name) + u'(' + operation.recorded + u')');
    }

    QCOMPARE(contractCalls(*library), expected);
}

void TestDriverContract::textThatDoesNotFitIsCutByTheDriver()
{
    std::vector<wchar_t> buffer(8, L'?');

    const int length = driver->getCaption(buffer.data(), 7);

    QCOMPARE(length, static_cast<int>(textOf("getCaption").size()));
    QCOMPARE(QString::fromWCharArray(buffer.data()), QString("text o"));
    QCOMPARE(buffer.back(), L'?');
}

void TestDriverContract::releaseFunctionGetsTheInstance()
{
    IFpax* instance = driver;

    library->CoReleaseInstance(&instance);

    QVERIFY(!instance);
    QCOMPARE(contractCalls(*library), QStringList("ReleaseFpaxInterface(\"own instance\")"));
}

QTEST_APPLESS_MAIN(TestDriverContract)

#include "tst_driver_contract.moc"
