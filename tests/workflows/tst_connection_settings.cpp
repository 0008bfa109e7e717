#include "workflows/connectionbench.h"

#include "device/utiljson.h"
#include "support/filelimit.h"
#include "support/jsontext.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QSpinBox>
#include <QTest>

#include <json/json.h>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

const QString kTryNew = QStringLiteral("Пробуем создать новые...");
const QString kNotCreated = QStringLiteral("Ошибка в настройках (создание settings.json)");
const QString kNotReopened = QStringLiteral("Ошибка в настройках (переоткрытие settings.json)");

QString readFailure(int result)
{
    return QStringLiteral("Ошибка в настройках (чтение settings.json ret=%1)").arg(result);
}

QString notOpened(const QString& path)
{
    return QStringLiteral("Не удалось открыть файл с настройками [%1]").arg(path);
}

QString refused(int result)
{
    return QStringLiteral("Ошибка при задании настроек обмена (ret=%1)").arg(result);
}

QByteArray newSettings()
{
    return UtilJson::SetSettingsJson().toUtf8();
}

// A macro, so that a failure names the test's line and ends the test.
#define VERIFY_WARNING(bench, message)                                                                       \
    do {                                                                                                     \
        const auto boxes = (bench).robot.takeBoxes();                                                        \
        QCOMPARE(boxes.size(), 1);                                                                           \
        QCOMPARE(boxes.first().text, (message));                                                             \
        QCOMPARE(boxes.first().icon, QMessageBox::Warning);                                                  \
        QCOMPARE(boxes.first().title, QString());                                                            \
    } while (false)

} // namespace

/// settings.json: read, made anew, refused; and a port that the user changes in the driver's dialog.
class TestConnectionSettings : public QObject
{
    Q_OBJECT

private slots:
    void missingFileIsMade();
    void brokenFileIsReplaced_data();
    void brokenFileIsReplaced();
    void goodFileStays_data();
    void goodFileStays();
    void refusedSettingsAreTold_data();
    void refusedSettingsAreTold();
    void directoryInItsPlace();
    void pipeInItsPlace();
    void newFileThatDoesNotHold();
    void bothFilesUnreadable();
    void windowWorksAfterAFailedStart();
    void repairedFileCountsAtTheNextStart();
    void changedPortIsKept_data();
    void changedPortIsKept();
    void otherPortsLeaveTheFileAlone_data();
    void otherPortsLeaveTheFileAlone();
    void changedPortIsNotKeptWithoutSettings();
    void settingsStayWithoutADriver();
    void changedPortThatCannotBeKept();
    void driverThatThrowsAtTheEnd();
};

void TestConnectionSettings::missingFileIsMade()
{
    ConnectionBench b;
    b.start();
    QCOMPARE(b.log(), driverLines() + QStringList({notOpened(b.settingsPath()), readFailure(11), kTryNew}) +
                          goodDeviceLines());
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(b.settingsFile(), newSettings());
    QVERIFY(KRD9IO.modeProgram);
    b.stop();
    QCOMPARE(b.settingsFile(), newSettings());
}

void TestConnectionSettings::brokenFileIsReplaced_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char* name, const QByteArray& bytes) { QTest::newRow(name) << bytes; };
    row("empty", "");
    row("blank", " \n\t");
    row("cut", newSettings().chopped(10));
    row("text", "порт: 5\n");
    row("scalar number", "5");
    row("scalar text", R"("com")");
    row("null", "null");
    row("zeros", QByteArray(16, '\0'));
    row("bytes", QByteArray("\xff\xfe{\0}\0", 6));
    row("number out of range", R"({"protocol": 1e999})");
    row("key without quotes", "{port: \"com\"}");
    row("deeply nested array", QByteArray(5000, '[') + QByteArray(5000, ']'));
    row("deeply nested object", QByteArray("{\"a\":").repeated(5000) + '1' + QByteArray(5000, '}'));
}

void TestConnectionSettings::brokenFileIsReplaced()
{
    QFETCH(const QByteArray, bytes);
    ConnectionBench b;
    b.writeSettings(bytes);
    b.start();

    QStringList log = b.log();
    QCOMPARE(log.first(2), driverLines());
    // The parser's message may have several lines.
    const qsizetype failure = log.indexOf(readFailure(12));
    QVERIFY2(failure > 2, qPrintable(log.join(u'\n')));
    const QString message = log.sliced(2, failure - 2).join(u'\n');
    QVERIFY2(message.startsWith(QLatin1String(QTest::currentDataTag()).startsWith(u"deeply nested")
                                    ? "Ошибка при разборе json [Exceeded stackLimit"
                                    : "Ошибка при разборе json [* Line "),
             qPrintable(message));
    QVERIFY(message.endsWith(u']'));
    QCOMPARE(log.sliced(failure), QStringList({readFailure(12), kTryNew}) + goodDeviceLines());
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(b.settingsFile(), newSettings());
    QVERIFY(KRD9IO.modeProgram);
}

