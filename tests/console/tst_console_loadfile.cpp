#include "console/ioinfolines.h"
#include "console/offeredsession.h"

#include <QFile>
#include <QTest>

namespace {

QStringList goodLines()
{
    return kTestLines + offeredLines() + linesOfTheChange() + linesOfTheEarlierConnection() +
           QStringList(kDestroyed);
}

bool isDriverLoaded(const ConsoleSession& s)
{
    return QLibrary(s.dir.path("fpax")).isLoaded();
}

void addThrown()
{
    QTest::addColumn<Thrown>("thrown");
    QTest::newRow("standard exception") << Thrown::Standard;
    QTest::newRow("any exception") << Thrown::Own;
}

} // namespace

/// The earlier form of the console's check, which no button offers, with libraries of all kinds; and what both forms
/// make of a library that throws.
class TestConsoleLoadFile : public QObject
{
    Q_OBJECT

private slots:
    void wholeCheck();
    void boxesStandBetweenTheSteps();
    void badLibraryIsToldAndGoes_data();
    void badLibraryIsToldAndGoes();
    void badLibraryStaysWithWhoeverLoadedIt();
    void noDriverObject();
    void libraryWithoutAnObjectGoes_data();
    void libraryWithoutAnObjectGoes();
    void throwOfTheReleaseEndsNothing_data() { addThrown(); }
    void throwOfTheReleaseEndsNothing();
    void throwOfTheReleaseAfterAFailure_data() { addThrown(); }
    void throwOfTheReleaseAfterAFailure();
};

void TestConsoleLoadFile::wholeCheck()
{
    OfferedSession s;
    QCOMPARE(s.loadFile(), goodLines());
    QCOMPARE(s.robot.takeTexts(), QStringList({kTestBox, kReleasedBox}));
    QCOMPARE(s.releases(), 1);
    QCOMPARE(s.driver.calls().last(5), QStringList({"setDeviceEnabled(1)", "setMode(4)", "enterMode()",
                                                    "resetMode()", "setDeviceEnabled(0)"}));
}

void TestConsoleLoadFile::boxesStandBetweenTheSteps()
{
    OfferedSession s;
    QStringList seen;
    s.robot.atEachBox([&](const DialogRobot::SeenBox& box) {
        seen.append({box.text, s.probe.log().constLast(), s.driver.calls().constLast(),
                     QString::number(s.releases())});
    });
    s.loadFile();
    QCOMPARE(seen, QStringList({kTestBox, "Подключение к устройству...", "setDeviceEnabled(1)", "0",
                                kReleasedBox, "Отключение...", "setDeviceEnabled(0)", "0"}));
}

void TestConsoleLoadFile::badLibraryIsToldAndGoes_data()
{
    QTest::addColumn<QString>("library");
    QTest::newRow("no functions") << WITHOUT_FUNCTIONS;
    QTest::newRow("no way to make a driver") << WITHOUT_CREATE;
    QTest::newRow("no way to give it back") << WITHOUT_RELEASE;
}

void TestConsoleLoadFile::badLibraryIsToldAndGoes()
{
    QFETCH(const QString, library);
    LibrarySession s;
    QVERIFY(QFile::copy(library, s.libraryFile()));
    for (int i = 0; i < 2; ++i) {
        const QStringList lines = s.loadFile();
        // What the toolkit says about it may take more than one line.
        QVERIFY(lines.size() >= 4);
        QCOMPARE(lines.first(2), kTestLines);
        QVERIFY2(lines.at(2).startsWith("Не удалось загрузить драйвер ККТ ["), qPrintable(lines.at(2)));
        QCOMPARE(lines.last(), QString("Путь к файлу драйвера [" + s.dir.path("fpax") + "]"));
        QVERIFY(!lines.contains(kLoaded));
        QCOMPARE(s.robot.takeTexts(), QStringList());
        QVERIFY(!isDriverLoaded(s));
    }
}

void TestConsoleLoadFile::badLibraryStaysWithWhoeverLoadedIt()
{
    LibrarySession s;
    QVERIFY(QFile::copy(WITHOUT_RELEASE, s.libraryFile()));
    QLibrary other(s.dir.path("fpax"));
    QVERIFY(other.load());
    QCOMPARE(s.loadFile().last(), QString("Путь к файлу драйвера [" + s.dir.path("fpax") + "]"));
    QVERIFY(other.isLoaded());
    const auto sum = reinterpret_cast<int (*)(int, int)>(other.resolve("Sum"));
    QVERIFY(sum != nullptr);
    QCOMPARE(sum(2, 3), 5);
    other.unload();
}

void TestConsoleLoadFile::noDriverObject()
{
    OfferedSession s(false);
    QCOMPARE(s.loadFile(), kTestLines + QStringList({kLoaded, kNoObject}));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.driver.calls(), QStringList());
    QCOMPARE(s.releases(), 0);
}

void TestConsoleLoadFile::libraryWithoutAnObjectGoes_data()
{
    QTest::addColumn<QString>("library");
    QTest::newRow("another version") << OTHER_VERSION;
    QTest::newRow("standard exception") << THROWS_STANDARD;
    QTest::newRow("any exception") << THROWS_ITS_OWN;
}

void TestConsoleLoadFile::libraryWithoutAnObjectGoes()
{
    QFETCH(const QString, library);
    LibrarySession s;
    QVERIFY(QFile::copy(library, s.libraryFile()));
    QCOMPARE(s.loadFile(), kTestLines + QStringList({kLoaded, kNoObject}));
    QVERIFY(!isDriverLoaded(s));
    QCOMPARE(s.check(), QStringList({kLoaded, kNoObject}));
    QVERIFY(!isDriverLoaded(s));
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestConsoleLoadFile::throwOfTheReleaseEndsNothing()
{
    QFETCH(const Thrown, thrown);
    OfferedSession s;
    const auto settings = s.driver.settings;
    s.throwOnRelease(thrown);
    QCOMPARE(s.loadFile(), goodLines());
    QCOMPARE(s.releases(), 1);
    QCOMPARE(s.robot.takeTexts(), QStringList({kTestBox, kReleasedBox}));
    s.driver.settings = settings;
    QCOMPARE(s.check(),
             offeredLines() + linesOfTheChange() + linesOfTheConnection() + QStringList(kDestroyed));
    QCOMPARE(s.releases(), 2);
}

void TestConsoleLoadFile::throwOfTheReleaseAfterAFailure()
{
    QFETCH(const Thrown, thrown);
    OfferedSession s;
    s.throwOnRelease(thrown);
    s.driver.answer("setDeviceEnabled", {-1, -100});
    QCOMPARE(s.loadFile().last(2), QStringList({"Подключение к устройству...", kFailed}));
    QCOMPARE(s.check().last(2), QStringList({"Подключение к устройству...", kFailed}));
    QCOMPARE(s.releases(), 2);
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

QTEST_MAIN(TestConsoleLoadFile)

#include "tst_console_loadfile.moc"
