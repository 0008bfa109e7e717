#include "device/qlumfpax.h"
#include "device/tablescript.h"
#include "support/session.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <json/json.h>

#include <memory>
#include <stdexcept>

namespace {

const QString kFile = QStringLiteral("tablestlv.json");

/// A record as a program writes it to the file, but for its bytes.
Json::Value record(int subTable, int row, int first, int last, const char* v)
{
    Json::Value value(Json::objectValue);
    value["t"] = 20;
    value["s"] = subTable;
    value["r"] = row;
    value["p1"] = first;
    value["p2"] = last;
    value["v"] = v;
    return value;
}

Json::Value listOf(const QList<Json::Value>& records)
{
    Json::Value list(Json::arrayValue);
    for (const auto& value : records)
        list.append(value);
    return list;
}

/// What tablestlv.json holds of a template of one field in sub-table 2.
const QByteArray kOneFieldFile = R"([
	{
		"p1" : 1,
		"p2" : 6,
		"r" : 1,
		"s" : 2,
		"t" : 20,
		"v" : "01060000540001000A000100010008020001000302000A000100010004020001000103000A000100010001020001000004000A000100010001020001000105000A000100010002020001000206000A0001000100080200010011"
	},
	{
		"p1" : 7,
		"p2" : 12,
		"r" : 1,
		"s" : 2,
		"t" : 20,
		"v" : "070C0000540007000A000100010008020001000208000A000100010008020001000509000A000100010008020001000A0A000A00010001000102000100000B000A00010001000102000100010C000A0001000100010200010000"
	},
	{
		"p1" : 13,
		"p2" : 18,
		"r" : 1,
		"s" : 2,
		"t" : 20,
		"v" : "0D12000054000D000A00010001000102000100010E000A00010001000202000100030F000A000100010002020001000210000A000100010004020001000F11000A000100010002020001000212000A0001000100020200010003"
	},
	{
		"p1" : 19,
		"p2" : 19,
		"r" : 1,
		"s" : 2,
		"t" : 20,
		"v" : "131300000E0013000A00010001000802000100AB"
	}
]
)";

/// The field of that file.
FieldRow oneField()
{
    FieldRow field;
    field.block = 3;
    field.font = 1;
    field.x2x = 0;
    field.x2y = 1;
    field.flags = 2;
    field.gap = 17;
    field.line = 2;
    field.x = 5;
    field.size = 10;
    field.dropIfZero = 0;
    field.pressRight = 1;
    field.expand = 0;
    field.cutToWidth = 1;
    field.maskMode = 3;
    field.fractFormat = 2;
    field.brightness = 15;
    field.alignInPole = 2;
    field.alignOnTape = 3;
    field.tailChar = 171;
    return field;
}

} // namespace

/// The debug writing of the template table with its log, and the exchange through tablestlv.json.
class TestTable20Exchange : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void goodWriteHasTwoLines_data();
    void goodWriteHasTwoLines();
    void commandIsSentAsLogged();
    void refusedWriteHasThreeLines();
    void lostExchangeIsTold();
    void missingDriverIsToldForEachRecord();
    void exceptionOfTheDriverEndsTheWriting();
    void headsAndStrangeElementsAreSkipped();

    void templateIsWrittenToTheFile();
    void nothingIsWrittenUnlessAsked();
    void emptyTemplateIsWrittenAsAnEmptyList();
    void unwritableFileIsTold();
    void fileComesBackAndIsRemoved();
    void fileIsKeptIfWished();
    void fileOfAnotherSubTableLeavesNoTemplate();
    void badValuesOfTheFileAreTold();
    void missingFileLeavesTheTemplate();
    void unreadableFileLeavesTheTemplate_data();
    void unreadableFileLeavesTheTemplate();
    void listWithoutRecordsLeavesNoTemplate_data();
    void listWithoutRecordsLeavesNoTemplate();

