#include "markingtranslator.h"
#include "oldrecords.h"

#include <QCoreApplication>
#include <QTest>

using namespace oldrecords;
using recordtools::differences;

class TestReadingOldRecords : public QObject
{
    Q_OBJECT

private slots:
    void noLinesGiveOne_data() { bothFormats(); }
    void noLinesGiveOne();
    void descriptionOfFourCharactersIsTaken_data();
    void descriptionOfFourCharactersIsTaken();
    void lineWithoutDescriptionHasThatOfTheCatalogue();
    void shortTextForACodeIsNoCode();
    void descriptionIsCutAtTheSeparator_data() { bothFormats(); }
    void descriptionIsCutAtTheSeparator();
    void descriptionOfTheFileHasADerivedShortForm_data() { bothFormats(); }
    void descriptionOfTheFileHasADerivedShortForm();
    void carriageReturnStaysInTheLastColumn();
    void keysBeyondTheCatalogueAreUnknown_data() { bothFormats(); }
    void keysBeyondTheCatalogueAreUnknown();
    void textOfAnUnknownKeyIsTranslated_data() { bothFormats(); }
    void textOfAnUnknownKeyIsTranslated();
    void mandatoryFieldsFollowTheKey_data() { bothFormats(); }
    void mandatoryFieldsFollowTheKey();
    void recordsAreReplacedKeyByKey_data() { bothFormats(); }
    void recordsAreReplacedKeyByKey();
    void linesWithoutARecordChangeNothing_data() { bothFormats(); }
    void linesWithoutARecordChangeNothing();
};

void TestReadingOldRecords::noLinesGiveOne()
{
    QFETCH(const bool, old);
    BD_T20Items bd;
    bd.items[1] = recordtools::markedItem(1);
    QCOMPARE(bd.LoadFromListV01({}, old), 1);
    QCOMPARE(differences(bd.items, {{1, recordtools::markedItem(1)}}), QStringList());
    QCOMPARE(bd.LoadFromListV01({""}, old), 0);
    QCOMPARE(bd.LoadFromListV01({lineOf(old)}, old), 0);
}

void TestReadingOldRecords::descriptionOfFourCharactersIsTaken_data()
{
    QTest::addColumn<bool>("old");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("desc");
    QTest::addColumn<QString>("view");
    const auto row = [](const QString& text, const QString& desc, const QString& view) {
        forBoth('"' + text + '"', [&](QTestData& data) { data << text << desc << view; });
    };
    const QString catalogue = "Шапка: заголовок";
    const QString catalogueView = "Ш.: заголовок";
    row("", catalogue, catalogueView);
    row("а", catalogue, catalogueView);
    row("абв", catalogue, catalogueView);
    row("а:в", catalogue, catalogueView);
    row("   ", catalogue, catalogueView);
    row("абвг", "абвг", "абвг");
    row("аб:г", "аб:г", "а.:г");
    row("    ", "    ", "    ");
    row("1234", "1234", "1234");
    row(" Свой: текст ", " Свой: текст ", " .: текст ");
}

void TestReadingOldRecords::descriptionOfFourCharactersIsTaken()
{
    QFETCH(const bool, old);
    QFETCH(const QString, text);
    QFETCH(const QString, desc);
    QFETCH(const QString, view);
    Item expected = recordOf(old, 1);
    expected.Desc = desc;
    expected.DescView = view;
    QCOMPARE(differences(read({lineWith(old, old ? 20 : 19, text)}, old), {{1, expected}}), QStringList());
}

void TestReadingOldRecords::lineWithoutDescriptionHasThatOfTheCatalogue()
{
    const QString line = recordtools::countedColumns(50, 20).join(';');
    const auto items = read(QStringList(160, line), true);
    QCOMPARE(items.size(), 160);
    for (const auto& [key, desc, view] : {std::tuple{1, "Шапка: заголовок", "Ш.: заголовок"},
                                          {2, "Свободная строка 1", "Свободная строка 1"},
                                          {44, "Налог на чек: A: символ", "Н.: A: символ"},
                                          {95, "ЗН: надпись", "ЗН: надпись"},
                                          {124, "ФПД: значение", "ФПД: значение"},
                                          {158, "Строка: \"ЧЕК АННУЛИРОВАН\"", "С.: \"ЧЕК АННУЛИРОВАН\""},
                                          {160, "Картинка", "Картинка"}}) {
        QCOMPARE(items[key].Desc, desc);
        QCOMPARE(items[key].DescView, view);
        QCOMPARE(items[key].TailChar, 69);
    }
}

/// A "new, 19+str" file of short descriptions passes for one of the oldest format.
void TestReadingOldRecords::shortTextForACodeIsNoCode()
{
    for (const QString text : {"а", "аб", "абв"}) {
        const QString line = (recordtools::countedColumns(50, 19) << text).join(';');
        BD_T20Items bd;
        QList<int> votes;
        bd.LoadFrom_AnalizeType({line}, votes);
        QCOMPARE(votes, (QList<int>{0, 1, 0, 0, 0}));
        bd.LoadFromListV01({line}, true);
        Item expected = recordOf(true, 1);
        expected.TailChar = 0;
        expected.Desc = "Шапка: заголовок";
        expected.DescView = "Ш.: заголовок";
        QCOMPARE(differences(bd.items, {{1, expected}}), QStringList());
    }
}

