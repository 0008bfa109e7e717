#include "device/emulatedsession.h"

#include "support/jsontext.h"
#include "support/recordingdriver.h"
#include "support/takedriver.h"

#include <QTest>

using LUM::Fpax::Model;

namespace {

const QString kDirectory = QStringLiteral("/каталог %1/");

QString setting(const char* name, const QString& value)
{
    return QStringLiteral("setSingleSetting(\"%1\", \"%2\")").arg(QString::fromLatin1(name), value);
}

/// The calls that every known kind of port begins with.
QStringList beginning(const QString& protocol)
{
    return {setting("Model", "63"), setting("SearchDir", kDirectory), setting("Protocol", protocol)};
}

QString appliedSetting(EmulatedDevice& device, const char* name)
{
    return device.state().value("settings").toObject().value(QLatin1String(name)).toString();
}

} // namespace

/// The port settings, to the driver and back.
class TestSessionSettings : public QObject
{
    Q_OBJECT

private slots:
    void settingsReachTheDriver_data();
    void settingsReachTheDriver();
    void settingsOfADriverThatTakesEverything_data();
    void settingsOfADriverThatTakesEverything();
    void unknownPortAppliesNothing_data();
    void unknownPortAppliesNothing();
    void refusedSettingStopsTheRest();
    void refusedApplicationChangesNothing();
    void portThatIsNoOtherNumberIsNotTakenOver_data();
    void portThatIsNoOtherNumberIsNotTakenOver();
    void changedPortIsTakenOver_data();
    void changedPortIsTakenOver();
    void portThatTheDriverDoesNotTellIsNotTakenOver();
    void settingsThatAreNull();
    void sessionWithoutADriver();
};

void TestSessionSettings::settingsReachTheDriver_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<QString>("port");
    const auto row = [](const char* name, const QByteArray& settings, const QStringList& calls,
                        const QString& port) { QTest::newRow(name) << settings << calls << port; };
    row("com", R"({"protocol": 1, "port": "com", "com": {"number": 7, "baudrate": 9600}})",
        beginning("1") + QStringList{setting("Port", "7"), setting("BaudRate", "9600")}, "7");
    row("com without a protocol", R"({"port": "com", "com": {"number": 5, "baudrate": 115200}})",
        beginning("3") + QStringList{setting("Port", "5"), setting("BaudRate", "115200")}, "5");
    row("com with texts", R"({"port": "com", "com": {"number": "COM9", "baudrate": "14400"}})",
        beginning("3") + QStringList{setting("Port", "COM9"), setting("BaudRate", "14400")}, "COM9");
    row("com with all else there",
        R"({"port": "com", "com": {"number": 5, "baudrate": 115200}, "usb": {"path": "x"}, "tcpip": 1, "z": []})",
        beginning("3") + QStringList{setting("Port", "5"), setting("BaudRate", "115200")}, "5");
    row("usb", R"({"protocol": 0, "port": "usb", "usb": {"vid": "7A31", "pid": "0005"}})",
        beginning("0") + QStringList{setting("Port", "USB"), setting("Vid", "31281"), setting("Pid", "5")},
        "USB");
    row("usb in small letters", R"({"port": "usb", "usb": {"vid": "ffff", "pid": "abc"}})",
        beginning("3") + QStringList{setting("Port", "USB"), setting("Vid", "65535"), setting("Pid", "2748")},
        "USB");
    row("usb, not hexadecimal", R"({"port": "usb", "usb": {"vid": "7A3G", "pid": ""}})",
        beginning("3") + QStringList{setting("Port", "USB"), setting("Vid", "0"), setting("Pid", "0")},
        "USB");
    row("usb, too large", R"({"port": "usb", "usb": {"vid": "7A317A317A31", "pid": "80000000"}})",
        beginning("3") + QStringList{setting("Port", "USB"), setting("Vid", "0"), setting("Pid", "0")},
        "USB");
    row("usb without numbers", R"({"port": "usb", "usb": {}})",
        beginning("3") + QStringList{setting("Port", "USB"), setting("Vid", "0"), setting("Pid", "0")},
        "USB");
    row("usb, nothing of it there", R"({"port": "usb"})",
        beginning("3") + QStringList{setting("Port", "USB"), setting("Vid", "0"), setting("Pid", "0")},
        "USB");
    row("usb with numbers for texts", R"({"port": "usb", "usb": {"vid": 10, "pid": 11}})",
        beginning("3") + QStringList{setting("Port", "USB"), setting("Vid", "16"), setting("Pid", "17")},
        "USB");
    row("usb with a path",
        R"({"port": "usb", "usb": {"vid": "7A31", "pid": "0005", "path": "/dev/касса %1"}})",
        beginning("3") + QStringList{setting("Port", "USB$/dev/касса %1")}, "USB$/dev/касса %1");
    row("usb with an empty path", R"({"port": "usb", "usb": {"path": ""}})",
        beginning("3") + QStringList{setting("Port", "USB$")}, "USB$");
    row("tcpip", R"({"port": "tcpip", "tcpip": {"host": "10.0.0.7", "port": 6000}})",
        beginning("3") + QStringList{setting("Port", "TCPIP"), setting("IPAddress", "10.0.0.7"),
                                     setting("IPPort", "6000")},
        "TCPIP");
    row("tcpip with a name and a text", R"({"port": "tcpip", "tcpip": {"host": "касса.зал", "port": "1"}})",
        beginning("3") +
            QStringList{setting("Port", "TCPIP"), setting("IPAddress", "касса.зал"), setting("IPPort", "1")},
        "TCPIP");
}