private:
    /// What the debug writing of `records` to `device` logs.
    QStringList written(TableScript& device, const QList<Json::Value>& records)
    {
        QLumFpax fpax(&device);
        Json::Value list = listOf(records);
        QStringList log{"old"};
        m_session->probe.writeRecords(fpax, list, log);
        return log;
    }

    Session& s() { return *m_session; }
    /// Opens a template of these fields alone.
    void openFields(const QList<FieldRow>& fields)
    {
        s().probe.bd().Clear();
        s().open(s().dir.write("template.csv", maskFile(fields)));
        QCOMPARE(s().robot.takeTexts(), QStringList());
        s().log.takeNew();
    }

    std::unique_ptr<Session> m_session;
};

void TestTable20Exchange::initTestCase()
{
    m_session = std::make_unique<Session>();
}

void TestTable20Exchange::cleanupTestCase()
{
    m_session.reset();
}

void TestTable20Exchange::init()
{
    QFile::remove(s().dir.path(kFile));
    s().probe.setKeepTempFiles(false);
    s().probe.bd().Clear();
    s().robot.takeTexts();
    s().log.takeNew();
}

void TestTable20Exchange::goodWriteHasTwoLines_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QString>("end");
    QTest::newRow("four bytes") << "51 00 AA 07"
                                << "OK res=0 answer=4 [81,0,170]";
    QTest::newRow("three bytes") << "FF FE 00"
                                 << "OK res=0 answer=3 [255,254,0]";
    QTest::newRow("two bytes") << "51 00"
                               << "OK res=0 answer=2 [45,45,45]";
    QTest::newRow("two bytes and a blank") << "51 00 "
                                           << "OK res=0 answer=3 [81,0,0]";
    QTest::newRow("one byte") << "51"
                              << "OK res=0 answer=1 [45,45,45]";
    QTest::newRow("no answer") << ""
                               << "OK res=0 answer=1 [45,45,45]";
}

void TestTable20Exchange::goodWriteHasTwoLines()
{
    QFETCH(const QString, answer);
    QFETCH(const QString, end);
    TableScript device;
    device.answerTo("51 01 14 02 00 00 01 06 AB", {answer});
    QCOMPARE(written(device, {record(2, 7, 1, 6, "0106AB")}),
             (QStringList{"Запись Т20С2Р7(1-6) = 5101140200000106AB", "Запись Т20С2Р7(1-6) = " + end}));
    QCOMPARE(device.operations(),
             (QStringList{"setCommandBuffer", "execCommandBuffer", "getAnswerBuffer", "getResultCode"}));
}

void TestTable20Exchange::commandIsSentAsLogged()
{
    TableScript device;
    device.answerTo("51 01 14 0A 00 00 AB 0C", {"51 00 01"});
    // The text becomes upper-case on its way to the device.
    QCOMPARE(written(device, {record(10, -1, 300, 19, "ab0c")}),
             (QStringList{"Запись Т20С10Р-1(300-19) = 5101140a0000ab0c",
                          "Запись Т20С10Р-1(300-19) = OK res=0 answer=3 [81,0,1]"}));
    QCOMPARE(device.commands(), QStringList{"51 01 14 0A 00 00 AB 0C"});
}

void TestTable20Exchange::refusedWriteHasThreeLines()
{
    TableScript device;
    device.answerTo("51 01 14 02 00 00 01", {"51 07 08 09", {-1, -3}, 0});
    device.answerTo("51 01 14 02 00 00 02", {"", {-1, -3}, 0});
    device.answerTo("51 01 14 02 00 00 03", {"51 00 01", {}, 12});
    device.answerTo("51 01 14 02 00 00 04", {"51 00 01", {-1, 0}, 0});
    QCOMPARE(
        written(device, {record(2, 1, 1, 6, "01"), record(2, 1, 7, 12, "02"), record(2, 2, 1, 6, "03"),
                         record(2, 3, 1, 6, "04")}),
        (QStringList{
            "Запись Т20С2Р1(1-6) = 51011402000001", "Write row 1 error, ResultCode=-3 answer.size=4 [81,7,8]",
            "Запись Т20С2Р1(1-6) = OK res=-3 answer=4 [81,7,8]", "Запись Т20С2Р1(7-12) = 51011402000002",
            "Write row 1 error, ResultCode=-3 answer.size=1 [45,45,45]",
            "Запись Т20С2Р1(7-12) = OK res=-3 answer=1 [45,45,45]", "Запись Т20С2Р2(1-6) = 51011402000003",
            "Write row 2 error, ResultCode=12 answer.size=3 [81,0,1]",
            "Запись Т20С2Р2(1-6) = OK res=12 answer=3 [81,0,1]", "Запись Т20С2Р3(1-6) = 51011402000004",
            "Запись Т20С2Р3(1-6) = OK res=0 answer=3 [81,0,1]"}));
}

