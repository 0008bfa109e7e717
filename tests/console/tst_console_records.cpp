#include "console/consolesession.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

const QString kIoError = QStringLiteral("Ошибка ввода-вывода!");
const QString kBadRecords = QStringLiteral("Не удалось разобрать структуры!");
const QString kBadLines = QStringLiteral("Не удалось разобрать свободные строки!");
const QString kFinished = QStringLiteral("Закончено!");

/// A console whose buttons for records are on.
struct RecordsSession : ConsoleSession
{
    RecordsSession()
    {
        callCommand(window, "SETDBG");
        log.takeNew();
    }

    QString recordsPath() const { return dir.path("tablestlv.json"); }
    QJsonArray records() const { return QJsonDocument::fromJson(bytesOf(recordsPath())).array(); }

    /// Types `text` into the console's line and saves the records.
    void saveRecords(const QString& text)
    {
        typeCommand(window, text);
        click("btnDbgSaveJson");
    }

    QString notOpened(const QString& name) const
    {
        return QStringLiteral("Не удалось открыть файл с настройками [%1]").arg(dir.path(name));
    }
};

/// A parameter with its width in bits and its value.
QString entry(int number, int bits, int value)
{
    const auto hex = [](int byte) { return QString::number(byte, 16).rightJustified(2, u'0').toUpper(); };
    return hex(number) + QStringLiteral("000A0001000100") + hex(bits) + QStringLiteral("02000100") +
           hex(value);
}

} // namespace

/// The buttons of the console that write and read the records of table 20 as a file.
class TestConsoleRecords : public QObject
{
    Q_OBJECT

private slots:
    void numberOfTheSubTable_data();
    void numberOfTheSubTable();
    void recordsOfAField();
    void recordsOfNoTemplate();
    void recordsCannotBeSaved();
    void recordsAreReadBack();
    void recordsOfAnotherSubTable();
    void bothFilesAreMissing();
    void bothFilesAreBroken();
    void freeLinesAreRead();
};

void TestConsoleRecords::numberOfTheSubTable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::newRow("one") << "1" << 1;
    QTest::newRow("two") << "2" << 2;
    QTest::newRow("nine") << "9" << 9;
    QTest::newRow("zero") << "0" << 1;
    QTest::newRow("two digits") << "12" << 1;
    QTest::newRow("blank in front") << " 2" << 1;
    QTest::newRow("letter") << "x" << 1;
    QTest::newRow("hexadecimal") << "a" << 1;
    QTest::newRow("sign") << "-" << 1;
    QTest::newRow("nothing") << "" << 1;
    QTest::newRow("command") << "SETDBG" << 1;
}

void TestConsoleRecords::numberOfTheSubTable()
{
    QFETCH(const QString, text);
    QFETCH(const int, number);
    RecordsSession s;
    s.open(s.goodFile(2));
    s.log.takeNew();
    s.saveRecords(text);
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, kFinished);
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(commandText(s.window), text);
    const QJsonArray records = s.records();
    QCOMPARE(records.size(), 8);
    for (const auto& record : records)
        QCOMPARE(record.toObject().value("s").toInt(), number);
}

void TestConsoleRecords::recordsOfAField()
{
    RecordsSession s;
    s.open(s.dir.write("one.csv", maskFile({{.block = 1,
                                             .font = 2,
                                             .x2x = 1,
                                             .line = 3,
                                             .x = 4,
                                             .size = 10,
                                             .expand = 1,
                                             .maskMode = 2,
                                             .brightness = 15,
                                             .alignInPole = 2,
                                             .alignOnTape = 3,
                                             .tailChar = 32}})));
    s.saveRecords("2");
    QCOMPARE(s.robot.takeTexts(), QStringList(kFinished));
    const auto record = [](int first, int last, const QString& digits) {
        return QJsonObject{{"t", 20}, {"s", 2}, {"r", 1}, {"p1", first}, {"p2", last}, {"v", digits}};
    };
    const QJsonArray expected{record(1, 6,
                                     "010600005400" + entry(1, 8, 1) + entry(2, 4, 2) + entry(3, 1, 1) +
                                         entry(4, 1, 0) + entry(5, 2, 0) + entry(6, 8, 0)),
                              record(7, 12,
                                     "070C00005400" + entry(7, 8, 3) + entry(8, 8, 4) + entry(9, 8, 10) +
                                         entry(10, 1, 0) + entry(11, 1, 0) + entry(12, 1, 1)),
                              record(13, 18,
                                     "0D1200005400" + entry(13, 1, 0) + entry(14, 2, 2) + entry(15, 2, 0) +
                                         entry(16, 4, 15) + entry(17, 2, 2) + entry(18, 2, 3)),
                              record(19, 19, "131300000E00" + entry(19, 8, 32))};
    QCOMPARE(s.records(), expected);
}