void TestSessionSettings::settingsReachTheDriver()
{
    QFETCH(const QByteArray, settings);
    QFETCH(const QStringList, calls);
    QFETCH(const QString, port);
    EmulatedSession s;

    QCOMPARE(s.session.setIOSettings(jsonOf(settings), Model::Tavr22F, kDirectory), 0);

    QCOMPARE(s.device.takeCalls(), calls + QStringList{"applySingleSettings()"});
    QCOMPARE(appliedSetting(s.device, "Port"), port);
    QCOMPARE(appliedSetting(s.device, "Model"), QString("63"));
    QCOMPARE(appliedSetting(s.device, "SearchDir"), kDirectory);
}

void TestSessionSettings::settingsOfADriverThatTakesEverything_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QStringList>("calls");
    const auto row = [](const char* name, const QByteArray& settings, const QStringList& calls) {
        QTest::newRow(name) << settings << calls;
    };
    row("com, nothing of it there", R"({"port": "com"})",
        beginning("3") + QStringList{setting("Port", ""), setting("BaudRate", "")});
    row("com with null", R"({"port": "com", "com": null})",
        beginning("3") + QStringList{setting("Port", ""), setting("BaudRate", "")});
    row("protocol null", R"({"protocol": null, "port": "com", "com": {"number": 5}})",
        beginning("0") + QStringList{setting("Port", "5"), setting("BaudRate", "")});
    row("negative numbers", R"({"protocol": -7, "port": "com", "com": {"number": -5, "baudrate": -1}})",
        beginning("-7") + QStringList{setting("Port", "-5"), setting("BaudRate", "-1")});
    row("tcpip without an address", R"({"port": "tcpip", "tcpip": {"port": 5555}})",
        beginning("3") +
            QStringList{setting("Port", "TCPIP"), setting("IPAddress", ""), setting("IPPort", "5555")});
    row("tcpip with a number for an address", R"({"port": "tcpip", "tcpip": {"host": 10, "port": true}})",
        beginning("3") +
            QStringList{setting("Port", "TCPIP"), setting("IPAddress", "10"), setting("IPPort", "true")});
    row("tcpip, nothing of it there", R"({"port": "tcpip"})",
        beginning("3") +
            QStringList{setting("Port", "TCPIP"), setting("IPAddress", ""), setting("IPPort", "")});
    row("usb with a path that is null", R"({"port": "usb", "usb": {"path": null}})",
        beginning("3") + QStringList{setting("Port", "USB$")});
    row("usb with a sign", R"({"port": "usb", "usb": {"vid": "-1", "pid": "+a"}})",
        beginning("3") + QStringList{setting("Port", "USB"), setting("Vid", "-1"), setting("Pid", "10")});
}

