#include "console/consoleuser.h"
#include "support/session.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QListWidget>
#include <QTest>
#include <QTextEdit>

namespace {

const QStringList kConsole{"teLog", "leDbgCmd", "btnDbgCmdCall"};
const QString kNotWritten = QStringLiteral("Не удалось открыть файл для записи!");
const QString kNoLogFile = QStringLiteral("Не удалось содать новый файл с логом!");

QList<FieldRow> threeFields()
{
    return {{.block = 0, .line = 1, .desc = "Шапка: один", .need = true, .blockMask = 0x3ff},
            {.block = 1, .line = 2, .desc = "Ш: два", .blockMask = 0x1},
            {.size = 0, .desc = "без класса", .blockMask = 0xffff}};
}

QByteArray threeMasks()
{
    return "idx;Type;FA_NEED;BL_MASK\n1;0;1;1023\n2;1;0;1\n3;2;0;65535\n";
}

QByteArray threeNames()
{
    return "idx;Type;Desc\n1;0;Шапка: один\n2;1;Ш: два\n3;2;без класса\n";
}

} // namespace

/// The words that the filter line understands.
class TestConsoleWords : public QObject
{
    Q_OBJECT

private slots:
    void consoleIsHiddenAtStart();
    void samSwitchesTheConsoleOn_data();
    void samSwitchesTheConsoleOn();
    void consoleStaysOn();
    void otherTextsAreNoWords_data();
    void otherTextsAreNoWords();
    void wordsFilterWhileTheyAreTyped();
    void wordsWaitForReturn();
    void logIsSaved_data();
    void logIsSaved();
    void okOfTheSavedLogFilters();
    void emptyLogIsSaved();
    void logFileIsOverwritten();
    void logCannotBeSaved();
    void exportsAreSaved_data();
    void exportsAreSaved();
    void exportsNeedATemplate_data();
    void exportsNeedATemplate();
    void exportsCannotBeSaved_data();
    void exportsCannotBeSaved();
};

void TestConsoleWords::consoleIsHiddenAtStart()
{
    const Session s;
    for (const auto& name : consoleWidgets()) {
        const auto* const widget = named<QWidget>(s.window, qPrintable(name));
        QVERIFY2(!widget->isVisible() && !widget->isEnabled(), qPrintable(name));
    }
}

void TestConsoleWords::samSwitchesTheConsoleOn_data()
{
    QTest::addColumn<QString>("word");
    for (const char* const word : {"SAM", "sam", "Sam", "sAM"})
        QTest::newRow(word) << word;
}