void TestConsoleRecords::recordsOfNoTemplate()
{
    RecordsSession s;
    s.dir.write("tablestlv.json", QByteArray(1000, 'x'));
    s.saveRecords("1");
    QCOMPARE(s.robot.takeTexts(), QStringList(kFinished));
    QCOMPARE(bytesOf(s.recordsPath()).trimmed(), QByteArray("[]"));
}

void TestConsoleRecords::recordsCannotBeSaved()
{
    RecordsSession s;
    s.open(s.goodFile(2));
    QVERIFY(QDir().mkdir(s.recordsPath()));
    s.saveRecords("1");
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 2);
    QCOMPARE(boxes.at(0).text, QString("Не удалось открыть файл для записи!"));
    QCOMPARE(boxes.at(0).icon, QMessageBox::Warning);
    QCOMPARE(boxes.at(1).text, kFinished);
    QVERIFY(QDir(s.recordsPath()).isEmpty());
}

void TestConsoleRecords::recordsAreReadBack()
{
    RecordsSession s;
    s.open(s.goodFile(3));
    s.saveRecords("1");
    s.open(s.goodFile(7, "more.csv"));
    QCOMPARE(s.probe.bd().items.size(), 7);
    s.robot.takeTexts();
    s.log.takeNew();

    s.click("btnDbgDnload_2");
    QCOMPARE(s.robot.takeTexts(), QStringList(kIoError)); // there are no free lines
    QCOMPARE(s.log.takeNew().last(), s.notOpened("tables.json"));
    QVERIFY(QFile::exists(s.recordsPath()));
    QCOMPARE(s.keysOnTape(), QStringList({"1", "2", "3"}));
    QVERIFY(areTemplateCommands(s.window, true));
    const auto& items = s.probe.bd().items;
    QCOMPARE(items.size(), 3);
    for (int key = 1; key <= 3; ++key) {
        QCOMPARE(items[key].Line, key);
        QCOMPARE(items[key].Size, 10);
        QCOMPARE(items[key].Desc, s.probe.bd().getPolesLabels().at(key - 1));
        QCOMPARE(items[key].Type, key - 1);
    }
}

void TestConsoleRecords::recordsOfAnotherSubTable()
{
    RecordsSession s;
    s.open(s.goodFile(3));
    s.saveRecords("2");
    s.robot.takeTexts();
    s.click("btnDbgDnload_2"); // takes sub-table 1 of the file
    QVERIFY(s.probe.bd().items.isEmpty());
    QCOMPARE(s.keysOnTape(), QStringList());
    QCOMPARE(s.robot.takeTexts(), QStringList({"Корректных данных не найдено!", kIoError}));
}

void TestConsoleRecords::bothFilesAreMissing()
{
    RecordsSession s;
    s.open(s.goodFile(3));
    s.log.takeNew();
    s.click("btnDbgDnload_2");
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 2);
    for (const auto& box : boxes) {
        QCOMPARE(box.text, kIoError);
        QCOMPARE(box.icon, QMessageBox::Warning);
    }
    QCOMPARE(s.log.takeNew(), QStringList({s.notOpened("tablestlv.json"), s.notOpened("tables.json")}));
    QCOMPARE(s.keysOnTape(), QStringList({"1", "2", "3"}));
}

void TestConsoleRecords::bothFilesAreBroken()
{
    RecordsSession s;
    s.open(s.goodFile(3));
    s.log.takeNew();
    s.probe.freeStrings() = QStringList{"строка"};
    s.dir.write("tablestlv.json", "[{");
    s.dir.write("tables.json", "[{");
    s.click("btnDbgDnload_2");
    QCOMPARE(s.robot.takeTexts(), QStringList({kBadRecords, kBadLines}));
    QCOMPARE(s.log.takeNew().filter("Ошибка при разборе json [").size(), 2);
    QCOMPARE(s.keysOnTape(), QStringList({"1", "2", "3"}));
    QCOMPARE(s.probe.freeStrings(), QStringList());
    QVERIFY(QFile::exists(s.recordsPath()));
}

void TestConsoleRecords::freeLinesAreRead()
{
    RecordsSession s;
    s.probe.freeStrings() = QStringList{"прежняя"};
    s.dir.write("tables.json", R"([{"t":21,"f":1,"r":2,"v":"8FE0AEA1A0"},{"t":20,"f":1,"r":1,"v":"41"},)"
                               R"({"t":21,"f":1,"r":1,"v":"4142"}])");
    s.click("btnDbgDnload_2");
    QCOMPARE(s.robot.takeTexts(), QStringList(kIoError)); // of the records
    QCOMPARE(s.probe.freeStrings(), QStringList({"Проба", "AB"}));
    QCOMPARE(s.log.takeNew(), QStringList({s.notOpened("tablestlv.json"), "Read FreeStr kol=2"}));
    QTRY_VERIFY(named<QAction>(s.window, "actionFreeStrEditor")->isEnabled());
}

QTEST_MAIN(TestConsoleRecords)

#include "tst_console_records.moc"