void TestSessionSettings::settingsOfADriverThatTakesEverything()
{
    QFETCH(const QByteArray, settings);
    QFETCH(const QStringList, calls);
    RecordingDriver driver;
    clKRD9IO session;
    takeDriver(session, driver);

    QCOMPARE(session.setIOSettings(jsonOf(settings), Model::Tavr22F, kDirectory), 0);

    QCOMPARE(driver.calls(), calls + QStringList{"applySingleSettings()"});
}

void TestSessionSettings::unknownPortAppliesNothing_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::newRow("no port") << QByteArray("{}");
    QTest::newRow("null") << QByteArray(R"({"port": null})");
    QTest::newRow("empty") << QByteArray(R"({"port": ""})");
    QTest::newRow("other word") << QByteArray(R"({"port": "lpt", "com": {"number": 8, "baudrate": 9600}})");
    QTest::newRow("capitals") << QByteArray(R"({"port": "COM", "com": {"number": 8, "baudrate": 9600}})");
    QTest::newRow("blank") << QByteArray(R"({"port": "com ", "com": {"number": 8, "baudrate": 9600}})");
    QTest::newRow("zero inside") << QByteArray(R"({"port": "com\u0000", "com": {"number": 8}})");
    QTest::newRow("number") << QByteArray(R"({"port": 5})");
    QTest::newRow("flag") << QByteArray(R"({"port": true})");
}

void TestSessionSettings::unknownPortAppliesNothing()
{
    QFETCH(const QByteArray, settings);
    EmulatedSession s;
    QCOMPARE(s.session.setIOSettings(
                 jsonOf(R"({"protocol": 1, "port": "com", "com": {"number": 7, "baudrate": 9600}})"),
                 Model::Tavr22F, "/раньше/"),
             0);
    const QJsonObject before = s.device.state();
    s.device.takeCalls();

    QCOMPARE(s.session.setIOSettings(jsonOf(settings), Model::Tavr22F, kDirectory), 13);

    QCOMPARE(s.device.takeCalls(), beginning("3"));
    QCOMPARE(s.device.state(), before);
    QCOMPARE(appliedSetting(s.device, "Port"), QString("7"));
    QCOMPARE(appliedSetting(s.device, "Protocol"), QString("1"));
    QCOMPARE(appliedSetting(s.device, "SearchDir"), QString("/раньше/"));
}

void TestSessionSettings::refusedSettingStopsTheRest()
{
    EmulatedSession s;
    s.device.failCall(2, Failure::Coded);

    QCOMPARE(s.session.setIOSettings(jsonOf(R"({"port": "com", "com": {"number": 7}})"), Model::Tavr22F,
                                     kDirectory),
             255);

    QCOMPARE(s.device.takeCalls(),
             QStringList({setting("Model", "63"), setting("SearchDir", kDirectory), "getResultCode()",
                          "getResultDescription(4096)", "getBadParam()"}));
}

void TestSessionSettings::refusedApplicationChangesNothing()
{
    EmulatedSession s;
    const QJsonObject before = s.device.state();
    // No such speed.
    QCOMPARE(s.session.setIOSettings(jsonOf(R"({"port": "com", "com": {"number": 7, "baudrate": 7}})"),
                                     Model::Tavr22F, kDirectory),
             255);
    QCOMPARE(s.device.state(), before);
}

void TestSessionSettings::portThatIsNoOtherNumberIsNotTakenOver_data()
{
    QTest::addColumn<QString>("port");
    QTest::newRow("the same number") << "5";
    QTest::newRow("the same number, blanks") << " 5 ";
    QTest::newRow("usb") << "USB";
    QTest::newRow("usb path") << "USB$8";
    QTest::newRow("network") << "TCPIP";
    QTest::newRow("with letters") << "COM8";
    QTest::newRow("hexadecimal") << "0x8";
    QTest::newRow("no whole number") << "8.5";
    QTest::newRow("too large") << "99999999999";
    QTest::newRow("empty") << "";
}