void TestConnectionSettings::goodFileStays_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("as made") << newSettings();
    QTest::newRow("as rewritten") << QByteArray(jsonOf(newSettings()).toStyledString().c_str());
    QTest::newRow("comments") << QByteArray(
        "// порт\n{ \"port\": \"com\", /* и ещё */ \"com\": {\"number\": 5, \"baudrate\": 9600} } // всё");
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF" + newSettings());
    QTest::newRow("usb") << QByteArray(R"({"port": "usb", "usb": {"vid": "7A31", "pid": "0005"}})");
    QTest::newRow("network") << QByteArray(R"({"port": "tcpip", "tcpip": {"host": "10.0.0.7", "port": 1}})");
}

void TestConnectionSettings::goodFileStays()
{
    QFETCH(const QByteArray, bytes);
    ConnectionBench b;
    b.writeSettings(bytes);
    b.start();
    QCOMPARE(b.log(), driverLines() + goodDeviceLines());
    QCOMPARE(b.robot.takeTexts(), QStringList());
    b.stop();
    QCOMPARE(b.settingsFile(), bytes);
}

void TestConnectionSettings::refusedSettingsAreTold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("isRewritten");
    const auto row = [](const char* name, const QByteArray& bytes, int result, bool isRewritten) {
        QTest::newRow(name) << bytes << result << isRewritten;
    };
    row("empty array", "[]", 255, false);
    row("array", R"([{"port": "com"}])", 255, false);
    row("empty object", "{}", 13, false);
    row("other port", R"({"port": "rs232", "com": {"number": 7, "baudrate": 115200}})", 13, true);
    row("protocol no number", R"({"protocol": "3", "port": "com", "com": {"number": 5}})", 255, true);
    row("protocol too large", R"({"protocol": 99999999999, "port": "com"})", 255, true);
    row("port an array", R"({"port": ["com"], "com": {"number": 5, "baudrate": 9600}})", 255, true);
    row("com a number", R"({"port": "com", "com": 5})", 255, false);
    row("number an object", R"({"port": "com", "com": {"number": {"5": 5}, "baudrate": 9600}})", 255, false);
    row("number nested deeply",
        R"({"port": "com", "com": {"number": )" + QByteArray(900, '[') + QByteArray(900, ']') + "}}", 255,
        false);
    row("number huge", R"({"port": "com", "com": {"number": 1e300, "baudrate": 9600}})", 255, false);
    row("refused by the driver", R"({"port": "com", "com": {"number": 5, "baudrate": 5}})", 255, true);
    row("usb a text", R"({"port": "usb", "usb": "7A31"})", 255, true);
    row("path an array", R"({"port": "usb", "usb": {"path": []}})", 255, true);
    row("address an array", R"({"port": "tcpip", "tcpip": {"host": [10, 0, 0, 7], "port": 1}})", 255, true);
}

void TestConnectionSettings::refusedSettingsAreTold()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const int, result);
    QFETCH(const bool, isRewritten);
    ConnectionBench b;
    b.writeSettings(bytes);
    b.start();

    VERIFY_WARNING(b, refused(result));
    QCOMPARE(b.log(), driverLines() + QStringList{refused(result)});
    QVERIFY(!KRD9IO.portOpen);
    QVERIFY(!b.device.takeCalls().contains("setDeviceEnabled(1)"));
    // The driver's port is taken over at the end where its number has a place.
    KRD9IO.driverIface->setSingleSetting(L"Port", L"8");
    b.stop();
    if (isRewritten)
        QCOMPARE(jsonOf(b.settingsFile())["com"]["number"].asInt(), 8);
    else
        QCOMPARE(b.settingsFile(), bytes);
}

