#include "device/throwntext.h"
#include "support/recordingdriver.h"

#include "device/qlumfpax.h"

#include <QTest>

#include <functional>
#include <string>
#include <vector>

using LUM::Fpax::IFpax;
using Bytes = QVector<unsigned char>;

namespace {

using DateGetter = int (IFpax::*)(int*, int*, int*);
using DateSetter = int (IFpax::*)(int, int, int);

/// A driver with a calendar and a clock.
class ClockDriver final : public RecordingDriver
{
public:
    int getMoment(int* first, int* second, int* third)
    {
        const int status = enter("getMoment").status;
        if (filled > 0)
            *first = numbers.at(0);
        if (filled > 1)
            *second = numbers.at(1);
        if (filled > 2)
            *third = numbers.at(2);
        return status;
    }
    int setMoment(int first, int second, int third)
    {
        return execute("setMoment",
                       {QString::number(first), QString::number(second), QString::number(third)});
    }

    static DateGetter getter() { return static_cast<DateGetter>(&ClockDriver::getMoment); }
    static DateSetter setter() { return static_cast<DateSetter>(&ClockDriver::setMoment); }

    std::vector<int> numbers = {0, 0, 0};
    int filled = 3;
};

/// One operation of the wrapper that hands its status to the check, with the call that it makes.
struct Checked
{
    const char* name;
    QString operation;
    QString call;
    std::function<int(QLumFpax&)> run;
};

const std::vector<Checked>& checkedOperations()
{
    static const std::vector<Checked> list = {
        {"setInt", "setMode", "setMode(-4)", [](QLumFpax& w) { return w.setInt(&IFpax::setMode, -4); }},
        {"setBool true", "setDeviceEnabled", "setDeviceEnabled(1)",
         [](QLumFpax& w) { return w.setBool(&IFpax::setDeviceEnabled, true); }},
        {"setBool false", "setDeviceEnabled", "setDeviceEnabled(0)",
         [](QLumFpax& w) { return w.setBool(&IFpax::setDeviceEnabled, false); }},
        {"setDouble", "setPrice", "setPrice(-12.5)",
         [](QLumFpax& w) { return w.setDouble(&IFpax::setPrice, -12.5); }},
        {"setText", "setCaption", "setCaption(\"Чек 🧾 %1\")",
         [](QLumFpax& w) { return w.setText(&IFpax::setCaption, "Чек 🧾 %1"); }},
        {"execMethod", "enterMode", "enterMode()",
         [](QLumFpax& w) { return w.execMethod(&IFpax::enterMode); }},
        {"setDate", "setMoment", "setMoment(9, 5, 2026)",
         [](QLumFpax& w) { return w.setDate(ClockDriver::setter(), QDate(2026, 5, 9)); }},
        {"setTime", "setMoment", "setMoment(23, 59, 7)",
         [](QLumFpax& w) { return w.setTime(ClockDriver::setter(), QTime(23, 59, 7, 999)); }},
    };
    return list;
}

void addCheckedRows()
{
    QTest::addColumn<int>("index");
    int index = 0;
    for (const Checked& checked : checkedOperations())
        QTest::newRow(checked.name) << index++;
}

const Checked& checkedAt(int index)
{
    return checkedOperations().at(static_cast<std::size_t>(index));
}

} // namespace

/// The calls of the wrappers: what reaches the driver, and what comes back.
class TestWrappers : public QObject
{
    Q_OBJECT

private slots:
    void withoutADriverNothingWorks_data();
    void withoutADriverNothingWorks();
    void bufferSizesNeedNoDriver();
    void driverIsForDirectCalls();
    void wrapperLeavesTheDriverAlone();

    void statusOfAGoodCallComesBack_data() { addCheckedRows(); }
    void statusOfAGoodCallComesBack();
    void badStatusWithoutACodeComesBack_data() { addCheckedRows(); }
    void badStatusWithoutACodeComesBack();
    void badStatusWithACodeThrows_data() { addCheckedRows(); }
    void badStatusWithACodeThrows();

    void numberComesWhateverTheStatus();
    void numberThatIsNotFilledInIsZero();

    void dateIsDayMonthYear();
    void dateThatDoesNotExistIsInvalid();
    void timeIsHourMinuteSecond();
    void timeThatIsNotFilledInIsMidnight();
    void dateAndTimeComeWhateverTheStatus();
    void invalidDateIsSentAsZeros();
};