void TestSessionSettings::portThatIsNoOtherNumberIsNotTakenOver()
{
    QFETCH(const QString, port);
    EmulatedSession s;
    s.session.driverIface->setSingleSetting(L"Port", port.toStdWString().c_str());
    s.device.takeCalls();
    Json::Value settings = jsonOf(R"({"port": "usb", "com": {"number": 5}})");
    const Json::Value before = settings;

    QCOMPARE(s.session.getIOSettings(settings), 0);

    QVERIFY(settings == before);
    QCOMPARE(s.device.takeCalls(),
             QStringList({"getSingleSetting(\"Protocol\", 4096)", "getSingleSetting(\"Port\", 4096)"}));
}

void TestSessionSettings::changedPortIsTakenOver_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QByteArray>("changed");
    QTest::newRow("another number")
        << "8" << QByteArray(R"({"protocol": 1, "com": {"number": 5, "baudrate": 9600}})")
        << QByteArray(R"({"protocol": 1, "com": {"number": 8, "baudrate": 9600}})");
    QTest::newRow("whatever port is in use") << "12" << QByteArray(R"({"port": "usb", "com": {"number": 5}})")
                                             << QByteArray(R"({"port": "usb", "com": {"number": 12}})");
    QTest::newRow("no number yet") << "8" << QByteArray(R"({"com": {}})")
                                   << QByteArray(R"({"com": {"number": 8}})");
    QTest::newRow("number null") << "8" << QByteArray(R"({"com": {"number": null}})")
                                 << QByteArray(R"({"com": {"number": 8}})");
    QTest::newRow("no com yet") << "8" << QByteArray("{}") << QByteArray(R"({"com": {"number": 8}})");
    QTest::newRow("com null") << "8" << QByteArray(R"({"com": null})")
                              << QByteArray(R"({"com": {"number": 8}})");
    QTest::newRow("fraction") << "8" << QByteArray(R"({"com": {"number": 5.9}})")
                              << QByteArray(R"({"com": {"number": 8}})");
    QTest::newRow("negative") << "-1" << QByteArray(R"({"com": {"number": 5}})")
                              << QByteArray(R"({"com": {"number": -1}})");
}

void TestSessionSettings::changedPortIsTakenOver()
{
    QFETCH(const QString, port);
    QFETCH(const QByteArray, settings);
    QFETCH(const QByteArray, changed);
    EmulatedSession s;
    s.session.driverIface->setSingleSetting(L"Port", port.toStdWString().c_str());
    Json::Value value = jsonOf(settings);

    QCOMPARE(s.session.getIOSettings(value), -1);
    QVERIFY2(value == jsonOf(changed), value.toStyledString().c_str());
    QCOMPARE(s.session.getIOSettings(value), 0);
    QVERIFY(value == jsonOf(changed));
}

void TestSessionSettings::portThatTheDriverDoesNotTellIsNotTakenOver()
{
    EmulatedSession s;
    s.session.driverIface->setSingleSetting(L"Port", L"8");
    s.device.fail("getSingleSetting", Failure::Coded);
    Json::Value settings = jsonOf(R"({"com": {"number": 5}})");

    QCOMPARE(s.session.getIOSettings(settings), 0);
    QVERIFY(settings == jsonOf(R"({"com": {"number": 5}})"));
}

void TestSessionSettings::settingsThatAreNull()
{
    EmulatedSession s;
    Json::Value settings;
    QCOMPARE(s.session.getIOSettings(settings), 2);
    QVERIFY(settings.isNull());
    QCOMPARE(s.device.takeCalls(), QStringList());
}

void TestSessionSettings::sessionWithoutADriver()
{
    clKRD9IO session;
    for (const QByteArray text : {"null", "{}", "[]", R"({"port": "com", "com": {"number": 5}})"}) {
        Json::Value settings = jsonOf(text);
        QCOMPARE(session.setIOSettings(settings, Model::Tavr22F, "/"), 1);
        QCOMPARE(session.getIOSettings(settings), 1);
        QVERIFY(settings == jsonOf(text));
    }
}

QTEST_GUILESS_MAIN(TestSessionSettings)

#include "tst_session_settings.moc"
