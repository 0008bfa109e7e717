#include "recordtools.h"

#include <QTest>

#include <limits>
#include <type_traits>

using recordtools::differences;
using recordtools::Item;

namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

Item exampleItem()
{
    Item item;
    item.Type = 11;
    item.FA_NEED = true;
    item.BL_MASK = 0xffff;
    item.Block = 1;
    item.Font = 1;
    item.Line = 2;
    item.Size = 20;
    item.Brightness = 1;
    item.AlignInPole = 1;
    item.AlignOnTape = 1;
    item.TailChar = 32;
    item.Desc = "Позиция: наименование";
    return item;
}

const QString kExampleRow =
    "1;ffff;011;1;1;0;0;0;0;2;0;20;---;0;0;0;0;0;0;1;1;1;32;00;0;Позиция: наименование";

/// A record whose nineteen numbers are 1 to 19.
Item countedItem(int type)
{
    Item item;
    item.Type = type;
    int value = 0;
    for (const auto& [name, param] : recordtools::kParams)
        item.*param = ++value;
    item.Desc = "Свой: текст";
    return item;
}

QString rowOf(const Item& item)
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, item);
    QStringList rows;
    bd.SaveToListWMask(rows);
    return rows.value(0);
}

QString columnOf(const Item& item, int column)
{
    return rowOf(item).split(';').value(column);
}

/// A store whose keys are neither contiguous nor in the order in which they came.
BD_T20Items scatteredStore()
{
    BD_T20Items bd;
    for (const int key : {160, 5, -2, 7, 0, 1000000}) {
        Item item;
        item.Type = 300 + key % 100;
        item.FA_NEED = key == 7;
        item.BL_MASK = static_cast<quint32>(key == 5 ? 0x3ff : 0xffffffff);
        item.Desc = QString("Поле: %1").arg(key);
        bd.AddPoleToBD(key, item);
    }
    return bd;
}

// Writing only looks at the template.
using WritingMember = int (BD_T20Items::*)(QStringList&) const;
static_assert(std::is_same_v<decltype(&BD_T20Items::SaveToListWMask), WritingMember>);
static_assert(std::is_same_v<decltype(&BD_T20Items::SaveToList), WritingMember>);
static_assert(std::is_same_v<decltype(&BD_T20Items::ExportNameList), WritingMember>);
static_assert(std::is_same_v<decltype(&BD_T20Items::ExportMaskList), WritingMember>);

} // namespace

class TestWriting : public QObject
{
    Q_OBJECT

private slots:
    void emptyStoreGivesNoRows();
    void storeGivesItsRowsAndZero();
    void rowIsWrittenLetterForLetter();
    void everyFieldHasItsColumn();
    void rowHasTwentySixColumns_data();
    void rowHasTwentySixColumns();
    void typeIsPadded_data();
    void typeIsPadded();
    void maskHasFourDigitsOrMore_data();
    void maskHasFourDigitsOrMore();
    void maskWiderThanSixteenBitsVotesForNothing();
    void dashesFillUpToThirtyTwo_data();
    void dashesFillUpToThirtyTwo();
    void zerosFollowTheTailChar_data();
    void zerosFollowTheTailChar();
    void descriptionIsWrittenAsItStands_data();
    void descriptionIsWrittenAsItStands();
    void shortDescriptionIsNotWritten();
    void rowsComeInTheOrderOfTheKeys();
    void plainRowsHoldTheParamsAndTheDescription();
    void plainRowsComeInTheOrderOfTheKeys();
    void namesAreExported();
    void masksAreExported();
};

void TestWriting::emptyStoreGivesNoRows()
{
    const BD_T20Items bd;
    QStringList rows{"прежняя", "строка"};
    QCOMPARE(bd.SaveToListWMask(rows), -1);
    QCOMPARE(rows, QStringList());
    rows = {"прежняя"};
    QCOMPARE(bd.SaveToList(rows), -1);
    QCOMPARE(rows, QStringList());
    rows = {"прежняя"};
    QCOMPARE(bd.ExportNameList(rows), 1);
    QCOMPARE(rows, QStringList());
    rows = {"прежняя"};
    QCOMPARE(bd.ExportMaskList(rows), 1);
    QCOMPARE(rows, QStringList());
}

