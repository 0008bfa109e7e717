#include "console/consoleuser.h"
#include "support/session.h"

#include <QTest>

namespace {

/// Two fields on one line, the second of them to the left; a large one on a line of its own; one that is not placed.
QList<FieldRow> fourFields()
{
    return {{.block = 0,
             .font = 1,
             .line = 2,
             .x = 12,
             .size = 5,
             .desc = "Шапка: один %1",
             .need = true,
             .blockMask = 0x3ff},
            {.block = 0, .font = 0, .line = 2, .x = 3, .size = 4, .desc = "Шапка: два", .blockMask = 0x1},
            {.block = 1, .font = 1, .x2x = 1, .x2y = 1, .line = 3, .size = 20, .desc = "Ш: три"},
            {.size = 0, .desc = "без класса", .blockMask = 0x2a8}};
}

/// A command of the console and what it prints.
struct Dump
{
    const char* command;
    QStringList lines;   ///< for the four fields
    QStringList nothing; ///< without a template
};

QStringList blockLines()
{
    QStringList lines{"BDBlocks info. Kol=10", "Бл[i]= Lines",   "  Ln[i]= Poley idx key ", "Бл[0]= 3",
                      "  Ln[0]= 0 - -",        "  Ln[1]= 0 - -", "  Ln[2]= 2 1 2",          "Бл[1]= 4",
                      "  Ln[0]= 0 - -",        "  Ln[1]= 0 - -", "  Ln[2]= 0 - -",          "  Ln[3]= 1 0 3"};
    for (int block = 2; block < 10; ++block)
        lines += {QStringLiteral("Бл[%1]= 1").arg(block), QStringLiteral("  Ln[0]= 0 - -")};
    return lines;
}

QStringList layoutLines()
{
    QStringList lines{"Maket Blocks Kol=[lines/empty] BaseY=[offset]",
                      "  Line[i]= DY BaseY ChDX",
                      "Maket Blocks Kol=3/3 BaseY=0",
                      "  Line[0]= 21 0 384",
                      "  Line[1]= 15 21 0",
                      "  Line[2]= 20 36 12",
                      "Maket Blocks Kol=4/4 BaseY=56",
                      "  Line[0]= 21 56 384",
                      "  Line[1]= 15 77 0",
                      "  Line[2]= 15 92 0",
                      "  Line[3]= 48 107 24"};
    for (const int y : {155, 176, 197, 218, 239, 260, 281, 302})
        lines += {QStringLiteral("Maket Blocks Kol=1/1 BaseY=%1").arg(y),
                  QStringLiteral("  Line[0]= 21 %1 384").arg(y)};
    return lines;
}

QList<Dump> allDumps()
{
    return {{"SHBD",
             {"BDPoleys info. Kol=4", "[i]= NEED Bl Y X DX Desc", "[001/000]= 1 0 2 12 5 Шапка: один %1",
              "[002/001]= 0 0 2 3 4 Шапка: два", "[003/002]= 0 1 3 0 20 Ш: три",
              "[004/003]= 0 0 1 0 0 без класса"},
             {"BDPoleys info. Kol=0", "[i]= NEED Bl Y X DX Desc"}},
            {"SHBDBL", blockLines(), {"BDBlocks info. Kol=0", "Бл[i]= Lines", "  Ln[i]= Poley idx key "}},
            {"SHMBL",
             layoutLines(),
             {"Maket Blocks Kol=[lines/empty] BaseY=[offset]", "  Line[i]= DY BaseY ChDX"}},
            {"SHMSK",
             {"BDPoleys MASK info. Kol=4", "[8][8][8][8][8][8][8][8][8][8]Ш.: один %1",
              "[8][_][_][_][_][_][_][_][_][_]Ш.: два", "[8][8][8][8][8][8][8][8][8][8]Ш.: три",
              "[_][_][_][8][_][8][_][8][_][8]без класса"},
             {"BDPoleys MASK info. Kol=0"}}};
}

} // namespace

/// The commands of the console that print what the program holds.
class TestConsoleDumps : public QObject
{
    Q_OBJECT

private slots:
    void commandsPrintWhatIsHeld_data();
    void commandsPrintWhatIsHeld();
    void dumpsWithoutATemplate_data() { commandsPrintWhatIsHeld_data(); }
    void dumpsWithoutATemplate();
    void numbersAreFilledToThreeDigits();
    void headingsOffMoveTheLayout();
    void bothCountsOfLinesAreTold();
    void otherCommandsDoNothing_data();
    void otherCommandsDoNothing();
    void setDebugShowsTwoButtons_data();
    void setDebugShowsTwoButtons();
};

void TestConsoleDumps::commandsPrintWhatIsHeld_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("index");
    for (qsizetype i = 0; i < allDumps().size(); ++i) {
        const QString command = allDumps().at(i).command;
        for (const auto& typed : {command, command.toLower()})
            QTest::newRow(qPrintable(typed)) << typed << static_cast<int>(i);
    }
}

void TestConsoleDumps::commandsPrintWhatIsHeld()
{
    QFETCH(const QString, command);
    QFETCH(const int, index);
    Session s;
    typeWord(s.window, "SAM");
    s.open(s.dir.write("four.csv", maskFile(fourFields())));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    s.log.takeNew();
    for (int i = 0; i < 2; ++i) {
        callCommand(s.window, command);
        QCOMPARE(s.log.takeNew(), allDumps().at(index).lines);
        QCOMPARE(commandText(s.window), command);
    }
    QCOMPARE(s.robot.takeTexts(), QStringList());
    s.saveAs(s.dir.path("saved.csv"));
    QCOMPARE(bytesOf(s.dir.path("saved.csv")), maskFile(fourFields()));
}