void TestWrappers::withoutADriverNothingWorks_data()
{
    using Action = std::function<void(QLumFpax&)>;
    QTest::addColumn<Action>("action");
    const auto row = [](const char* name, const Action& action) { QTest::newRow(name) << action; };

    row("driver", [](QLumFpax& w) { w.driver(); });
    row("getInt", [](QLumFpax& w) { w.getInt(&IFpax::getFiscal); });
    row("setInt", [](QLumFpax& w) { w.setInt(&IFpax::setMode, 4); });
    row("setBool", [](QLumFpax& w) { w.setBool(&IFpax::setDeviceEnabled, true); });
    row("setDouble", [](QLumFpax& w) { w.setDouble(&IFpax::setPrice, 1.5); });
    row("setText", [](QLumFpax& w) { w.setText(&IFpax::setCaption, "1"); });
    row("execMethod", [](QLumFpax& w) { w.execMethod(&IFpax::enterMode); });
    row("getBuff", [](QLumFpax& w) { w.getBuff(&IFpax::getCaption); });
    row("getSetting", [](QLumFpax& w) { w.getSetting("Port"); });
    row("getMapping", [](QLumFpax& w) { w.getMapping("Port"); });
    row("setSetting text", [](QLumFpax& w) { w.setSetting("Port", QString("COM1")); });
    row("setSetting number", [](QLumFpax& w) { w.setSetting("Port", 1); });
    row("setSetting bytes", [](QLumFpax& w) { w.setSetting("Port", "COM1"); });
    row("raiseError of a good status", [](QLumFpax& w) { w.raiseError(5); });
    row("raiseError of a bad status", [](QLumFpax& w) { w.raiseError(-1); });
    row("runCommand of bytes", [](QLumFpax& w) { w.runCommand(Bytes{0x51}); });
    row("runCommand of text", [](QLumFpax& w) { w.runCommand(std::string("51")); });
    row("getDate", [](QLumFpax& w) { w.getDate(ClockDriver::getter()); });
    row("getTime", [](QLumFpax& w) { w.getTime(ClockDriver::getter()); });
    row("setDate", [](QLumFpax& w) { w.setDate(ClockDriver::setter(), QDate(2026, 5, 9)); });
    row("setTime", [](QLumFpax& w) { w.setTime(ClockDriver::setter(), QTime(1, 2, 3)); });
}

void TestWrappers::withoutADriverNothingWorks()
{
    QFETCH(const std::function<void(QLumFpax&)>, action);
    QLumFpax withoutArgument;
    QLumFpax withNull(nullptr);

    for (QLumFpax* const wrapper : {&withoutArgument, &withNull}) {
        QString text;
        try {
            action(*wrapper);
        } catch (const DeviceNotFoundException& error) {
            text = error.whatQString();
        }
        QCOMPARE(text, QString("Несуществующее устройство"));
    }
}

void TestWrappers::bufferSizesNeedNoDriver()
{
    const QLumInterface<IFpax> base(nullptr);
    const QLumFpax derived;
    const QLumInterface<IFpax>& seenAsBase = derived;

    QCOMPARE(base.defaultBufferSize(), 1024);
    QCOMPARE(derived.defaultBufferSize(), 4096);
    QCOMPARE(seenAsBase.defaultBufferSize(), 4096);
}

void TestWrappers::driverIsForDirectCalls()
{
    RecordingDriver driver;
    QLumFpax wrapper(&driver);

    QCOMPARE(wrapper.driver(), static_cast<IFpax*>(&driver));
    QCOMPARE(driver.calls(), QStringList());
}

void TestWrappers::wrapperLeavesTheDriverAlone()
{
    RecordingDriver driver;
    {
        const QLumFpax wrapper(&driver);
    }

    QCOMPARE(driver.calls(), QStringList());
    QCOMPARE(static_cast<IFpax&>(driver).setMode(1), 0);
}

void TestWrappers::statusOfAGoodCallComesBack()
{
    QFETCH(const int, index);
    const Checked& checked = checkedAt(index);
    ClockDriver driver;
    driver.answer(checked.operation, {7, 0});
    QLumFpax wrapper(&driver);

    QCOMPARE(checked.run(wrapper), 7);

    QCOMPARE(driver.calls(), QStringList(checked.call));
}