void TestWriting::storeGivesItsRowsAndZero()
{
    BD_T20Items bd;
    bd.AddPoleToBD(12, exampleItem());
    QStringList rows{"прежняя", "строка"};
    QCOMPARE(bd.SaveToListWMask(rows), 0);
    QCOMPARE(rows, QStringList{kExampleRow});
    rows = {"прежняя"};
    QCOMPARE(bd.SaveToList(rows), 0);
    QCOMPARE(rows, QStringList{"1;1;0;0;0;0;2;0;20;0;0;0;0;0;0;1;1;1;32;Позиция: наименование"});
    rows = {"прежняя"};
    QCOMPARE(bd.ExportNameList(rows), 0);
    QCOMPARE(rows, (QStringList{"idx;Type;Desc", "1;11;Позиция: наименование"}));
    rows = {"прежняя"};
    QCOMPARE(bd.ExportMaskList(rows), 0);
    QCOMPARE(rows, (QStringList{"idx;Type;FA_NEED;BL_MASK", "1;11;1;65535"}));
}

void TestWriting::rowIsWrittenLetterForLetter()
{
    QCOMPARE(rowOf(exampleItem()), kExampleRow);
    QCOMPARE(rowOf(Item()), "0;0000;000;0;0;0;0;0;0;0;0;0;----;0;0;0;0;0;0;0;0;0;0;000;0;");
}

void TestWriting::everyFieldHasItsColumn()
{
    Item item = countedItem(50);
    item.BL_MASK = 0x2cd;
    QCOMPARE(rowOf(item), "0;02cd;050;1;2;3;4;5;6;7;8;9;----;10;11;12;13;14;15;16;17;18;19;00;0;Свой: текст");
}

void TestWriting::rowHasTwentySixColumns_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<quint32>("mask");
    QTest::newRow("zeros") << 0 << 0U;
    QTest::newRow("bytes") << 255 << 0xffffU;
    QTest::newRow("highest") << kHighest << 0xffffffffU;
    QTest::newRow("lowest") << kLowest << 0xffffffffU;
    QTest::newRow("undefined") << -1 << 0xffffffffU;
}

void TestWriting::rowHasTwentySixColumns()
{
    QFETCH(const int, number);
    QFETCH(const quint32, mask);
    Item item;
    item.FA_NEED = true;
    item.BL_MASK = mask;
    item.Type = number;
    for (const auto& [name, param] : recordtools::kParams)
        item.*param = number;
    item.Desc = "Текст";
    const auto columns = rowOf(item).split(';');
    QCOMPARE(columns.size(), 26);
    for (int column = 3; column <= 22; ++column) {
        if (column != 12)
            QCOMPARE(columns.at(column), QString::number(number));
    }
    QCOMPARE(columns.at(24), "0");
    QCOMPARE(columns.at(25), "Текст");
}

void TestWriting::typeIsPadded_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    for (const auto& [type, text] : {std::pair{-100, "00-100"},
                                     {-1, "00-1"},
                                     {0, "000"},
                                     {1, "001"},
                                     {9, "009"},
                                     {10, "010"},
                                     {99, "099"},
                                     {100, "100"},
                                     {159, "159"},
                                     {999, "999"},
                                     {1000, "1000"},
                                     {kHighest, "2147483647"},
                                     {kLowest, "00-2147483648"}})
        QTest::addRow("%d", type) << type << QString(text);
}

void TestWriting::typeIsPadded()
{
    QFETCH(const int, type);
    QFETCH(const QString, text);
    Item item = exampleItem();
    item.Type = type;
    QCOMPARE(columnOf(item, 2), text);
}

void TestWriting::maskHasFourDigitsOrMore_data()
{
    QTest::addColumn<quint32>("mask");
    QTest::addColumn<QString>("text");
    for (const auto& [mask, text] : {std::pair{0U, "0000"},
                                     {1U, "0001"},
                                     {0x10U, "0010"},
                                     {0xffU, "00ff"},
                                     {0x3ffU, "03ff"},
                                     {0xfffU, "0fff"},
                                     {0x1000U, "1000"},
                                     {0xabcdU, "abcd"},
                                     {0xffffU, "ffff"},
                                     {0x10000U, "10000"},
                                     {0x1234567U, "1234567"},
                                     {0xffffffffU, "ffffffff"}})
        QTest::addRow("%x", mask) << mask << QString(text);
}