void TestTable20Exchange::lostExchangeIsTold()
{
    TableScript device;
    device.setText("getResultDescription", "Нет связи %1");
    device.answerTo("51 01 14 02 00 00 01", {"", {-1, -6}, 0});
    device.answerTo("51 01 14 02 00 00 02", {"51 00 01"});
    QCOMPARE(written(device, {record(2, 1, 1, 6, "01"), record(2, 2, 1, 6, "02")}),
             (QStringList{"Запись Т20С2Р1(1-6) = 51011402000001", "Ошибка записи - [-6] Нет связи %1",
                          "Запись Т20С2Р2(1-6) = 51011402000002",
                          "Запись Т20С2Р2(1-6) = OK res=0 answer=3 [81,0,1]"}));

    // So is a command that the driver does not take.
    device.dropOutcomes();
    device.forgetCalls();
    device.answerCall("setCommandBuffer", 1, {-1, -8});
    QCOMPARE(written(device, {record(2, 3, 1, 6, "02")}),
             (QStringList{"Запись Т20С2Р3(1-6) = 51011402000002", "Ошибка записи - [-8] Нет связи %1"}));
    QCOMPARE(device.count("execCommandBuffer"), 0);
}

void TestTable20Exchange::missingDriverIsToldForEachRecord()
{
    QLumFpax fpax;
    Json::Value list = listOf({record(2, 1, 1, 6, "01"), record(2, 2, 1, 6, "02")});
    QStringList log;
    s().probe.writeRecords(fpax, list, log);
    QCOMPARE(log, (QStringList{
                      "Запись Т20С2Р1(1-6) = 51011402000001", "Ошибка записи - Несуществующее устройство",
                      "Запись Т20С2Р2(1-6) = 51011402000002", "Ошибка записи - Несуществующее устройство"}));
}

void TestTable20Exchange::exceptionOfTheDriverEndsTheWriting()
{
    TableScript device;
    device.otherwise = [](const QString&) { return TableScript::Answer{"51 00 01"}; };
    device.onCall("getAnswerBuffer", [&device] {
        if (device.count("getAnswerBuffer") == 2)
            throw std::runtime_error("сломан %1");
    });
    QCOMPARE(written(device, {record(2, 1, 1, 6, "01"), record(2, 2, 1, 6, "02"), record(2, 3, 1, 6, "03")}),
             (QStringList{"Запись Т20С2Р1(1-6) = 51011402000001",
                          "Запись Т20С2Р1(1-6) = OK res=0 answer=3 [81,0,1]",
                          "Запись Т20С2Р2(1-6) = 51011402000002", "Ошибка драйвера ККТ - сломан %1"}));
}

void TestTable20Exchange::headsAndStrangeElementsAreSkipped()
{
    TableScript device;
    Json::Value wrongRow = record(2, 1, 1, 6, "01");
    wrongRow["r"] = "1";
    QCOMPARE(written(device, {record(2, 1, 0, 0, "01"), record(2, 1, 0, 6, "01"), wrongRow, 5, "text",
                              Json::Value(), Json::Value(Json::arrayValue)}),
             QStringList());
    QCOMPARE(written(device, {}), QStringList());
    QCOMPARE(device.calls(), QStringList());
}

