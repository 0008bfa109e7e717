#include "console/ioinfolines.h"
#include "console/offeredsession.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <stdexcept>

namespace {

constexpr int kCallCount = 22;
constexpr int kGetterCount = 11; // of what the driver holds at first
constexpr int kFirstSetter = 12;

/// The length of the log when each of the calls is made.
constexpr int kLinesBefore[kCallCount] = {2,  5,  5,  6,  6,  7,  7,  8,  8,  9,  9,
                                          11, 11, 11, 11, 11, 12, 13, 14, 16, 17, 18};

/// Boxes that the user has seen by then.
QStringList boxesBefore(int k)
{
    return k > 20 ? QStringList(kConnectedBox) : QStringList();
}

bool isGetter(int k)
{
    return k <= kGetterCount || (k >= 17 && k <= 19);
}

QStringList goodLines()
{
    return offeredLines() + linesOfTheChange() + linesOfTheConnection() + QStringList(kDestroyed);
}

QString settingCall(const QString& name)
{
    return QStringLiteral("getSingleSetting(\"%1\", 4096)").arg(name);
}

QString mappingCall(const QString& name)
{
    return QStringLiteral("getSingleMapping(\"%1\", 4096)").arg(name);
}

/// The two texts of one line may be asked for in either order.
QStringList sorted(QStringList calls)
{
    calls.sort();
    return calls;
}

} // namespace

/// The console's check of the driver, with every failure.
class TestConsoleIoInfo : public QObject
{
    Q_OBJECT

private slots:
    void wholeCheck_data();
    void wholeCheck();
    void boxesStandBetweenTheSteps();
    void checkLeavesTheTemplateAlone();
    void driverWithoutTexts();
    void noLibrary();
    void badLibrary_data();
    void badLibrary();
    void noDriverObject();
    void eachCallIsRefused();
    void eachCallAfterTheFirstLookIsRefusedWithoutACode();
    void eachCallThrows_data();
    void eachCallThrows();
};

void TestConsoleIoInfo::wholeCheck_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("large") << "IOINFO";
    QTest::newRow("small") << "ioinfo";
}

void TestConsoleIoInfo::wholeCheck()
{
    QFETCH(const QString, command);
    OfferedSession s;
    callCommand(s.window, command);
    QCOMPARE(s.log.takeNew(), goodLines());
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 2);
    QCOMPARE(boxes.at(0).text, kConnectedBox);
    QCOMPARE(boxes.at(0).icon, QMessageBox::Warning);
    QCOMPARE(boxes.at(1).text, kReleasedBox);
    QCOMPARE(boxes.at(1).icon, QMessageBox::Warning);

    const QStringList calls = s.driver.calls();
    QCOMPARE(calls.size(), kCallCount);
    QCOMPARE(calls.first(), mappingCall("Port"));
    QCOMPARE(sorted(calls.first(kGetterCount)),
             sorted({mappingCall("Port"), settingCall("Protocol"), mappingCall("Protocol"),
                     mappingCall("ExistedSerial"), settingCall("Port"), settingCall("BaudRate"),
                     mappingCall("BaudRate"), settingCall("IPPort"), settingCall("IPAddress"),
                     settingCall("DeviceName"), mappingCall("DeviceName")}));
    QCOMPARE(
        calls.mid(kGetterCount),
        QStringList({"setSingleSetting(\"Port\", \"8\")", "setSingleSetting(\"Protocol\", \"0\")",
                     "setSingleSetting(\"BaudRate\", \"115200\")", "setSingleSetting(\"Model\", \"63\")",
                     "applySingleSettings()", settingCall("Port"), settingCall("Protocol"),
                     settingCall("BaudRate"), "setDeviceEnabled(1)", "resetMode()", "setDeviceEnabled(0)"}));
    QCOMPARE(s.releases(), 1);
    QCOMPARE(commandText(s.window), command);
}

void TestConsoleIoInfo::boxesStandBetweenTheSteps()
{
    OfferedSession s;
    QStringList seen;
    s.robot.atEachBox([&](const DialogRobot::SeenBox& box) {
        seen.append({box.text, s.probe.log().constLast(), s.driver.calls().constLast(),
                     QString::number(s.releases())});
    });
    s.check();
    QCOMPARE(seen, QStringList({kConnectedBox, "Подключение к устройству...", "setDeviceEnabled(1)", "0",
                                kReleasedBox, "Отключение...", "setDeviceEnabled(0)", "0"}));
    QCOMPARE(s.releases(), 1);
}

void TestConsoleIoInfo::checkLeavesTheTemplateAlone()
{
    OfferedSession s;
    s.open(s.goodFile(3));
    s.log.takeNew();
    for (int i = 1; i <= 3; ++i) {
        const QStringList lines = s.check();
        QCOMPARE(lines.first(), kLoaded);
        QCOMPARE(lines.last(), kDestroyed);
        QCOMPARE(s.releases(), i);
        QCOMPARE(s.robot.takeTexts(), QStringList({kConnectedBox, kReleasedBox}));
    }
    QVERIFY(!QFile::exists(s.dir.path("tablestlv.json")));
    s.saveAs(s.dir.path("saved.csv"));
    QCOMPARE(bytesOf(s.dir.path("saved.csv")), maskFile(manyFields(3)));
}

