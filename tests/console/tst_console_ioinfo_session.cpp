#include "console/consoleuser.h"
#include "console/ioinfolines.h"
#include "device/utiljson.h"
#include "workflows/connectionbench.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

/// The session with its device, the console on.
struct ConnectedConsole : ConnectionBench
{
    ConnectedConsole()
    {
        writeUsualSettings();
        start();
        showAndWait();
        typeWord(*window, "SAM");
        robot.takeTexts();
        device.takeCalls();
    }

    QStringList check()
    {
        LogWatch watch(*window);
        callCommand(*window, "IOINFO");
        return watch.takeNew();
    }

    /// The earlier form of the check, which no button offers.
    QStringList loadFile()
    {
        LogWatch watch(*window);
        WindowProbe(*window).callLoadFile();
        return watch.takeNew();
    }
};

/// What the driver holds as the session has set it up.
QStringList heldLines()
{
    QLumFpax& fpax = *KRD9IO.fpaxWrapper;
    return {"COM1 (свободен)",
            "COM5 (эмулятор кассы)",
            "COM8 (свободен)",
            "in drv protocol: " + fpax.getSetting("Protocol") + ' ' + fpax.getMapping("Protocol"),
            "in drv port: " + fpax.getMapping("ExistedSerial") + ' ' + fpax.getSetting("Port"),
            "in drv bods: " + fpax.getSetting("BaudRate") + ' ' + fpax.getMapping("BaudRate"),
            "in drv IP: " + fpax.getSetting("IPPort") + '/' + fpax.getSetting("IPAddress"),
            "in drv devName: " + fpax.getSetting("DeviceName") + '/' + fpax.getMapping("DeviceName")};
}

bool isWorking()
{
    return KRD9IO.library->isLoaded() && KRD9IO.driverLoaded && KRD9IO.getStatus() == 1;
}

bool isAsking(const QString& call)
{
    return call.startsWith("getSingle");
}

} // namespace

/// The console's check beside a session that has the driver already.
class TestConsoleIoInfoSession : public QObject
{
    Q_OBJECT

private slots:
    void checkBesideTheSession();
    void eachCallFails_data() { addFailureRows(); }
    void eachCallFails();
    void libraryStaysWithTheSession();
    void earlierCheck();
    void earlierCheckWritesTheTemplate();
    void earlierCheckFails();
    void earlierCheckWithoutALibrary();
    void commandsThatAreEmptyDoNothing_data();
    void commandsThatAreEmptyDoNothing();
};

void TestConsoleIoInfoSession::checkBesideTheSession()
{
    ConnectedConsole c;
    QVERIFY(KRD9IO.connected);
    const QStringList held = heldLines();
    const QString port = KRD9IO.fpaxWrapper->getSetting("Port");
    QVERIFY(port != "8");
    c.device.takeCalls();
    QCOMPARE(c.check(), QStringList({kLoaded, kCreated}) + held + linesOfTheChange() +
                            linesOfTheConnection() + QStringList(kDestroyed));
    QCOMPARE(c.robot.takeTexts(), QStringList({kConnectedBox, kReleasedBox}));
    QCOMPARE(c.device.takeCalls().size(), 22);

    QCOMPARE(KRD9IO.fpaxWrapper->getSetting("Port"), port);
    QVERIFY(isWorking());
    chooseInMenu(*c.window, "actionFreePort");
    QCOMPARE(c.robot.takeTexts(), QStringList("Порт освобожден."));
}