void TestWriting::maskHasFourDigitsOrMore()
{
    QFETCH(const quint32, mask);
    QFETCH(const QString, text);
    Item item = exampleItem();
    item.BL_MASK = mask;
    QCOMPARE(columnOf(item, 1), text);
    BD_T20Items bd;
    bd.LoadFromListV04({rowOf(item)});
    QCOMPARE(bd.items.value(12).BL_MASK, mask);
}

void TestWriting::maskWiderThanSixteenBitsVotesForNothing()
{
    for (const auto& [mask, vote] : {std::pair{0xffffU, 1}, {0x10000U, 0}, {0xffffffffU, 0}}) {
        Item item = exampleItem();
        item.BL_MASK = mask;
        QList<int> votes;
        BD_T20Items().LoadFrom_AnalizeType({rowOf(item)}, votes);
        QCOMPARE(votes, (QList<int>{0, 0, 0, 0, vote}));
    }
}

void TestWriting::dashesFillUpToThirtyTwo_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<quint32>("mask");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("start");
    const auto row = [](const char* name, int size, quint32 mask, int type, const char* start) {
        QTest::newRow(name) << size << mask << type << QString(start);
    };
    row("four", 9, 0xffff, 0, "0;ffff;000;0;0;0;0;0;0;0;0;9;----;0");
    row("three", 99, 0xffff, 0, "0;ffff;000;0;0;0;0;0;0;0;0;99;---;0");
    row("two", 255, 0xffff, 0, "0;ffff;000;0;0;0;0;0;0;0;0;255;--;0");
    row("one", 1234, 0xffff, 0, "0;ffff;000;0;0;0;0;0;0;0;0;1234;-;0");
    row("none, at the width", 12345, 0xffff, 0, "0;ffff;000;0;0;0;0;0;0;0;0;12345;;0");
    row("none, beyond the width", 123456, 0xffff, 0, "0;ffff;000;0;0;0;0;0;0;0;0;123456;;0");
    row("none, far beyond", kLowest, 0xffff, 0, "0;ffff;000;0;0;0;0;0;0;0;0;-2147483648;;0");
    row("minus counts", -1, 0xffff, 0, "0;ffff;000;0;0;0;0;0;0;0;0;-1;---;0");
    row("long mask", 9, 0x1ffff, 0, "0;1ffff;000;0;0;0;0;0;0;0;0;9;---;0");
    row("long type", 9, 0xffff, 1000, "0;ffff;1000;0;0;0;0;0;0;0;0;9;---;0");
    row("longest type", 9, 0xffff, kHighest, "0;ffff;2147483647;0;0;0;0;0;0;0;0;9;;0");
    row("type below zero", 9, 0xffff, -1, "0;ffff;00-1;0;0;0;0;0;0;0;0;9;---;0");
}

void TestWriting::dashesFillUpToThirtyTwo()
{
    QFETCH(const int, size);
    QFETCH(const quint32, mask);
    QFETCH(const int, type);
    QFETCH(const QString, start);
    Item item;
    item.Size = size;
    item.BL_MASK = mask;
    item.Type = type;
    const QString row = rowOf(item);
    QCOMPARE(row.left(start.size()), start);
    QCOMPARE(row.split(';').size(), 26);
    // The separator in front of the dashes does not count in the width.
    const auto head = row.section(';', 0, 11).size();
    QCOMPARE(row.section(';', 12, 12), QString(qMax(0, 32 - static_cast<int>(head)), '-'));
}

void TestWriting::zerosFollowTheTailChar_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("end");
    for (const auto& [code, end] : {std::pair{-1, ";-1;000;0;Текст"},
                                    {0, ";0;000;0;Текст"},
                                    {9, ";9;000;0;Текст"},
                                    {10, ";10;00;0;Текст"},
                                    {99, ";99;00;0;Текст"},
                                    {100, ";100;0;0;Текст"},
                                    {255, ";255;0;0;Текст"},
                                    {1000, ";1000;0;0;Текст"}})
        QTest::addRow("%d", code) << code << QString(end);
}

