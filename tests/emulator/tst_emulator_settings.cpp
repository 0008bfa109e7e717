#include "fpaxlibrary.h"

#include <QTest>

class TestEmulatorSettings : public QObject
{
    Q_OBJECT

private slots:
    void everyNameIsKept_data();
    void everyNameIsKept();
    void unknownNameIsNothingToRead();
    void settingWithoutANameIsABadParameter();
    void portKindsApply_data();
    void portKindsApply();
    void badSettingsAreRefused_data();
    void badSettingsAreRefused();
    void refusedSettingsChangeNothingOnTheDevice();
    void settingsOfOtherPortsAreNotLookedAt();
    void applyingNeedsNoDevice();
    void laterObjectBeginsWithTheAppliedSettings();
    void storedSettingsBelongToTheirObject();
    void mappingOfPortsListsComPorts();
    void mappingsOfOtherNames_data();
    void mappingsOfOtherNames();
    void servicePathThroughTheDriver();
};

void TestEmulatorSettings::everyNameIsKept_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::newRow("model") << "Model"
                           << "63";
    QTest::newRow("folder") << "SearchDir"
                            << "C:/Программа/";
    QTest::newRow("protocol") << "Protocol"
                              << "3";
    QTest::newRow("port") << "Port"
                          << "17";
    QTest::newRow("speed") << "BaudRate"
                           << "9600";
    QTest::newRow("vendor") << "Vid"
                            << "31281";
    QTest::newRow("product") << "Pid"
                             << "5";
    QTest::newRow("address") << "IPAddress"
                             << "10.1.2.3";
    QTest::newRow("network port") << "IPPort"
                                  << "5556";
    QTest::newRow("any other") << "Колокольчик"
                               << "да";
    QTest::newRow("empty value") << "DeviceName"
                                 << "";
}

void TestEmulatorSettings::everyNameIsKept()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    QCOMPARE(setSetting(driver, name, value), 0);
    QCOMPARE(codeOf(driver), 0);
    QCOMPARE(settingOf(driver, name), value);
    QCOMPARE(driver->applySingleSettings(), 0);
    QCOMPARE(settingOf(driver, name), value);
    QCOMPARE(fpax.state().value("settings").toObject().value(name).toString(), value);
}

void TestEmulatorSettings::unknownNameIsNothingToRead()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    wchar_t buffer[8] = L"#######";
    QVERIFY(driver->getSingleSetting(L"NoSuchThing", buffer, 8) <= 0);
    QVERIFY(driver->getSingleMapping(L"NoSuchThing", buffer, 8) <= 0);
    QVERIFY(driver->getSingleSetting(nullptr, buffer, 8) <= 0);
    QCOMPARE(codeOf(driver), 0);
}

void TestEmulatorSettings::settingWithoutANameIsABadParameter()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    QVERIFY(driver->setSingleSetting(nullptr, L"5") < 0);
    QCOMPARE(codeOf(driver), -11);
    QVERIFY(numberOf(driver, &IFpax::getBadParam) != 0);
    QVERIFY(driver->setSingleSetting(L"", L"5") < 0);
    QCOMPARE(driver->setSingleSetting(L"Port", nullptr), 0);
}

void TestEmulatorSettings::portKindsApply_data()
{
    QTest::addColumn<QString>("port");
    QTest::newRow("number") << "5";
    QTest::newRow("name") << "COM12";
    QTest::newRow("usb") << "USB";
    QTest::newRow("usb by path") << "USB$/dev/ttyACM0";
    QTest::newRow("network") << "TCPIP";
}

void TestEmulatorSettings::portKindsApply()
{
    QFETCH(QString, port);
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    setSetting(driver, "Port", port);
    QCOMPARE(driver->applySingleSettings(), 0);
    QCOMPARE(settingOf(driver, "Port"), port);
    QCOMPARE(driver->setDeviceEnabled(1), 0);
}

void TestEmulatorSettings::badSettingsAreRefused_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::newRow("unknown port") << "LPT1"
                                  << "Port"
                                  << "LPT1";
    QTest::newRow("no port") << ""
                             << "Port"
                             << "";
    QTest::newRow("port 0") << "0"
                            << "Port"
                            << "0";
    QTest::newRow("port in lower case") << "usb"
                                        << "Port"
                                        << "usb";
    QTest::newRow("speed") << "5"
                           << "BaudRate"
                           << "fast";
    QTest::newRow("protocol") << "5"
                              << "Protocol"
                              << "-1";
    QTest::newRow("model") << "5"
                           << "Model"
                           << "Тавр";
    QTest::newRow("vendor") << "USB"
                            << "Vid"
                            << "70000";
    QTest::newRow("product") << "USB"
                             << "Pid"
                             << "x";
    QTest::newRow("address") << "TCPIP"
                             << "IPAddress"
                             << "";
    QTest::newRow("network port") << "TCPIP"
                                  << "IPPort"
                                  << "65536";
}