void TestConsoleIoInfoSession::eachCallFails()
{
    QFETCH(const Failure, failure);
    ConnectedConsole c;
    const QStringList good = c.check();
    const QStringList calls = c.device.takeCalls();
    QCOMPARE(calls.size(), 22);
    c.robot.takeTexts();
    for (int k = 1; k <= calls.size(); ++k) {
        const bool isThrown = failure == Failure::Standard || failure == Failure::Foreign;
        // A port that stayed closed without a word makes the next step fail.
        const bool isClosed = failure == Failure::Codeless && calls.at(k - 1) == u"setDeviceEnabled(1)";
        const bool isEnd = isThrown || isClosed || (failure == Failure::Coded && !isAsking(calls.at(k - 1)));
        c.device.failCall(k, failure);
        const QStringList lines = c.check();
        c.device.dropFaults();
        const QStringList boxes = c.robot.takeTexts();
        QCOMPARE(lines.first(2), good.first(2));
        QCOMPARE(lines.last(), isEnd ? kFailed : kDestroyed);
        QCOMPARE(lines.count(kFailed), isEnd ? 1 : 0);
        const int boxCount = !isEnd ? 2 : k > 20 || isClosed ? 1 : 0;
        QCOMPARE(boxes, QStringList({kConnectedBox, kReleasedBox}).first(boxCount));
        QVERIFY2(isWorking(), qPrintable(calls.at(k - 1)));
    }
    const QStringList again = c.check();
    QCOMPARE(again.last(), kDestroyed);
    QCOMPARE(again.size(), good.size());
}

void TestConsoleIoInfoSession::libraryStaysWithTheSession()
{
    // Nobody but the program loads this one.
    const SessionRenewal renewal;
    const ProgramDir dir;
    qputenv("FPAX_HOME", QFile::encodeName(Settings.pathApp));
    QVERIFY(QFile::copy(FPAX_PATH, dir.path(QFileInfo(QStringLiteral(FPAX_PATH)).fileName())));
    dir.write("settings.json", UtilJson::SetSettingsJson().toUtf8());
    {
        DialogRobot robot;
        MainWindow window;
        showWindow(window);
        QVERIFY(KRD9IO.connected);
        typeWord(window, "SAM");
        for (int i = 0; i < 2; ++i) {
            callCommand(window, "IOINFO");
            QCOMPARE(robot.takeTexts(), QStringList({kConnectedBox, kReleasedBox}));
            QVERIFY(isWorking());
            WindowProbe(window).callLoadFile();
            QCOMPARE(robot.takeTexts(), QStringList({kTestBox, kReleasedBox}));
            QVERIFY(isWorking());
        }
        chooseInMenu(window, "actionFreePort");
        QCOMPARE(robot.takeTexts(), QStringList("Порт освобожден."));
    }
    qunsetenv("FPAX_HOME");
}

void TestConsoleIoInfoSession::earlierCheck()
{
    ConnectedConsole c;
    const QStringList held = heldLines();
    c.device.takeCalls();
    QCOMPARE(c.loadFile(), kTestLines + QStringList({kLoaded, kCreated}) + held + linesOfTheChange() +
                               linesOfTheEarlierConnection() + QStringList(kDestroyed));
    QCOMPARE(c.robot.takeTexts(), QStringList({kTestBox, kReleasedBox}));
    const QStringList calls = c.device.takeCalls();
    QCOMPARE(calls.size(), 24);
    QCOMPARE(calls.mid(19), QStringList({"setDeviceEnabled(1)", "setMode(4)", "enterMode()", "resetMode()",
                                         "setDeviceEnabled(0)"}));
    QVERIFY(isWorking());
}

void TestConsoleIoInfoSession::earlierCheckWritesTheTemplate()
{
    ConnectedConsole c;
    c.openFields(manyFields(2));
    Json::Value rows(Json::arrayValue);
    WindowProbe(*c.window).bd().SaveAsJsonV01(rows, 1);
    const QStringList lines = c.loadFile();
    const auto first = lines.indexOf("====LOGGER") + 1;
    const QStringList logger = lines.mid(first, lines.indexOf("====LOGGER END") - first);
    // Each record begins with its command and ends with what came of it.
    QStringList beginnings;
    QStringList expected;
    for (const auto& row : rows) {
        expected.append(QStringLiteral("Запись Т20С1Р%1(%2-%3) = 510114010000%4")
                            .arg(row["r"].asInt())
                            .arg(row["p1"].asInt())
                            .arg(row["p2"].asInt())
                            .arg(QString::fromStdString(row["v"].asString())));
    }
    for (const auto& line : logger) {
        if (line.contains(") = 5101"))
            beginnings.append(line);
    }
    QCOMPARE(beginnings, expected);
    QCOMPARE(logger.filter(") = OK res=").size(), expected.size());
    QCOMPARE(c.robot.takeTexts(), QStringList({kTestBox, kReleasedBox}));
    QCOMPARE(lines.last(), kDestroyed);
    QVERIFY(isWorking());
}