void TestWriting::zerosFollowTheTailChar()
{
    QFETCH(const int, code);
    QFETCH(const QString, end);
    Item item = exampleItem();
    item.TailChar = code;
    item.Desc = "Текст";
    QVERIFY2(rowOf(item).endsWith(";1;1;1" + end), qPrintable(rowOf(item)));
}

void TestWriting::descriptionIsWrittenAsItStands_data()
{
    QTest::addColumn<QString>("desc");
    QTest::newRow("null") << QString();
    QTest::newRow("short") << "а";
    QTest::newRow("semicolons") << "Свой: а;б;";
    QTest::newRow("comma and quotes") << "Свой, \"текст\"";
    QTest::newRow("placeholders") << "%1 %2 %10 %L1 100%";
    QTest::newRow("carriage return") << "Текст\r";
    QTest::newRow("blanks") << "  Текст  ";
}

void TestWriting::descriptionIsWrittenAsItStands()
{
    QFETCH(const QString, desc);
    Item item = exampleItem();
    item.Desc = desc;
    QCOMPARE(rowOf(item), kExampleRow.section(';', 0, 24) + ';' + desc);
    BD_T20Items bd;
    bd.AddPoleToBD(1, item);
    QStringList rows;
    bd.SaveToList(rows);
    QCOMPARE(rows.value(0), "1;1;0;0;0;0;2;0;20;0;0;0;0;0;0;1;1;1;32;" + desc);
    bd.ExportNameList(rows);
    QCOMPARE(rows.value(1), "1;11;" + desc);
}

void TestWriting::shortDescriptionIsNotWritten()
{
    Item item = exampleItem();
    item.DescView = "КРАТКО";
    QCOMPARE(rowOf(item), kExampleRow);
}

void TestWriting::rowsComeInTheOrderOfTheKeys()
{
    QStringList rows;
    QCOMPARE(scatteredStore().SaveToListWMask(rows), 0);
    QCOMPARE(rows.size(), 6);
    QStringList ends;
    for (const auto& row : rows)
        ends.append(row.section(';', 25));
    QCOMPARE(ends, (QStringList{"Поле: -2", "Поле: 0", "Поле: 5", "Поле: 7", "Поле: 160", "Поле: 1000000"}));
}

void TestWriting::plainRowsHoldTheParamsAndTheDescription()
{
    BD_T20Items bd;
    Item item = countedItem(77);
    item.FA_NEED = true;
    item.BL_MASK = 0x123;
    bd.AddPoleToBD(3, item);
    item.ClearToUndef();
    item.Block = kHighest;
    bd.AddPoleToBD(4, item);
    QStringList rows;
    QCOMPARE(bd.SaveToList(rows), 0);
    QCOMPARE(rows, (QStringList{"1;2;3;4;5;6;7;8;9;10;11;12;13;14;15;16;17;18;19;Свой: текст",
                                "2147483647;-1;-1;-1;-1;-1;-1;-1;-1;-1;-1;-1;-1;-1;-1;-1;-1;-1;-1;"}));
}

void TestWriting::plainRowsComeInTheOrderOfTheKeys()
{
    QStringList rows;
    QCOMPARE(scatteredStore().SaveToList(rows), 0);
    const QString zeros = QString("0;").repeated(19) + "Поле: ";
    QCOMPARE(rows, (QStringList{zeros + "-2", zeros + "0", zeros + "5", zeros + "7", zeros + "160",
                                zeros + "1000000"}));
}

void TestWriting::namesAreExported()
{
    QStringList rows;
    QCOMPARE(scatteredStore().ExportNameList(rows), 0);
    QCOMPARE(rows, (QStringList{"idx;Type;Desc", "1;298;Поле: -2", "2;300;Поле: 0", "3;305;Поле: 5",
                                "4;307;Поле: 7", "5;360;Поле: 160", "6;300;Поле: 1000000"}));
}

void TestWriting::masksAreExported()
{
    QStringList rows;
    QCOMPARE(scatteredStore().ExportMaskList(rows), 0);
    QCOMPARE(rows,
             (QStringList{"idx;Type;FA_NEED;BL_MASK", "1;298;0;4294967295", "2;300;0;4294967295",
                          "3;305;0;1023", "4;307;1;4294967295", "5;360;0;4294967295", "6;300;0;4294967295"}));
}

QTEST_GUILESS_MAIN(TestWriting)
#include "tst_writing.moc"