void TestConnectionSettings::directoryInItsPlace()
{
    ConnectionBench b;
    QVERIFY(QDir().mkdir(b.settingsPath()));
    b.start();
    VERIFY_WARNING(b, kNotCreated);
    QCOMPARE(b.log(), driverLines() + QStringList({notOpened(b.settingsPath()), readFailure(11), kTryNew,
                                                   "Не удалось содать новый файл с настройками!"}));
    QVERIFY(QDir(b.settingsPath()).isEmpty());
    QVERIFY(!KRD9IO.portOpen);
    // Every later exchange asks the device all the same.
    b.showAndWait();
    chooseInMenu(*b.window, "actionIOSettings");
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QVERIFY(KRD9IO.modeProgram);
    b.stop();
    QVERIFY(QDir(b.settingsPath()).exists());
}

void TestConnectionSettings::pipeInItsPlace()
{
#ifdef Q_OS_UNIX
    ConnectionBench b;
    QCOMPARE(mkfifo(QFile::encodeName(b.settingsPath()).constData(), 0600), 0);
    b.start(); // and does not wait for a reader
    VERIFY_WARNING(b, kNotCreated);
    QVERIFY(!KRD9IO.portOpen);
#else
    QSKIP("no pipes among the files here");
#endif
}

void TestConnectionSettings::newFileThatDoesNotHold()
{
#ifdef Q_OS_UNIX
    ConnectionBench b;
    {
        const FileLimit limit(newSettings().size() - 2); // the new settings are cut
        b.start();
    }

    VERIFY_WARNING(b, kNotReopened);
    const QStringList log = b.log();
    QCOMPARE(log.first(5),
             driverLines() + QStringList({notOpened(b.settingsPath()), readFailure(11), kTryNew}));
    QVERIFY(log.value(5).startsWith("Ошибка при разборе json ["));
    QCOMPARE(log.last(), kNotReopened);
    QVERIFY(!log.contains("==== Полученные данные ===="));
    QVERIFY(!KRD9IO.portOpen);

    // The end leaves it as it is, whatever the driver's port.
    KRD9IO.driverIface->setSingleSetting(L"Port", L"8");
    b.stop();
    QCOMPARE(b.settingsFile(), newSettings().chopped(2));
#else
    QSKIP("no limit for the size of files here");
#endif
}

void TestConnectionSettings::bothFilesUnreadable()
{
    ConnectionBench b;
    QVERIFY(QDir().mkdir(b.settingsPath()));
    QVERIFY(QDir().mkdir(b.dir.path("kassa.csv")));
    b.start();
    VERIFY_WARNING(b, kNotCreated);
    QCOMPARE(WindowProbe(*b.window).kassaNames().size(), 11);
    QCOMPARE(named<QComboBox>(*b.window, "comboKassa")->currentText(), QString("Тавр 77Ф"));
    b.showAndWait();
    QVERIFY(b.isEnabled("actionFreePort"));
}

void TestConnectionSettings::windowWorksAfterAFailedStart()
{
    ConnectionBench b;
    b.writeSettings("[]");
    b.start();
    VERIFY_WARNING(b, refused(255));
    b.showAndWait();
    const auto fields = manyFields(5);
    b.openFields(fields);
    QCOMPARE(b.harm(fields), QStringList());
    // The driver has settings of its own, so the device can be reached.
    chooseInMenu(*b.window, "actionIOSettings");
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QVERIFY(KRD9IO.modeProgram);
    QTRY_COMPARE(b.statusCell(2)->text().section(u';', 0, 0), QString("Тавр 22Ф"));
    QCOMPARE(b.harm(fields), QStringList());
}

void TestConnectionSettings::repairedFileCountsAtTheNextStart()
{
    ConnectionBench b;
    b.writeSettings(R"({"port": "lpt", "com": {"number": 5}})");
    b.start();
    VERIFY_WARNING(b, refused(13));
    b.showAndWait();
    const QByteArray repaired = R"({"port": "com", "com": {"number": 7, "baudrate": 9600}})";
    b.writeSettings(repaired);
    b.device.takeCalls();
    chooseInMenu(*b.window, "actionIOSettings");
    QVERIFY(b.device.takeCalls().filter("setSingleSetting").isEmpty());

    b.stop();
    QCOMPARE(b.settingsFile(), repaired);
    b.device.takeCalls();
    b.start();
    QVERIFY(b.device.takeCalls().contains(R"(setSingleSetting("Port", "7"))"));
    QCOMPARE(b.robot.takeTexts(), QStringList());
}