void TestConsoleWords::samSwitchesTheConsoleOn()
{
    QFETCH(const QString, word);
    Session s;
    const QStringList before = s.probe.log();
    typeWord(s.window, word);
    QCOMPARE(usableConsoleWidgets(s.window), kConsole);
    QCOMPARE(filterText(s.window), QString());
    // It shows the whole start, which begins with the driver.
    QCOMPARE(s.probe.log(), before);
    QVERIFY2(before.first().startsWith("Драйвер НЕ загружен! ret=1 strOut="), qPrintable(before.first()));
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestConsoleWords::consoleStaysOn()
{
    Session s;
    typeWord(s.window, "SAM");
    typeWord(s.window, "SAM");
    typeWord(s.window, "other");
    s.open(s.goodFile(3));
    typeWord(s.window, "SAVELOG");
    QCOMPARE(usableConsoleWidgets(s.window), kConsole);
    // The log can only grow: its button takes no click.
    const QStringList before = s.probe.log();
    s.click("btnDbgClear");
    QCOMPARE(s.probe.log(), before);
    QVERIFY(!before.isEmpty());
}

void TestConsoleWords::otherTextsAreNoWords_data()
{
    QTest::addColumn<QString>("text");
    for (const char* const text :
         {"", " SAM", "SAM ", "SAMS", "SA", "SAVE", " SAVELOG", "SAVELOG ", " SAVEMASK", "SAVENAME ",
          "SAVE LOG", "САМ", "SHBD", "SHBDBL", "SHMBL", "SHMSK", "SETDBG", "IOINFO"})
        QTest::addRow("[%s]", text) << text;
}

void TestConsoleWords::otherTextsAreNoWords()
{
    QFETCH(const QString, text);
    Session s;
    s.open(s.goodFile(3));
    s.log.takeNew();
    const QStringList before = QDir(s.dir.path({})).entryList(QDir::AllEntries | QDir::Hidden);
    typeWord(s.window, text);
    QCOMPARE(usableConsoleWidgets(s.window), QStringList());
    QCOMPARE(filterText(s.window), text);
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(QDir(s.dir.path({})).entryList(QDir::AllEntries | QDir::Hidden), before);
    QVERIFY(!s.probe.bd().items.isEmpty());
}

void TestConsoleWords::wordsFilterWhileTheyAreTyped()
{
    Session s;
    s.open(s.dir.write("names.csv.in", maskFile({{.desc = "Класс: sa"},
                                                 {.size = 0, .desc = "Класс: sam"},
                                                 {.size = 0, .desc = "Класс: sa"}})));
    const auto* const list = named<QListWidget>(s.window, "listWidget");
    const auto* const box = named<QGroupBox>(s.window, "grBoxFilter");
    clickCheckBox(named<QCheckBox>(s.window, "chbFilter"));
    QVERIFY(named<QCheckBox>(s.window, "chbFilter")->isChecked());
    typeFilter(s.window, "SA");
    QCOMPARE(list->count(), 2);
    typeFilter(s.window, "SAM");
    QCOMPARE(list->count(), 1);
    QCOMPARE(list->item(0)->text(), QString("Класс: sam"));
    QCOMPARE(box->title(), QString("Фильтр полей [1 из 3]"));
    typeWord(s.window, "SAM");
    QCOMPARE(usableConsoleWidgets(s.window), kConsole);
    QCOMPARE(list->count(), 2);
    QCOMPARE(box->title(), QString("Фильтр полей [2 из 3]"));
}

void TestConsoleWords::wordsWaitForReturn()
{
    Session s;
    s.open(s.goodFile(3));
    for (const char* const word : {"SAM", "SAVELOG", "SAVEMASK", "SAVENAME"})
        typeFilter(s.window, word);
    QCOMPARE(usableConsoleWidgets(s.window), QStringList());
    QCOMPARE(s.robot.takeTexts(), QStringList());
    for (const char* const name : {"outlog.txt", "masks.csv", "names.csv"})
        QVERIFY(!QFile::exists(s.dir.path(name)));
}

void TestConsoleWords::logIsSaved_data()
{
    QTest::addColumn<QString>("word");
    for (const char* const word : {"SAVELOG", "savelog", "SaveLog"})
        QTest::newRow(word) << word;
}

void TestConsoleWords::logIsSaved()
{
    QFETCH(const QString, word);
    Session s;
    s.open(s.goodFile(3));
    named<QTextEdit>(s.window, "teLog")->append("строка с \tзнаком и €");
    const QStringList lines = s.probe.log();
    QVERIFY(lines.size() > 2);
    typeWord(s.window, word);
    QCOMPARE(bytesOf(s.dir.path("outlog.txt")), lines.join(u'\n').toUtf8());
    QCOMPARE(filterText(s.window), QString("OK"));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.probe.log(), lines);
    QCOMPARE(usableConsoleWidgets(s.window), QStringList());
}

void TestConsoleWords::okOfTheSavedLogFilters()
{
    Session s;
    s.open(s.dir.write("fields.csv",
                       maskFile({{.size = 0, .desc = "Класс: ok"}, {.size = 0, .desc = "Класс: no"}})));
    clickCheckBox(named<QCheckBox>(s.window, "chbFilter"));
    typeWord(s.window, "SAVELOG");
    const auto* const list = named<QListWidget>(s.window, "listWidget");
    QCOMPARE(list->count(), 1);
    QCOMPARE(list->item(0)->text(), QString("Класс: ok"));
}

void TestConsoleWords::emptyLogIsSaved()
{
    Session s;
    named<QTextEdit>(s.window, "teLog")->clear();
    typeWord(s.window, "SAVELOG");
    QVERIFY(QFile::exists(s.dir.path("outlog.txt")));
    QCOMPARE(bytesOf(s.dir.path("outlog.txt")), QByteArray());
    QCOMPARE(filterText(s.window), QString("OK"));
}

