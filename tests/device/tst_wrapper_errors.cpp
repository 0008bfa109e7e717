#include "device/throwntext.h"
#include "support/recordingdriver.h"

#include "device/exception.h"
#include "device/qlumfpax.h"

#include <QTest>

#include <climits>
#include <stdexcept>
#include <type_traits>

using LUM::Fpax::IFpax;

/// The exceptions of the device layer, and the way from a bad status to one of them.
class TestWrapperErrors : public QObject
{
    Q_OBJECT

private slots:
    void exceptionKeepsItsText_data();
    void exceptionKeepsItsText();
    void exceptionIsAStandardOne();
    void missingDeviceHasAFixedText();
    void copyKeepsItsText();

    void goodStatusAsksTheDriverNothing_data();
    void goodStatusAsksTheDriverNothing();
    void badStatusWithoutACodeComesBack_data();
    void badStatusWithoutACodeComesBack();
    void badStatusWithACodeThrowsTheDriversWords_data();
    void badStatusWithACodeThrowsTheDriversWords();
    void parameterIsNamedOnlyIfItWasAtFault();
    void getterOfTheCodeMayFailItself();
    void longDescriptionComesWhole();
    void exceptionOfTheDriverPassesThrough();
};

void TestWrapperErrors::exceptionKeepsItsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString("");
    QTest::newRow("latin") << QString("no paper");
    QTest::newRow("russian") << QString("Нет бумаги");
    QTest::newRow("outside the first plane") << QString("чек 🧾");
    QTest::newRow("placeholders") << QString("%1 и %2, 100%");
    QTest::newRow("long") << QString(100'000, u'ы');
}

void TestWrapperErrors::exceptionKeepsItsText()
{
    QFETCH(const QString, text);
    const QByteArray utf8 = text.toUtf8();

    const Exception fromText(text);
    const Exception fromBytes(utf8.constData());

    for (const Exception* const error : {&fromText, &fromBytes}) {
        QCOMPARE(error->whatQString(), text);
        QCOMPARE(QByteArray(error->what()), utf8);
        // Asked again it says the same.
        QCOMPARE(QByteArray(error->what()), utf8);
    }
}

void TestWrapperErrors::exceptionIsAStandardOne()
{
    static_assert(std::is_base_of_v<std::exception, Exception>);
    static_assert(std::is_base_of_v<Exception, DeviceNotFoundException>);
    try {
        throw Exception(QStringLiteral("Нет бумаги"));
    } catch (const std::exception& error) {
        QCOMPARE(QByteArray(error.what()), QByteArray("Нет бумаги"));
        return;
    }
    QFAIL("nothing was caught");
}

void TestWrapperErrors::missingDeviceHasAFixedText()
{
    const DeviceNotFoundException error;

    QCOMPARE(error.whatQString(), QString("Несуществующее устройство"));
    QCOMPARE(QByteArray(error.what()), QByteArray("Несуществующее устройство"));
}

void TestWrapperErrors::copyKeepsItsText()
{
    const Exception* original = new Exception("Нет бумаги");
    const QByteArray before = original->what();
    const Exception copy = *original;
    delete original;

    QCOMPARE(copy.whatQString(), QString("Нет бумаги"));
    QCOMPARE(QByteArray(copy.what()), before);
}

void TestWrapperErrors::goodStatusAsksTheDriverNothing_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("0") << 0;
    QTest::newRow("5") << 5;
    QTest::newRow("greatest") << INT_MAX;
}

void TestWrapperErrors::goodStatusAsksTheDriverNothing()
{
    QFETCH(const int, status);
    RecordingDriver driver;
    driver.resultCode = -3;
    QLumFpax wrapper(&driver);

    QCOMPARE(wrapper.raiseError(status), status);

    QCOMPARE(driver.calls(), QStringList());
}

void TestWrapperErrors::badStatusWithoutACodeComesBack_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("-1") << -1;
    QTest::newRow("-6") << -6;
    QTest::newRow("least") << INT_MIN;
}

void TestWrapperErrors::badStatusWithoutACodeComesBack()
{
    QFETCH(const int, status);
    RecordingDriver driver;
    driver.setText("getResultDescription", "Ошибок нет");
    driver.setNumber("getBadParam", 1);
    QLumFpax wrapper(&driver);

    QCOMPARE(wrapper.raiseError(status), status);

    QCOMPARE(driver.calls(), QStringList("getResultCode()"));
}

