#include "device/throwntext.h"
#include "support/recordingdriver.h"

#include "device/qlumfpax.h"

#include <QTest>

#include <climits>

/// Settings and mappings of the driver, by name.
class TestWrapperSettings : public QObject
{
    Q_OBJECT

private slots:
    void settingAndMappingGoByTheirNames();
    void settingIsStoredInAllForms_data();
    void settingIsStoredInAllForms();
    void numberIsStoredInDecimal_data();
    void numberIsStoredInDecimal();
    void refusedSettingThrows();
    void refusedSettingWithoutACodeIsSilent();
};

void TestWrapperSettings::settingAndMappingGoByTheirNames()
{
    RecordingDriver driver;
    driver.settings = {{"Port", "COM3"}, {"", "без имени"}};
    driver.mappings = {{"Port", "COM1:COM2"}};
    QLumFpax wrapper(&driver);

    QCOMPARE(wrapper.getSetting("Port"), QString("COM3"));
    QCOMPARE(wrapper.getMapping("Port"), QString("COM1:COM2"));
    QCOMPARE(wrapper.getSetting(""), QString("без имени"));
    QCOMPARE(wrapper.getSetting("port"), QString());

    QCOMPARE(driver.calls(),
             QStringList({"getSingleSetting(\"Port\", 4096)", "getSingleMapping(\"Port\", 4096)",
                          "getSingleSetting(\"\", 4096)", "getSingleSetting(\"port\", 4096)"}));
}

void TestWrapperSettings::settingIsStoredInAllForms_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("empty") << QString("");
    QTest::newRow("latin") << QString("COM3");
    QTest::newRow("russian") << QString("Порт 1 🧾");
    QTest::newRow("placeholders") << QString("%1 %2");
    QTest::newRow("long") << QString(100'000, u'ы');
}

void TestWrapperSettings::settingIsStoredInAllForms()
{
    QFETCH(const QString, value);
    RecordingDriver driver;
    QLumFpax wrapper(&driver);

    wrapper.setSetting("Имя", value);
    wrapper.setSetting("Имя", value.toUtf8().constData());

    const QString call = "setSingleSetting(\"Имя\", \"" + value + "\")";
    QCOMPARE(driver.calls(), QStringList({call, call}));
}

void TestWrapperSettings::numberIsStoredInDecimal_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << "0";
    QTest::newRow("115200") << 115200 << "115200";
    QTest::newRow("-5") << -5 << "-5";
    QTest::newRow("greatest") << INT_MAX << "2147483647";
    QTest::newRow("least") << INT_MIN << "-2147483648";
}

void TestWrapperSettings::numberIsStoredInDecimal()
{
    QFETCH(const int, number);
    QFETCH(const QString, text);
    RecordingDriver driver;
    QLumFpax wrapper(&driver);

    wrapper.setSetting("BaudRate", number);

    QCOMPARE(driver.calls(), QStringList("setSingleSetting(\"BaudRate\", \"" + text + "\")"));
}

void TestWrapperSettings::refusedSettingThrows()
{
    RecordingDriver driver;
    driver.answer("setSingleSetting", {-1, -8});
    driver.setText("getResultDescription", "Нет такого параметра");
    driver.setNumber("getBadParam", 1);
    driver.setText("getBadParamDescription", "Port");
    QLumFpax wrapper(&driver);
    const QString expected = "[-8] Нет такого параметра (Port)";

    QCOMPARE(thrownText([&] { wrapper.setSetting("Port", QString("COM3")); }), expected);
    QCOMPARE(thrownText([&] { wrapper.setSetting("Port", 3); }), expected);
    QCOMPARE(thrownText([&] { wrapper.setSetting("Port", "COM3"); }), expected);
    QCOMPARE(driver.count("setSingleSetting"), 3);
    QVERIFY(driver.settings.isEmpty());
}

void TestWrapperSettings::refusedSettingWithoutACodeIsSilent()
{
    RecordingDriver driver;
    driver.answer("setSingleSetting", {-1, 0});
    QLumFpax wrapper(&driver);

    wrapper.setSetting("Port", 3);

    QCOMPARE(driver.calls(), QStringList({"setSingleSetting(\"Port\", \"3\")", "getResultCode()"}));
}

QTEST_APPLESS_MAIN(TestWrapperSettings)

#include "tst_wrapper_settings.moc"