void TestConnectionSettings::changedPortIsKept_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("as made") << newSettings() << newSettings().replace("\"number\": 5", "\"number\": 8");
    QTest::newRow("with more in it")
        << QByteArray(R"({"port": "com", "com": {"number": 5, "baudrate": 9600}, "ещё": [1, {"а": null}]})")
        << QByteArray(R"({"port": "com", "com": {"number": 8, "baudrate": 9600}, "ещё": [1, {"а": null}]})");
    const QByteArray commented =
        "// порт\n{\"port\": \"com\", /* и ещё */ \"com\": {\"number\": 5, \"baudrate\": 9600}}";
    QTest::newRow("comments") << commented << QByteArray(commented).replace("5,", "8,");
}

void TestConnectionSettings::changedPortIsKept()
{
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, after);
    ConnectionBench b;
    b.writeSettings(before);
    b.start();
    b.showAndWait();
    b.driverDialog.accept([](QDialog& dialog) { named<QSpinBox>(dialog, "spinPort")->setValue(8); });
    chooseInMenu(*b.window, "actionIOSettings");
    QCOMPARE(b.driverDialog.takeSeen(), 1);
    QCOMPARE(b.robot.takeTexts(), QStringList());
    // Only at the end.
    QCOMPARE(b.settingsFile(), before);

    b.stop();
    QCOMPARE(b.settingsFile(), QByteArray(jsonOf(after).toStyledString().c_str()));

    b.device.takeCalls();
    b.start();
    QVERIFY(b.device.takeCalls().contains(R"(setSingleSetting("Port", "8"))"));
    QCOMPARE(b.log(), driverLines() + goodDeviceLines());
}

void TestConnectionSettings::otherPortsLeaveTheFileAlone_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("port");
    QTest::newRow("the same") << newSettings() << "5";
    QTest::newRow("USB") << newSettings() << "USB";
    QTest::newRow("USB path") << newSettings() << "USB$x";
    QTest::newRow("network") << newSettings() << "TCPIP";
    QTest::newRow("COM in letters") << newSettings() << "COM8";
    QTest::newRow("number as text") << newSettings().replace("\"number\": 5", "\"number\": \"5\"") << "8";
}

void TestConnectionSettings::otherPortsLeaveTheFileAlone()
{
    QFETCH(const QByteArray, settings);
    QFETCH(const QString, port);
    ConnectionBench b;
    b.writeSettings(settings);
    b.start();
    QCOMPARE(b.robot.takeTexts(), QStringList());
    KRD9IO.driverIface->setSingleSetting(L"Port", port.toStdWString().c_str());
    b.stop();
    QCOMPARE(b.settingsFile(), settings);
}

void TestConnectionSettings::changedPortIsNotKeptWithoutSettings()
{
    ConnectionBench b;
    QVERIFY(QDir().mkdir(b.settingsPath()));
    b.start();
    VERIFY_WARNING(b, kNotCreated);
    KRD9IO.driverIface->setSingleSetting(L"Port", L"8");
    QVERIFY(QDir().rmdir(b.settingsPath()));
    b.stop();
    QVERIFY(!QFile::exists(b.settingsPath()));
}

void TestConnectionSettings::settingsStayWithoutADriver()
{
    for (const QByteArray& bytes : {QByteArray(), newSettings(), QByteArray("[")}) {
        ConnectionBench b;
        b.device.remove();
        if (!bytes.isEmpty())
            b.writeSettings(bytes);
        b.start();
        b.stop();
        QCOMPARE(b.settingsFile(), bytes);
        QCOMPARE(b.robot.takeTexts(), QStringList());
    }
}

void TestConnectionSettings::changedPortThatCannotBeKept()
{
    ConnectionBench b;
    b.writeSettings(newSettings());
    b.start();
    KRD9IO.driverIface->setSingleSetting(L"Port", L"8");
    QVERIFY(QFile::remove(b.settingsPath()));
    QVERIFY(QDir().mkdir(b.settingsPath()));
    b.stop();
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QVERIFY(QDir(b.settingsPath()).exists());
}

void TestConnectionSettings::driverThatThrowsAtTheEnd()
{
    for (const Failure failure : {Failure::Coded, Failure::Codeless, Failure::Standard, Failure::Foreign}) {
        ConnectionBench b;
        b.writeSettings(newSettings());
        b.start();
        KRD9IO.driverIface->setSingleSetting(L"Port", L"8");
        b.device.fail("getSingleSetting", failure);
        b.stop();
        QCOMPARE(b.settingsFile(), newSettings());
    }
}

QTEST_MAIN(TestConnectionSettings)

#include "tst_connection_settings.moc"