void TestWrapperErrors::badStatusWithACodeThrowsTheDriversWords_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("description");
    QTest::addColumn<int>("badParam");
    QTest::addColumn<QString>("badParamText");
    QTest::addColumn<QString>("expected");

    QTest::newRow("description alone") << -3 << "Нет связи" << 0 << ""
                                       << "[-3] Нет связи";
    QTest::newRow("positive code") << 17 << "Нет бумаги" << 0 << ""
                                   << "[17] Нет бумаги";
    QTest::newRow("least code") << INT_MIN << "?" << 0 << ""
                                << "[-2147483648] ?";
    QTest::newRow("no description") << -3 << "" << 0 << ""
                                    << "[-3] ";
    QTest::newRow("bad parameter") << -3 << "Ошибка" << 1 << "Цена"
                                   << "[-3] Ошибка (Цена)";
    QTest::newRow("bad parameter by a negative number") << -3 << "Ошибка" << -1 << "Цена"
                                                        << "[-3] Ошибка (Цена)";
    QTest::newRow("bad parameter without a name") << -3 << "Ошибка" << 1 << ""
                                                  << "[-3] Ошибка";
    QTest::newRow("neither description nor name") << -3 << "" << 1 << ""
                                                  << "[-3] ";
    QTest::newRow("bad parameter without a description") << -3 << "" << 1 << "Цена"
                                                         << "[-3]  (Цена)";
    QTest::newRow("placeholders in the description") << -3 << "100%1 и %2 %L1" << 0 << ""
                                                     << "[-3] 100%1 и %2 %L1";
    QTest::newRow("placeholders in both texts") << -3 << "%2 %1" << 1 << "%1 %2"
                                                << "[-3] %2 %1 (%1 %2)";
}

void TestWrapperErrors::badStatusWithACodeThrowsTheDriversWords()
{
    QFETCH(const int, code);
    QFETCH(const QString, description);
    QFETCH(const int, badParam);
    QFETCH(const QString, badParamText);
    QFETCH(const QString, expected);
    RecordingDriver driver;
    driver.resultCode = code;
    driver.setText("getResultDescription", description);
    driver.setNumber("getBadParam", badParam);
    driver.setText("getBadParamDescription", badParamText);
    QLumFpax wrapper(&driver);

    QCOMPARE(thrownText([&] { wrapper.raiseError(-1); }), expected);

    QStringList calls = {"getResultCode()", "getResultDescription(4096)", "getBadParam()"};
    if (badParam != 0)
        calls += "getBadParamDescription(4096)";
    QCOMPARE(driver.calls(), calls);
}

void TestWrapperErrors::parameterIsNamedOnlyIfItWasAtFault()
{
    RecordingDriver driver;
    driver.resultCode = -8;
    driver.setText("getResultDescription", "Неверное значение");
    driver.setText("getBadParamDescription", "Цена");
    QLumFpax wrapper(&driver);

    QCOMPARE(thrownText([&] { wrapper.raiseError(-1); }), QString("[-8] Неверное значение"));

    driver.setNumber("getBadParam", 1);
    QCOMPARE(thrownText([&] { wrapper.raiseError(-1); }), QString("[-8] Неверное значение (Цена)"));
}

void TestWrapperErrors::getterOfTheCodeMayFailItself()
{
    RecordingDriver driver;
    driver.resultCode = -3;
    for (const QString getter :
         {"getResultCode", "getResultDescription", "getBadParam", "getBadParamDescription"})
        driver.answer(getter, {-1, -99});
    driver.setNumber("getBadParam", 1);
    QLumFpax wrapper(&driver);

    QCOMPARE(thrownText([&] { wrapper.raiseError(-1); }), QString("[-3] "));
}

void TestWrapperErrors::longDescriptionComesWhole()
{
    RecordingDriver driver;
    driver.resultCode = -3;
    const QString description(5000, u'ж');
    driver.setText("getResultDescription", description);
    QLumFpax wrapper(&driver);

    QCOMPARE(thrownText([&] { wrapper.raiseError(-1); }), "[-3] " + description);

    QCOMPARE(driver.callsOf("getResultDescription"),
             QStringList({"getResultDescription(4096)", "getResultDescription(5001)"}));
}

void TestWrapperErrors::exceptionOfTheDriverPassesThrough()
{
    RecordingDriver driver;
    driver.onCall("setMode", [] { throw std::logic_error("the driver's own"); });
    QLumFpax wrapper(&driver);

    QVERIFY_THROWS_EXCEPTION(std::logic_error, wrapper.setInt(&IFpax::setMode, 4));

    QCOMPARE(driver.calls(), QStringList("setMode(4)"));
}

QTEST_APPLESS_MAIN(TestWrapperErrors)

#include "tst_wrapper_errors.moc"
