#include "device/jsonfile.h"
#include "device/jsonfilesession.h"
#include "device/templaterecords.h"

#include <QFile>
#include <QTest>

#include <algorithm>
#include <memory>

namespace {

const QString kFile = QStringLiteral("tablestlv.json");

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

/// The exchange of the template through tablestlv.json.
class TestTable20File : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void templateIsWrittenToTheFile();
    void nothingIsWrittenUnlessAsked();
    void emptyTemplateIsWrittenAsAnEmptyList();
    void unwritableFileIsTold();
    void fileComesBackAndIsRemoved();
    void fileIsKeptIfWished();
    void fileOfAnotherSubTableLeavesNoTemplate();
    void badValuesOfTheFileAreTold();
    void missingGroupOfTheFileIsTold();
    void rowBehindAGapIsTold_data();
    void rowBehindAGapIsTold();
    void rowsBeyondTheCatalogueAreTaken_data();
    void rowsBeyondTheCatalogueAreTaken();
    void missingFileLeavesTheTemplate();
    void unreadableFileLeavesTheTemplate_data();
    void unreadableFileLeavesTheTemplate();
    void fileWithoutAListLeavesTheTemplate_data();
    void fileWithoutAListLeavesTheTemplate();
    void listWithoutRecordsLeavesNoTemplate_data();
    void listWithoutRecordsLeavesNoTemplate();

private:
    JsonFileSession& s() { return *m_session; }
    /// Opens a template of these fields alone.
    void openFields(const QList<FieldRow>& fields)
    {
        s().probe.bd().Clear();
        s().open(s().dir.write("template.csv", maskFile(fields)));
        QCOMPARE(s().robot.takeTexts(), QStringList());
        s().log.takeNew();
    }

    /// Loads a file of `text`, which must be told to be no list of records and leave all as it is.
    void compareRefused(const QByteArray& text);

    /// The file was taken, and its template dropped as of one field with the mistake `message`.
    void compareDropped(const QString& message);

    std::unique_ptr<JsonFileSession> m_session;
};

void TestTable20File::initTestCase()
{
    m_session = std::make_unique<JsonFileSession>(kFile);
}

void TestTable20File::cleanupTestCase()
{
    m_session.reset();
}

void TestTable20File::init()
{
    s().clear();
    s().probe.setKeepTempFiles(false);
    s().probe.bd().Clear();
}

void TestTable20File::compareRefused(const QByteArray& text)
{
    openFields(manyFields(3));
    const QStringList onTape = s().keysOnTape();
    s().writeFile(text);
    s().probe.loadRecordsFile(2);
    QCOMPARE(s().takeWarning(), "Не удалось разобрать структуры!");
    QCOMPARE(s().probe.bd().items.size(), 3);
    QCOMPARE(s().keysOnTape(), onTape);
    QVERIFY(areTemplateCommands(s().window, true));
    QCOMPARE(bytesOf(s().file), text);
}

void TestTable20File::compareDropped(const QString& message)
{
    QCOMPARE(s().robot.takeTexts(),
             QStringList{
                 "Поля шаблона имеют недопустимые значения!\nНайденных ошибок: 1, всего несоответствий: 1\n"
                 "Найденные несоответствия:\n" +
                 message});
    QVERIFY(!QFile::exists(s().file));
    QVERIFY(s().probe.bd().items.isEmpty());
    QVERIFY(areTemplateCommands(s().window, false));
}

void TestTable20File::templateIsWrittenToTheFile()
{
    openFields({oneField()});
    s().probe.saveRecordsFile(2, true);
    QCOMPARE(s().robot.takeTexts(), QStringList());
    QCOMPARE(s().indentedFile(), QString(kOneFieldFile));
}

void TestTable20File::nothingIsWrittenUnlessAsked()
{
    openFields({oneField()});
    s().probe.saveRecordsFile(2, false);
    QVERIFY(!QFile::exists(s().file));
    QCOMPARE(s().robot.takeTexts(), QStringList());
}

void TestTable20File::emptyTemplateIsWrittenAsAnEmptyList()
{
    s().writeFile(QByteArray(5000, 'x'));
    s().probe.saveRecordsFile(1, true);
    QCOMPARE(bytesOf(s().file).trimmed(), "[]");
    QCOMPARE(s().robot.takeTexts(), QStringList());
}

void TestTable20File::unwritableFileIsTold()
{
    openFields({oneField()});
    QVERIFY(s().blockFile());
    s().probe.saveRecordsFile(1, true);
    QVERIFY(s().unblockFile());
    QCOMPARE(s().takeWarning(), "Не удалось открыть файл для записи!");
    QCOMPARE(s().probe.bd().items.size(), 1);
}