void TestConsoleDumps::dumpsWithoutATemplate()
{
    QFETCH(const QString, command);
    QFETCH(const int, index);
    Session s;
    typeWord(s.window, "SAM");
    callCommand(s.window, command);
    QCOMPARE(s.log.takeNew(), allDumps().at(index).nothing);
    QVERIFY(s.probe.bd().items.isEmpty());
}

void TestConsoleDumps::numbersAreFilledToThreeDigits()
{
    Session s;
    typeWord(s.window, "SAM");
    s.open(s.goodFile(120));
    s.log.takeNew();
    callCommand(s.window, "SHBD");
    const QStringList lines = s.log.takeNew();
    QCOMPARE(lines.size(), 122);
    QCOMPARE(lines.first(), QString("BDPoleys info. Kol=120"));
    QCOMPARE(lines.at(2), QString("[001/000]= 0 0 1 0 10 Проба: поле 0"));
    QCOMPARE(lines.at(10), QString("[009/008]= 0 0 9 0 10 Проба: поле 8"));
    QCOMPARE(lines.at(11), QString("[010/009]= 0 0 10 0 10 Проба: поле 9"));
    QCOMPARE(lines.at(12), QString("[011/010]= 0 0 11 0 10 Проба: поле 10"));
    QCOMPARE(lines.at(100), QString("[099/098]= 0 3 9 0 10 Проба: поле 98"));
    QCOMPARE(lines.at(101), QString("[100/099]= 0 3 10 0 10 Проба: поле 99"));
    QCOMPARE(lines.at(102), QString("[101/100]= 0 3 11 0 10 Проба: поле 100"));
    QCOMPARE(lines.at(121), QString("[120/119]= 0 3 30 0 10 Проба: поле 119"));
}

void TestConsoleDumps::headingsOffMoveTheLayout()
{
    Session s;
    typeWord(s.window, "SAM");
    s.open(s.dir.write("one.csv", maskFile({{.block = 1, .line = 3}})));
    s.click("btnBlTitlesOnOff");
    s.log.takeNew();
    callCommand(s.window, "SHMBL");
    const QStringList lines = s.log.takeNew();
    QCOMPARE(lines.mid(2, 9), QStringList({"Maket Blocks Kol=1/1 BaseY=0", "  Line[0]= 0 0 384",
                                           "Maket Blocks Kol=4/4 BaseY=0", "  Line[0]= 0 0 384",
                                           "  Line[1]= 15 0 0", "  Line[2]= 15 15 0", "  Line[3]= 20 30 12",
                                           "Maket Blocks Kol=1/1 BaseY=50", "  Line[0]= 0 50 384"}));
}

void TestConsoleDumps::bothCountsOfLinesAreTold()
{
    Session s;
    typeWord(s.window, "SAM");
    s.open(s.dir.write("four.csv", maskFile(fourFields())));
    s.probe.maket().blocks[0].kolLines = 2;
    s.probe.maket().blocks[1].kolLines = 1;
    QStringList expected = layoutLines();
    expected[2] = "Maket Blocks Kol=3/2 BaseY=0";
    expected[6] = "Maket Blocks Kol=4/1 BaseY=56";
    s.log.takeNew();
    callCommand(s.window, "SHMBL");
    QCOMPARE(s.log.takeNew(), expected);
}

void TestConsoleDumps::otherCommandsDoNothing_data()
{
    QTest::addColumn<QString>("command");
    for (const char* const command : {"", "SHB", "SHBDB", "SHBD ", " SHBD", "HELP", "SAM", "SAVELOG",
                                      "SAVEMASK", "SAVENAME", "SET DBG", "IOINFO1", "ЫРИВ"})
        QTest::addRow("[%s]", command) << command;
}

void TestConsoleDumps::otherCommandsDoNothing()
{
    QFETCH(const QString, command);
    Session s;
    typeWord(s.window, "SAM");
    s.open(s.goodFile(3));
    s.log.takeNew();
    const QStringList before = usableConsoleWidgets(s.window);
    callCommand(s.window, command);
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(commandText(s.window), command);
    QCOMPARE(usableConsoleWidgets(s.window), before);
}

void TestConsoleDumps::setDebugShowsTwoButtons_data()
{
    QTest::addColumn<QString>("command");
    for (const char* const command : {"SETDBG", "setdbg", "SetDbg"})
        QTest::newRow(command) << command;
}

void TestConsoleDumps::setDebugShowsTwoButtons()
{
    QFETCH(const QString, command);
    Session s;
    typeWord(s.window, "SAM");
    QVERIFY(!s.probe.keepTempFiles());
    callCommand(s.window, command);
    QCOMPARE(s.log.takeNew(), QStringList("DBG MODE ON"));
    const QStringList usable{"teLog", "leDbgCmd", "btnDbgCmdCall", "btnDbgSaveJson", "btnDbgDnload_2"};
    QCOMPARE(usableConsoleWidgets(s.window), usable);
    QVERIFY(s.probe.keepTempFiles());
    QCOMPARE(commandText(s.window), command);
    callCommand(s.window, command);
    QCOMPARE(s.log.takeNew(), QStringList("DBG MODE ON"));
    QCOMPARE(usableConsoleWidgets(s.window), usable);
    QVERIFY(s.probe.keepTempFiles());
}

QTEST_MAIN(TestConsoleDumps)

#include "tst_console_dumps.moc"