void TestTable20Exchange::templateIsWrittenToTheFile()
{
    openFields({oneField()});
    s().probe.saveRecordsFile(2, true);
    QCOMPARE(s().robot.takeTexts(), QStringList());
    QCOMPARE(QString::fromUtf8(bytesOf(s().dir.path(kFile))).replace("   ", "\t"), QString(kOneFieldFile));
}

void TestTable20Exchange::nothingIsWrittenUnlessAsked()
{
    openFields({oneField()});
    s().probe.saveRecordsFile(2, false);
    QVERIFY(!QFile::exists(s().dir.path(kFile)));
    QCOMPARE(s().robot.takeTexts(), QStringList());
}

void TestTable20Exchange::emptyTemplateIsWrittenAsAnEmptyList()
{
    s().dir.write(kFile, QByteArray(5000, 'x'));
    s().probe.saveRecordsFile(1, true);
    QCOMPARE(bytesOf(s().dir.path(kFile)).trimmed(), "[]");
    QCOMPARE(s().robot.takeTexts(), QStringList());
}

void TestTable20Exchange::unwritableFileIsTold()
{
    openFields({oneField()});
    QVERIFY(QDir().mkdir(s().dir.path(kFile)));
    s().probe.saveRecordsFile(1, true);
    QVERIFY(QDir().rmdir(s().dir.path(kFile)));
    const auto boxes = s().robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes[0].text, "Не удалось открыть файл для записи!");
    QCOMPARE(boxes[0].icon, QMessageBox::Warning);
    QCOMPARE(s().probe.bd().items.size(), 1);
}

void TestTable20Exchange::fileComesBackAndIsRemoved()
{
    openFields(manyFields(40));
    const auto before = s().probe.bd().items;
    const QStringList onTape = s().keysOnTape();
    s().probe.saveRecordsFile(5, true);

    openFields({oneField()});
    QCOMPARE(s().keysOnTape().size(), 1);
    s().probe.loadRecordsFile(5);
    QCOMPARE(s().robot.takeTexts(), QStringList());
    QVERIFY(!QFile::exists(s().dir.path(kFile)));
    QCOMPARE(s().keysOnTape(), onTape);
    const auto& after = s().probe.bd().items;
    QCOMPARE(after.keys(), before.keys());
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        for (const auto param : BD_T20Items::T20Item::kDeviceParams)
            QCOMPARE(after[it.key()].*param, it.value().*param);
    }
    QVERIFY(areTemplateCommands(s().window, true));
}

void TestTable20Exchange::fileIsKeptIfWished()
{
    s().probe.setKeepTempFiles(true);
    s().dir.write(kFile, kOneFieldFile);
    s().probe.loadRecordsFile(2);
    QCOMPARE(s().robot.takeTexts(), QStringList());
    QCOMPARE(bytesOf(s().dir.path(kFile)), kOneFieldFile);
    QCOMPARE(s().keysOnTape(), QStringList{"1"});
    QCOMPARE(s().probe.bd().items[1].Desc, "Шапка: заголовок");
    QCOMPARE(s().probe.bd().items[1].TailChar, 171);
}

void TestTable20Exchange::fileOfAnotherSubTableLeavesNoTemplate()
{
    openFields(manyFields(3));
    s().dir.write(kFile, kOneFieldFile);
    s().probe.loadRecordsFile(1);
    QCOMPARE(s().robot.takeTexts(), QStringList{"Корректных данных не найдено!"});
    QVERIFY(!QFile::exists(s().dir.path(kFile)));
    QVERIFY(s().probe.bd().items.isEmpty());
    QVERIFY(areTemplateCommands(s().window, false));
}

void TestTable20Exchange::badValuesOfTheFileAreTold()
{
    QByteArray file = kOneFieldFile;
    QVERIFY(file.contains("0008020001000302000A"));
    file.replace("0008020001000302000A", "0008020001000B02000A"); // block 11
    s().dir.write(kFile, file);
    s().probe.loadRecordsFile(2);
    const QStringList texts = s().robot.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY(texts[0].startsWith("Поля шаблона имеют недопустимые значения!\nНайденных ошибок: 1,"));
    QVERIFY(!QFile::exists(s().dir.path(kFile)));
    QVERIFY(s().probe.bd().items.isEmpty());
}