void TestEmulatorSettings::badSettingsAreRefused()
{
    QFETCH(QString, port);
    QFETCH(QString, name);
    QFETCH(QString, value);
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    setSetting(driver, "Port", port);
    setSetting(driver, name, value);
    QVERIFY(driver->applySingleSettings() < 0);
    QCOMPARE(codeOf(driver), -11);
    QVERIFY(numberOf(driver, &IFpax::getBadParam) != 0);
    QVERIFY(textOf(driver, &IFpax::getBadParamDescription).contains(name));
}

void TestEmulatorSettings::refusedSettingsChangeNothingOnTheDevice()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    setSetting(driver, "Port", "7");
    QCOMPARE(driver->applySingleSettings(), 0);
    const QJsonObject before = fpax.state();
    setSetting(driver, "Port", "fax");
    setSetting(driver, "Protocol", "1");
    QVERIFY(driver->applySingleSettings() < 0);
    QCOMPARE(fpax.state(), before);
}

void TestEmulatorSettings::settingsOfOtherPortsAreNotLookedAt()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    setSetting(driver, "Port", "5");
    setSetting(driver, "IPPort", "none");
    setSetting(driver, "Vid", "none");
    QCOMPARE(driver->applySingleSettings(), 0);
    setSetting(driver, "Port", "USB$dev");
    setSetting(driver, "BaudRate", "none");
    QCOMPARE(driver->applySingleSettings(), 0);
}

void TestEmulatorSettings::applyingNeedsNoDevice()
{
    FpaxLibrary fpax;
    fpax.set({{"connected", false}});
    IFpax* driver = fpax.create();
    setSetting(driver, "Port", "9");
    QCOMPARE(driver->applySingleSettings(), 0);
}

void TestEmulatorSettings::laterObjectBeginsWithTheAppliedSettings()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    setSetting(driver, "Port", "11");
    QCOMPARE(driver->applySingleSettings(), 0);
    QCOMPARE(settingOf(fpax.create(), "Port"), "11");
}

void TestEmulatorSettings::storedSettingsBelongToTheirObject()
{
    FpaxLibrary fpax;
    IFpax* first = fpax.create();
    setSetting(first, "Port", "4");
    QCOMPARE(first->applySingleSettings(), 0);
    IFpax* second = fpax.create();
    setSetting(second, "Port", "8");
    QCOMPARE(second->applySingleSettings(), 0);
    QCOMPARE(settingOf(first, "Port"), "4");
}

void TestEmulatorSettings::mappingOfPortsListsComPorts()
{
    FpaxLibrary fpax;
    const QStringList ports = mappingOf(fpax.create(), "Port").split(';');
    QVERIFY(ports.size() > 2);
    const auto isCom = [](const QString& port) { return port.contains("COM") && port.contains(' '); };
    QVERIFY(std::count_if(ports.begin(), ports.end(), isCom) >= 2);
    QVERIFY(ports.contains("USB"));
}

void TestEmulatorSettings::mappingsOfOtherNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("entry");
    QTest::newRow("serial ports") << "ExistedSerial"
                                  << "5";
    QTest::newRow("speeds") << "BaudRate"
                            << "115200";
    QTest::newRow("model") << "Model"
                           << "63 Тавр 22Ф";
    QTest::newRow("protocols") << "Protocol"
                               << "3 обычный";
}

void TestEmulatorSettings::mappingsOfOtherNames()
{
    QFETCH(QString, name);
    QFETCH(QString, entry);
    FpaxLibrary fpax;
    QVERIFY(mappingOf(fpax.create(), name).split(';').contains(entry));
}

void TestEmulatorSettings::servicePathThroughTheDriver()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    for (const auto& [name, value] : {std::pair{"Port", "8"}, std::pair{"Protocol", "0"},
                                      std::pair{"BaudRate", "115200"}, std::pair{"Model", "63"}})
        QCOMPARE(setSetting(driver, name, value), 0);
    QCOMPARE(driver->applySingleSettings(), 0);
    QCOMPARE(settingOf(driver, "Protocol"), "0");
    QCOMPARE(driver->setDeviceEnabled(1), 0);
    QCOMPARE(driver->resetMode(), 0);
    QCOMPARE(driver->setDeviceEnabled(0), 0);
}

QTEST_MAIN(TestEmulatorSettings)
#include "tst_emulator_settings.moc"