void TestTable20File::fileComesBackAndIsRemoved()
{
    openFields(manyFields(40));
    const auto before = s().probe.bd().items;
    const QStringList onTape = s().keysOnTape();
    s().probe.saveRecordsFile(5, true);

    openFields({oneField()});
    QCOMPARE(s().keysOnTape().size(), 1);
    s().probe.loadRecordsFile(5);
    QCOMPARE(s().robot.takeTexts(), QStringList());
    QVERIFY(!QFile::exists(s().file));
    QCOMPARE(s().keysOnTape(), onTape);
    const auto& after = s().probe.bd().items;
    QCOMPARE(after.keys(), before.keys());
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        for (const auto param : BD_T20Items::T20Item::kDeviceParams)
            QCOMPARE(after[it.key()].*param, it.value().*param);
    }
    QVERIFY(areTemplateCommands(s().window, true));
}

void TestTable20File::fileIsKeptIfWished()
{
    s().probe.setKeepTempFiles(true);
    // Also one with a byte order mark in front, as some editors write it.
    for (const QByteArray& file : {kOneFieldFile, QByteArray("\xEF\xBB\xBF" + kOneFieldFile)}) {
        s().probe.bd().Clear();
        s().writeFile(file);
        s().probe.loadRecordsFile(2);
        QCOMPARE(s().robot.takeTexts(), QStringList());
        QCOMPARE(bytesOf(s().file), file);
        QCOMPARE(s().keysOnTape(), QStringList{"1"});
        QCOMPARE(s().probe.bd().items[1].Desc, "Шапка: заголовок");
        QCOMPARE(s().probe.bd().items[1].TailChar, 171);
    }
}

void TestTable20File::fileOfAnotherSubTableLeavesNoTemplate()
{
    openFields(manyFields(3));
    s().writeFile(kOneFieldFile);
    s().probe.loadRecordsFile(1);
    QCOMPARE(s().robot.takeTexts(), QStringList{"Корректных данных не найдено!"});
    QVERIFY(!QFile::exists(s().file));
    QVERIFY(s().probe.bd().items.isEmpty());
    QVERIFY(areTemplateCommands(s().window, false));
}

void TestTable20File::badValuesOfTheFileAreTold()
{
    QByteArray file = kOneFieldFile;
    QVERIFY(file.contains("0008020001000302000A"));
    file.replace("0008020001000302000A", "0008020001000B02000A"); // block 11
    s().writeFile(file);
    bool wasThere = true;
    s().robot.whileBoxIsOpen([&] { wasThere = QFile::exists(s().file); }, [] { return true; });
    s().probe.loadRecordsFile(2);
    compareDropped("В поле №1 ошибка (раздел)!");
    // It goes before the user is told.
    QVERIFY(!wasThere);
}

void TestTable20File::missingGroupOfTheFileIsTold()
{
    QByteArray file = kOneFieldFile;
    const auto start = file.indexOf("\t{\n\t\t\"p1\" : 7,");
    const auto end = file.indexOf("\t{\n\t\t\"p1\" : 13,");
    QVERIFY(start > 0 && end > start);
    s().writeFile(file.remove(start, end - start));
    s().probe.loadRecordsFile(2);
    compareDropped("В поле №1 ошибка (размер поля)!");
}

void TestTable20File::rowBehindAGapIsTold_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("row 1") << QByteArray("010601005400");
    QTest::newRow("row 160") << QByteArray("0106A0005400");
    QTest::newRow("row 65535") << QByteArray("0106FFFF5400");
}

void TestTable20File::rowBehindAGapIsTold()
{
    QFETCH(const QByteArray, start);
    QByteArray file = kOneFieldFile;
    QVERIFY(file.contains("\"010600005400"));
    s().writeFile(file.replace("010600005400", start));
    s().probe.loadRecordsFile(2);
    compareDropped("Пропущено поле №1");
}

void TestTable20File::rowsBeyondTheCatalogueAreTaken_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("lastRow");
    QTest::newRow("161") << 161 << "A0";
    QTest::newRow("300") << 300 << "2B"; // a byte has no more
}

void TestTable20File::rowsBeyondTheCatalogueAreTaken()
{
    QFETCH(const int, count);
    QFETCH(const QString, lastRow);
    QList<int> rows;
    QStringList keys;
    for (int row = 0; row < count; ++row) {
        rows.append(row);
        keys.append(QString::number(row + 1));
    }
    s().writeFile(QByteArray::fromStdString(listOf(fields(rows)).toStyledString()));
    s().probe.loadRecordsFile(1);
    QCOMPARE(s().robot.takeTexts(), QStringList());
    QStringList onTape = s().keysOnTape();
    std::sort(onTape.begin(), onTape.end(),
              [](const QString& left, const QString& right) { return left.toInt() < right.toInt(); });
    QCOMPARE(onTape, keys);
    QVERIFY(areTemplateCommands(s().window, true));
    const auto& items = s().probe.bd().items;
    QCOMPARE(items[159].Desc, "QR-код");
    for (int key = 161; key <= count; ++key) {
        QCOMPARE(items[key].Desc, "unknow");
        QCOMPARE(items[key].DescView, "unknow");
        QCOMPARE(items[key].Type, key - 1);
    }

    s().probe.saveRecordsFile(1, true);
    Json::Value list;
    QString errors;
    QCOMPARE(JsonFile::read(s().file, list, errors), JsonFile::Read);
    QCOMPARE(static_cast<int>(list.size()), 4 * count);
    for (const int behind : {4, 1}) {
        const Json::Value& last = list[4 * count - behind];
        QCOMPARE(last["r"].asInt(), count);
        QCOMPARE(QString::fromStdString(last["v"].asString()).mid(4, 4), lastRow + "00");
    }
}