void TestTable20Exchange::missingFileLeavesTheTemplate()
{
    openFields(manyFields(3));
    const QStringList onTape = s().keysOnTape();
    for (const bool isFolder : {false, true}) {
        if (isFolder)
            QVERIFY(QDir().mkdir(s().dir.path(kFile)));
        s().probe.loadRecordsFile(1);
        const auto boxes = s().robot.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes[0].text, "Ошибка ввода-вывода!");
        QCOMPARE(boxes[0].icon, QMessageBox::Warning);
        QCOMPARE(s().log.takeNew(),
                 QStringList{"Не удалось открыть файл с настройками [" + s().dir.path(kFile) + "]"});
        QCOMPARE(s().probe.bd().items.size(), 3);
        QCOMPARE(s().keysOnTape(), onTape);
    }
    QVERIFY(QDir().rmdir(s().dir.path(kFile)));
}

void TestTable20Exchange::unreadableFileLeavesTheTemplate_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("text") << QByteArray("template");
    QTest::newRow("cut") << kOneFieldFile.chopped(3);
    QTest::newRow("number") << QByteArray("5");
    QTest::newRow("string") << QByteArray("\"text\"");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("true") << QByteArray("true");
    QTest::newRow("object") << QByteArray("{}");
    QTest::newRow("object of records") << "{\"a\": " + kOneFieldFile + "}";
    QTest::newRow("one record") << QByteArray(
        R"({"t": 20, "s": 2, "r": 1, "p1": 19, "p2": 19, "v": "131300000E0013000A00010001000802000100AB"})");
    QTest::newRow("deeply nested") << QByteArray(200000, '[') + QByteArray(200000, ']');
    QTest::newRow("zeros") << QByteArray(100, '\0');
}

void TestTable20Exchange::unreadableFileLeavesTheTemplate()
{
    QFETCH(const QByteArray, text);
    openFields(manyFields(3));
    const QStringList onTape = s().keysOnTape();
    s().dir.write(kFile, text);
    s().probe.loadRecordsFile(2);
    const auto boxes = s().robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes[0].text, "Не удалось разобрать структуры!");
    QCOMPARE(boxes[0].icon, QMessageBox::Warning);
    QCOMPARE(s().probe.bd().items.size(), 3);
    QCOMPARE(s().keysOnTape(), onTape);
    QVERIFY(areTemplateCommands(s().window, true));
    QCOMPARE(bytesOf(s().dir.path(kFile)), text);
}

void TestTable20Exchange::listWithoutRecordsLeavesNoTemplate_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty list") << QByteArray("[]");
    QTest::newRow("strange elements") << QByteArray(R"([1, "a", null, true, [], {}, [{"s": 2}], 1.5])");
    QTest::newRow("records of wrong types") << QByteArray(
        R"([{"t": 20, "s": "2", "r": 1, "p1": 19, "p2": 19, "v": "1313"},
            {"t": 20, "s": 2, "r": 1, "p1": [19], "p2": 19, "v": "1313"},
            {"t": 20, "s": 2, "r": 1, "p1": 19, "p2": 19, "v": {}},
            {"t": 20, "s": 9999999999, "r": 1, "p1": 19, "p2": 19, "v": "1313"}])");
}

void TestTable20Exchange::listWithoutRecordsLeavesNoTemplate()
{
    QFETCH(const QByteArray, text);
    openFields(manyFields(3));
    s().dir.write(kFile, text);
    s().probe.loadRecordsFile(2);
    QCOMPARE(s().robot.takeTexts(), QStringList{"Корректных данных не найдено!"});
    QVERIFY(s().probe.bd().items.isEmpty());
    QVERIFY(!QFile::exists(s().dir.path(kFile)));
}

QTEST_MAIN(TestTable20Exchange)

#include "tst_table20_exchange.moc"