void TestConsoleWords::logFileIsOverwritten()
{
    Session s;
    s.dir.write("outlog.txt", QByteArray(100000, 'x'));
    named<QTextEdit>(s.window, "teLog")->setPlainText("одна");
    typeWord(s.window, "SAVELOG");
    QCOMPARE(bytesOf(s.dir.path("outlog.txt")), QByteArray("одна"));
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestConsoleWords::logCannotBeSaved()
{
    Session s;
    QVERIFY(QDir().mkdir(s.dir.path("outlog.txt")));
    typeWord(s.window, "SAVELOG");
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, kNoLogFile);
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(s.log.takeNew(), QStringList(kNoLogFile));
    QCOMPARE(filterText(s.window), QString("SAVELOG"));
    QVERIFY(QDir().rmdir(s.dir.path("outlog.txt")));
    typeWord(s.window, "SAVELOG");
    QCOMPARE(filterText(s.window), QString("OK"));
    QCOMPARE(bytesOf(s.dir.path("outlog.txt")), s.probe.log().join(u'\n').toUtf8());
}

void TestConsoleWords::exportsAreSaved_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("masks") << "SAVEMASK"
                           << "masks.csv"
                           << "Masks saved" << threeMasks();
    QTest::newRow("masks, small") << "savemask"
                                  << "masks.csv"
                                  << "Masks saved" << threeMasks();
    QTest::newRow("names") << "SAVENAME"
                           << "names.csv"
                           << "Names saved" << threeNames();
    QTest::newRow("names, mixed") << "SaveName"
                                  << "names.csv"
                                  << "Names saved" << threeNames();
}

void TestConsoleWords::exportsAreSaved()
{
    QFETCH(const QString, word);
    QFETCH(const QString, name);
    QFETCH(const QString, text);
    QFETCH(const QByteArray, bytes);
    Session s;
    s.open(s.dir.write("three.csv", maskFile(threeFields())));
    s.dir.write(name, QByteArray(100000, 'x'));
    s.log.takeNew();
    // When the box is told, the file is whole and the word still stands.
    QByteArray bytesThen;
    QString wordThen;
    s.robot.atEachBox([&](const DialogRobot::SeenBox&) {
        bytesThen = bytesOf(s.dir.path(name));
        wordThen = filterText(s.window);
    });
    typeWord(s.window, word);
    QCOMPARE(bytesThen, bytes);
    QCOMPARE(wordThen, word);
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, text);
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(bytesOf(s.dir.path(name)), bytes);
    QCOMPARE(filterText(s.window), QString());
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(usableConsoleWidgets(s.window), QStringList());
}

void TestConsoleWords::exportsNeedATemplate_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("name");
    QTest::newRow("masks") << "SAVEMASK"
                           << "masks.csv";
    QTest::newRow("names") << "SAVENAME"
                           << "names.csv";
}

void TestConsoleWords::exportsNeedATemplate()
{
    QFETCH(const QString, word);
    QFETCH(const QString, name);
    Session s;
    typeWord(s.window, word);
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, QString("error"));
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QVERIFY(!QFile::exists(s.dir.path(name)));
    QCOMPARE(filterText(s.window), word);
    s.dir.write(name, "старый");
    typeWord(s.window, word);
    QCOMPARE(s.robot.takeTexts(), QStringList("error"));
    QCOMPARE(filterText(s.window), word);
    QCOMPARE(bytesOf(s.dir.path(name)), QByteArray("старый"));
}

void TestConsoleWords::exportsCannotBeSaved_data()
{
    exportsNeedATemplate_data();
}

void TestConsoleWords::exportsCannotBeSaved()
{
    QFETCH(const QString, word);
    QFETCH(const QString, name);
    Session s;
    s.open(s.dir.write("three.csv", maskFile(threeFields())));
    QVERIFY(QDir().mkdir(s.dir.path(name)));
    typeWord(s.window, word);
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, kNotWritten);
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(filterText(s.window), word);
    QVERIFY(QDir(s.dir.path(name)).isEmpty());
}

QTEST_MAIN(TestConsoleWords)

#include "tst_console_words.moc"