void TestConsoleIoInfo::driverWithoutTexts()
{
    OfferedSession s;
    s.driver.mappings.clear();
    s.driver.settings.clear();
    QCOMPARE(s.check(), QStringList({kLoaded, kCreated, "in drv protocol:  ", "in drv port:  ",
                                     "in drv bods:  ", "in drv IP: /", "in drv devName: /"}) +
                            linesOfTheChange() + linesOfTheConnection() + QStringList(kDestroyed));
}

void TestConsoleIoInfo::noLibrary()
{
    ConsoleSession s;
    const QStringList lines = s.check();
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines.first().startsWith("Не удалось загрузить драйвер ККТ [") && lines.first().contains("fpax"),
             qPrintable(lines.first()));
    QCOMPARE(lines.last(), QString("Путь к файлу драйвера [" + s.dir.path("fpax") + "]"));
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestConsoleIoInfo::badLibrary_data()
{
    QTest::addColumn<QString>("library");
    QTest::newRow("no library") << QString();
    QTest::newRow("no functions") << WITHOUT_FUNCTIONS;
    QTest::newRow("no way to make a driver") << WITHOUT_CREATE;
    QTest::newRow("no way to give it back") << WITHOUT_RELEASE;
}

void TestConsoleIoInfo::badLibrary()
{
    QFETCH(const QString, library);
    LibrarySession s;
    if (library.isEmpty())
        s.dir.write(QFileInfo(s.libraryFile()).fileName(), "не библиотека");
    else
        QVERIFY(QFile::copy(library, s.libraryFile()));
    const QStringList lines = s.check();
    // What the toolkit says about it may take more than one line.
    QVERIFY(lines.size() >= 2);
    QVERIFY2(lines.first().startsWith("Не удалось загрузить драйвер ККТ ["), qPrintable(lines.first()));
    QCOMPARE(lines.last(), QString("Путь к файлу драйвера [" + s.dir.path("fpax") + "]"));
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestConsoleIoInfo::noDriverObject()
{
    OfferedSession s(false);
    QCOMPARE(s.check(), QStringList({kLoaded, kNoObject}));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.driver.calls(), QStringList());
    QCOMPARE(s.releases(), 0);
}

void TestConsoleIoInfo::eachCallIsRefused()
{
    OfferedSession s;
    const auto settings = s.driver.settings;
    for (int k = 1; k <= kCallCount; ++k) {
        s.driver.dropOutcomes();
        s.driver.forgetCalls();
        s.driver.settings = settings;
        s.driver.answerNth(k, {-1, -100});
        const int before = s.releases();
        const QStringList lines = s.check();
        QCOMPARE(s.releases(), before + 1);
        if (isGetter(k)) { // an empty text
            QCOMPARE(lines.last(), kDestroyed);
            QVERIFY(!lines.contains(kFailed));
            QVERIFY(lines != goodLines());
            // The first text makes a line for each of three ports.
            QCOMPARE(lines.size(), goodLines().size() - (k == 1 ? 3 : 0));
            QCOMPARE(s.driver.calls().size(), kCallCount);
            QCOMPARE(s.robot.takeTexts(), QStringList({kConnectedBox, kReleasedBox}));
            continue;
        }
        QCOMPARE(lines, goodLines().first(kLinesBefore[k - 1]) + QStringList(kFailed));
        QCOMPARE(s.robot.takeTexts(), boxesBefore(k));
        QCOMPARE(s.driver.operations().mid(k),
                 QStringList({"getResultCode", "getResultDescription", "getBadParam"}));
    }
    s.driver.dropOutcomes();
    s.driver.settings = settings;
    QCOMPARE(s.check(), goodLines());
}

void TestConsoleIoInfo::eachCallAfterTheFirstLookIsRefusedWithoutACode()
{
    OfferedSession s;
    for (int k = kFirstSetter; k <= kCallCount; ++k) {
        s.driver.dropOutcomes();
        s.driver.forgetCalls();
        s.driver.answerNth(k, {-1, 0});
        const QStringList lines = s.check();
        QCOMPARE(lines.size(), goodLines().size());
        QCOMPARE(lines.last(), kDestroyed);
        QCOMPARE(s.robot.takeTexts(), QStringList({kConnectedBox, kReleasedBox}));
        QCOMPARE(s.releases(), k - kFirstSetter + 1);
    }
}

void TestConsoleIoInfo::eachCallThrows_data()
{
    QTest::addColumn<Thrown>("thrown");
    QTest::newRow("standard exception") << Thrown::Standard;
    QTest::newRow("any exception") << Thrown::Own;
}

void TestConsoleIoInfo::eachCallThrows()
{
    QFETCH(const Thrown, thrown);
    OfferedSession s;
    const auto settings = s.driver.settings;
    int failing = 0;
    for (const char* const operation : {"getSingleMapping", "getSingleSetting", "setSingleSetting",
                                        "applySingleSettings", "setDeviceEnabled", "resetMode"}) {
        s.driver.onCall(operation, [&s, &failing, thrown] {
            if (s.driver.calls().size() != failing)
                return;
            if (thrown == Thrown::Standard)
                throw std::runtime_error("сбой");
            throw 1;
        });
    }
    for (failing = 1; failing <= kCallCount; ++failing) {
        s.driver.forgetCalls();
        s.driver.settings = settings;
        QCOMPARE(s.check(), goodLines().first(kLinesBefore[failing - 1]) + QStringList(kFailed));
        QCOMPARE(s.robot.takeTexts(), boxesBefore(failing));
        QCOMPARE(s.releases(), failing);
        QCOMPARE(s.driver.calls().size(), failing);
    }
}

QTEST_MAIN(TestConsoleIoInfo)

#include "tst_console_ioinfo.moc"