void TestReadingOldRecords::descriptionIsCutAtTheSeparator()
{
    QFETCH(const bool, old);
    QStringList columns = columnsOf(old);
    columns.last() = "Свой: а;б";
    QCOMPARE(read({columns.join(';')}, old).value(1).Desc, "Свой: а");
    columns.last() = "Свой: а,б";
    QCOMPARE(read({columns.join(';')}, old).value(1).Desc, "Свой: а,б");
    QCOMPARE(read({columns.join(',')}, old).value(1).Desc, "Свой: а");
}

void TestReadingOldRecords::descriptionOfTheFileHasADerivedShortForm()
{
    QFETCH(const bool, old);
    QStringList lines(95, lineOf(old));
    const QString short95 = lineWith(old, old ? 20 : 19, "");
    const QString own95 = lineWith(old, old ? 20 : 19, "ЗН: надпись");
    lines[94] = short95;
    QCOMPARE(read(lines, old).value(95).DescView, "ЗН: надпись");
    lines[94] = own95;
    QCOMPARE(read(lines, old).value(95).Desc, "ЗН: надпись");
    QCOMPARE(read(lines, old).value(95).DescView, "З.: надпись");
}

void TestReadingOldRecords::carriageReturnStaysInTheLastColumn()
{
    QCOMPARE(read({lineOf(true) + '\r'}, true).value(1).Desc, kDesc + '\r');
    QCOMPARE(read({lineOf(false) + '\r'}, false).value(1).Desc, kDesc + '\r');
    QCOMPARE(read({lineWith(false, 19, "абв") + '\r'}, false).value(1).Desc, "абв\r");
    QCOMPARE(read({lineWith(false, 19, "аб") + '\r'}, false).value(1).Desc, "Шапка: заголовок");
    QCOMPARE(read({recordtools::countedColumns(50, 20).join(';') + '\r'}, true).value(1).TailChar, 69);
}

void TestReadingOldRecords::keysBeyondTheCatalogueAreUnknown()
{
    QFETCH(const bool, old);
    QStringList lines(161, lineWith(old, old ? 20 : 19, "абв"));
    lines.append(lineOf(old));
    const auto items = read(lines, old);
    QCOMPARE(items.size(), 162);
    QCOMPARE(items[160].Desc, "Картинка");
    QCOMPARE(items[161].Desc, "unknow:161");
    QCOMPARE(items[161].DescView, "unk.:161");
    QCOMPARE(items[162].Desc, kDesc);
    QCOMPARE(items[162].DescView, "С.: текст");
}

void TestReadingOldRecords::textOfAnUnknownKeyIsTranslated()
{
    QFETCH(const bool, old);
    BD_T20Items bd;
    MarkingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    bd.LoadFromListV01(QStringList(161, lineWith(old, old ? 20 : 19, "абв")), old);
    QVERIFY(QCoreApplication::removeTranslator(&translator));
    QCOMPARE(bd.getPoleByKey(160).Desc, "Картинка");
    QCOMPARE(bd.getPoleByKey(161).Desc, MarkingTranslator::marked("unknow:161"));
    QCOMPARE(bd.getPoleByKey(161).DescView, MarkingTranslator::marked("unk.:161"));
}

void TestReadingOldRecords::mandatoryFieldsFollowTheKey()
{
    QFETCH(const bool, old);
    const auto items = read(QStringList(170, lineOf(old)), old);
    for (int key = 1; key <= 170; ++key)
        QCOMPARE(differences(items.value(key), recordOf(old, key)), QStringList());
}

void TestReadingOldRecords::recordsAreReplacedKeyByKey()
{
    QFETCH(const bool, old);
    BD_T20Items bd;
    for (const int key : {-3, 0, 1, 2, 3, 4, 9})
        bd.items[key] = recordtools::markedItem(key);
    bd.ReComputeBDBlocks();
    QMap<int, Item> expected = bd.items; // recomputing fills the gaps
    const auto blockCount = bd.blocks.size();
    QVERIFY(blockCount > 0);
    const QStringList labels = bd.PolesLabels;
    bd.LoadFromListV01({lineOf(old), lineOf(old)}, old);
    expected[1] = recordOf(old, 1);
    expected[2] = recordOf(old, 2);
    QCOMPARE(differences(bd.items, expected), QStringList());
    QCOMPARE(bd.blocks.size(), blockCount);
    QCOMPARE(bd.PolesLabels, labels);
}

void TestReadingOldRecords::linesWithoutARecordChangeNothing()
{
    QFETCH(const bool, old);
    BD_T20Items bd;
    bd.items[1] = recordtools::markedItem(1);
    QCOMPARE(bd.LoadFromListV01({"", lineWith(old, 0, "abc"), '#' + lineOf(old), "1;2;3"}, old), 0);
    QCOMPARE(differences(bd.items, {{1, recordtools::markedItem(1)}}), QStringList());
}

QTEST_GUILESS_MAIN(TestReadingOldRecords)
#include "tst_reading_old_records.moc"