void TestTable20File::missingFileLeavesTheTemplate()
{
    openFields(manyFields(3));
    const QStringList onTape = s().keysOnTape();
    for (const bool isFolder : {false, true}) {
        if (isFolder)
            QVERIFY(s().blockFile());
        s().probe.loadRecordsFile(1);
        QCOMPARE(s().takeWarning(), "Ошибка ввода-вывода!");
        QCOMPARE(s().log.takeNew(), QStringList{"Не удалось открыть файл с настройками [" + s().file + "]"});
        QCOMPARE(s().probe.bd().items.size(), 3);
        QCOMPARE(s().keysOnTape(), onTape);
    }
    QVERIFY(s().unblockFile());
}

void TestTable20File::unreadableFileLeavesTheTemplate_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("text") << QByteArray("template");
    QTest::newRow("cut") << kOneFieldFile.chopped(3);
    QTest::newRow("number") << QByteArray("5");
    QTest::newRow("string") << QByteArray("\"text\"");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("true") << QByteArray("true");
    QTest::newRow("deeply nested") << QByteArray(200000, '[') + QByteArray(200000, ']');
    QTest::newRow("zeros") << QByteArray(100, '\0');
    QTest::newRow("number beyond all") << QByteArray(R"([{"r": 1e400}])");
    QTest::newRow("half a character") << QByteArray(R"([{"v": "\ud800"}])");
    QTest::newRow("text behind") << kOneFieldFile + "junk";
    QTest::newRow("list behind") << kOneFieldFile + kOneFieldFile;
    QTest::newRow("end behind") << kOneFieldFile + "]";
    QTest::newRow("comment without an end behind") << kOneFieldFile + "/* records";
    QTest::newRow("zero behind") << kOneFieldFile + QByteArray(1, '\0') + kOneFieldFile;
}

void TestTable20File::unreadableFileLeavesTheTemplate()
{
    QFETCH(const QByteArray, text);
    compareRefused(text);
    const QStringList lines = s().log.takeNew().filter("Ошибка при разборе json");
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines[0].startsWith("Ошибка при разборе json ["));
}

void TestTable20File::fileWithoutAListLeavesTheTemplate_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("object") << QByteArray("{}");
    QTest::newRow("object of records") << "{\"a\": " + kOneFieldFile + "}";
    QTest::newRow("one record") << QByteArray(
        R"({"t": 20, "s": 2, "r": 1, "p1": 19, "p2": 19, "v": "131300000E0013000A00010001000802000100AB"})");
}

void TestTable20File::fileWithoutAListLeavesTheTemplate()
{
    QFETCH(const QByteArray, text);
    compareRefused(text);
    // It can be parsed, so there is nothing to tell of the parser.
    QCOMPARE(s().log.takeNew(), QStringList());
}

void TestTable20File::listWithoutRecordsLeavesNoTemplate_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty list") << QByteArray("[]");
    QTest::newRow("strange elements") << QByteArray(R"([1, "a", null, true, [], {}, [{"s": 2}], 1.5])");
    QTest::newRow("records of wrong types") << QByteArray(
        R"([{"t": 20, "s": "2", "r": 1, "p1": 19, "p2": 19, "v": "1313"},
            {"t": 20, "s": 2, "r": 1, "p1": [19], "p2": 19, "v": "1313"},
            {"t": 20, "s": 2, "r": 1, "p1": 19, "p2": 19, "v": {}},
            {"t": 20, "s": 9999999999, "r": 1, "p1": 19, "p2": 19, "v": "1313"},
            {"t": 20, "s": 2.5, "r": 1, "p1": 19, "p2": 19, "v": "1313"},
            {"t": 20, "s": 2, "r": true, "p1": 19, "p2": 19, "v": "1313"},
            {"t": 20, "s": 2, "r": 1, "p1": 19, "p2": 19, "v": 1313}])");
}

void TestTable20File::listWithoutRecordsLeavesNoTemplate()
{
    QFETCH(const QByteArray, text);
    openFields(manyFields(3));
    s().writeFile(text);
    s().probe.loadRecordsFile(2);
    QCOMPARE(s().robot.takeTexts(), QStringList{"Корректных данных не найдено!"});
    QVERIFY(s().probe.bd().items.isEmpty());
    QVERIFY(!QFile::exists(s().file));
}

QTEST_MAIN(TestTable20File)

#include "tst_table20_file.moc"