void TestWrappers::badStatusWithoutACodeComesBack()
{
    QFETCH(const int, index);
    const Checked& checked = checkedAt(index);
    ClockDriver driver;
    driver.answer(checked.operation, {-7, 0});
    QLumFpax wrapper(&driver);

    QCOMPARE(checked.run(wrapper), -7);

    QCOMPARE(driver.calls(), QStringList({checked.call, "getResultCode()"}));
}

void TestWrappers::badStatusWithACodeThrows()
{
    QFETCH(const int, index);
    const Checked& checked = checkedAt(index);
    ClockDriver driver;
    driver.answer(checked.operation, {-7, -11});
    driver.setText("getResultDescription", "Неверный режим");
    QLumFpax wrapper(&driver);

    QCOMPARE(thrownText([&] { checked.run(wrapper); }), QString("[-11] Неверный режим"));

    QCOMPARE(driver.count(checked.operation), 1);
}

void TestWrappers::numberComesWhateverTheStatus()
{
    RecordingDriver driver;
    driver.resultCode = -3;
    driver.setNumber("getModelId", 63);
    QLumFpax wrapper(&driver);

    QCOMPARE(wrapper.getInt(&IFpax::getModelId), 63);
    driver.answer("getModelId", {-1, -3});
    QCOMPARE(wrapper.getInt(&IFpax::getModelId), 63);

    QCOMPARE(driver.calls(), QStringList({"getModelId()", "getModelId()"}));
}

void TestWrappers::numberThatIsNotFilledInIsZero()
{
    RecordingDriver driver;
    driver.resultCode = -3;
    driver.answer("getModelId", {-1, -3});
    QLumFpax wrapper(&driver);

    QCOMPARE(wrapper.getInt(&IFpax::getModelId), 0);

    QCOMPARE(driver.calls(), QStringList("getModelId()"));
}

void TestWrappers::dateIsDayMonthYear()
{
    ClockDriver driver;
    driver.numbers = {9, 5, 2026};
    QLumFpax wrapper(&driver);

    QCOMPARE(wrapper.getDate(ClockDriver::getter()), QDate(2026, 5, 9));

    QCOMPARE(driver.calls(), QStringList("getMoment()"));
}

void TestWrappers::dateThatDoesNotExistIsInvalid()
{
    ClockDriver driver;
    driver.numbers = {30, 2, 2026};
    QLumFpax wrapper(&driver);

    QVERIFY(!wrapper.getDate(ClockDriver::getter()).isValid());
}

void TestWrappers::timeIsHourMinuteSecond()
{
    ClockDriver driver;
    driver.numbers = {23, 5, 59};
    QLumFpax wrapper(&driver);

    QCOMPARE(wrapper.getTime(ClockDriver::getter()), QTime(23, 5, 59, 0));

    QCOMPARE(driver.calls(), QStringList("getMoment()"));
}

void TestWrappers::timeThatIsNotFilledInIsMidnight()
{
    ClockDriver driver;
    driver.numbers = {23, 5, 59};
    QLumFpax wrapper(&driver);

    driver.filled = 0;
    QCOMPARE(wrapper.getTime(ClockDriver::getter()), QTime(0, 0));
    driver.filled = 1;
    QCOMPARE(wrapper.getTime(ClockDriver::getter()), QTime(23, 0));
    driver.filled = 2;
    QCOMPARE(wrapper.getTime(ClockDriver::getter()), QTime(23, 5));
}

void TestWrappers::dateAndTimeComeWhateverTheStatus()
{
    ClockDriver driver;
    driver.resultCode = -3;
    driver.answer("getMoment", {-1, -3});
    QLumFpax wrapper(&driver);

    driver.numbers = {1, 2, 2003};
    QCOMPARE(wrapper.getDate(ClockDriver::getter()), QDate(2003, 2, 1));
    driver.numbers = {1, 2, 3};
    QCOMPARE(wrapper.getTime(ClockDriver::getter()), QTime(1, 2, 3));

    QCOMPARE(driver.calls(), QStringList({"getMoment()", "getMoment()"}));
}

void TestWrappers::invalidDateIsSentAsZeros()
{
    ClockDriver driver;
    QLumFpax wrapper(&driver);

    QCOMPARE(wrapper.setDate(ClockDriver::setter(), QDate()), 0);

    QCOMPARE(driver.calls(), QStringList("setMoment(0, 0, 0)"));
}

QTEST_APPLESS_MAIN(TestWrappers)

#include "tst_wrappers.moc"