void TestConsoleIoInfoSession::earlierCheckFails()
{
    ConnectedConsole c;
    c.device.fail("enterMode", Failure::Coded);
    const QStringList lines = c.loadFile();
    QCOMPARE(lines.mid(lines.size() - 2), QStringList({"Вход в режим программирования...", kFailed}));
    QCOMPARE(c.robot.takeTexts(), QStringList(kTestBox));
    c.device.fail("setDeviceEnabled", Failure::Foreign);
    const QStringList unconnected = c.loadFile();
    QCOMPARE(unconnected.mid(unconnected.size() - 2), QStringList({"Подключение к устройству...", kFailed}));
    QCOMPARE(c.robot.takeTexts(), QStringList());
    c.device.dropFaults();
    QVERIFY(isWorking());
}

void TestConsoleIoInfoSession::earlierCheckWithoutALibrary()
{
    const SessionRenewal renewal;
    const ProgramDir dir;
    DialogRobot robot;
    MainWindow window;
    showWindow(window);
    robot.takeTexts();
    LogWatch watch(window);
    WindowProbe(window).callLoadFile();
    const QStringList lines = watch.takeNew();
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines.first(2), kTestLines);
    QVERIFY(lines.at(2).startsWith("Не удалось загрузить драйвер ККТ ["));
    QCOMPARE(lines.at(3), QString("Путь к файлу драйвера [" + dir.path("fpax") + "]"));
    QCOMPARE(robot.takeTexts(), QStringList());
}

void TestConsoleIoInfoSession::commandsThatAreEmptyDoNothing_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("download button") << QByteArray("btnDbgDnload");
    QTest::newRow("upload button") << QByteArray("btnDbgUploadJson");
    QTest::newRow("members without a button") << QByteArray();
}

void TestConsoleIoInfoSession::commandsThatAreEmptyDoNothing()
{
    QFETCH(const QByteArray, button);
    ConnectedConsole c;
    c.openFields(manyFields(3));
    const WindowProbe probe(*c.window);
    const QStringList freeLines{"раз", "два"};
    probe.freeStrings() = freeLines;
    probe.setKeepTempFiles(true);
    const auto files = [&c] {
        QMap<QString, QByteArray> all;
        const QDir folder(c.dir.path({}));
        for (const auto& name : folder.entryList(QDir::Files | QDir::Hidden))
            all.insert(name, bytesOf(folder.filePath(name)));
        return all;
    };
    const auto filesBefore = files();
    c.device.takeCalls();
    c.robot.takeFileDialogs();
    LogWatch watch(*c.window);
    if (button.isEmpty()) {
        QCOMPARE(probe.loadAllFromDevice(), 0);
        probe.callOldDownload();
    } else {
        auto* const shown = named<QPushButton>(*c.window, button.constData());
        shown->setEnabled(true);
        shown->show();
        const QSignalSpy clicks(shown, &QPushButton::clicked);
        clickButton(*c.window, button.constData());
        QCOMPARE(clicks.size(), 1);
    }
    QCOMPARE(c.device.takeCalls(), QStringList());
    QCOMPARE(watch.takeNew(), QStringList());
    QCOMPARE(c.robot.takeTexts(), QStringList());
    QCOMPARE(c.robot.takeFileDialogs().size(), 0);
    QVERIFY(files() == filesBefore);
    QCOMPARE(c.harm(manyFields(3)), QStringList());
    QCOMPARE(probe.freeStrings(), freeLines);
}

QTEST_MAIN(TestConsoleIoInfoSession)

#include "tst_console_ioinfo_session.moc"
