#include "dumprows.h"

#include <QTest>

using namespace dumprows;
using recordtools::differences;

namespace {

/// Row 1 with `changed` in place of its line of table field 3, and then its end.
QMap<int, Item> readWithThird(const QString& changed)
{
    QStringList lines = rowLines(1, markedBytes(1));
    lines[2] = changed;
    return read(lines);
}

} // namespace

class TestReadingDump : public QObject
{
    Q_OBJECT

private slots:
    void nineLinesAreARecord();
    void everyBitGoesToItsField_data();
    void everyBitGoesToItsField();
    void everyByteIsUnpacked_data();
    void everyByteIsUnpacked();
    void valueNeedsTwoHexadecimalDigits_data();
    void valueNeedsTwoHexadecimalDigits();
    void valueOfAnotherLengthIsSkipped_data();
    void valueOfAnotherLengthIsSkipped();
    void carriageReturnRejectsTheLine();
    void lineNeedsExactlyNineColumns_data();
    void lineNeedsExactlyNineColumns();
    void commaSeparatesIfSemicolonsDoNot();
    void columnsThreeToSevenAreNotUsed();
    void commentsAreSkipped();
    void tableMustBeTwenty_data();
    void tableMustBeTwenty();
    void fieldMustBeOneToNine_data();
    void fieldMustBeOneToNine();
};

void TestReadingDump::nineLinesAreARecord()
{
    Item item;
    item.FA_NEED = false;
    item.BL_MASK = 0xffff;
    item.Type = 1;
    item.Block = 0x12;
    item.Font = 0xa;
    item.X2X = 1;
    item.X2Y = 0;
    item.PoleFlags = 3;
    item.LineGap = 0x34;
    item.Line = 0x56;
    item.X = 0x78;
    item.Size = 0x9a;
    item.DropIfZero = 1;
    item.PressRight = 0;
    item.Expand = 1;
    item.CutToWidth = 0;
    item.MaskMode = 2;
    item.FractFormat = 1;
    item.Brightness = 0xc;
    item.AlignInPole = 3;
    item.AlignOnTape = 2;
    item.TailChar = 0xfe;
    item.Desc = "Шапка: заголовок";
    item.DescView = "Ш.: заголовок";
    const QList<int> bytes{0x12, 0xab, 0x34, 0x56, 0x78, 0x9a, 0xa9, 0xce, 0xfe};
    QCOMPARE(differences(read(rowLines(1, bytes)), {{1, item}}), QStringList());
    QCOMPARE(differences(recordOf(1, bytes), item), QStringList());

    QStringList lines;
    QMap<int, Item> expected;
    for (int row = 1; row <= 15; ++row) {
        lines += rowLines(row, markedBytes(row));
        expected[row] = recordOf(row, markedBytes(row));
    }
    QCOMPARE(differences(read(lines), expected), QStringList());
}

void TestReadingDump::everyBitGoesToItsField_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<int>("bit");
    QTest::addColumn<QString>("difference");
    const QStringList names[9] = {
        {"Block=128", "Block=64", "Block=32", "Block=16", "Block=8", "Block=4", "Block=2", "Block=1"},
        {"Font=8", "Font=4", "Font=2", "Font=1", "X2X=1", "X2Y=1", "PoleFlags=2", "PoleFlags=1"},
        {"LineGap=128", "LineGap=64", "LineGap=32", "LineGap=16", "LineGap=8", "LineGap=4", "LineGap=2",
         "LineGap=1"},
        {"Line=128", "Line=64", "Line=32", "Line=16", "Line=8", "Line=4", "Line=2", "Line=1"},
        {"X=128", "X=64", "X=32", "X=16", "X=8", "X=4", "X=2", "X=1"},
        {"Size=128", "Size=64", "Size=32", "Size=16", "Size=8", "Size=4", "Size=2", "Size=1"},
        {"DropIfZero=1", "PressRight=1", "Expand=1", "CutToWidth=1", "MaskMode=2", "MaskMode=1",
         "FractFormat=2", "FractFormat=1"},
        {"Brightness=8", "Brightness=4", "Brightness=2", "Brightness=1", "AlignInPole=2", "AlignInPole=1",
         "AlignOnTape=2", "AlignOnTape=1"},
        {"TailChar=128", "TailChar=64", "TailChar=32", "TailChar=16", "TailChar=8", "TailChar=4",
         "TailChar=2", "TailChar=1"},
    };
    for (int field = 1; field <= 9; ++field) {
        for (int bit = 0; bit < 8; ++bit)
            QTest::addRow("field %d, bit %d", field, bit) << field << bit << names[field - 1].at(7 - bit);
    }
}

void TestReadingDump::everyBitGoesToItsField()
{
    QFETCH(const int, field);
    QFETCH(const int, bit);
    QFETCH(const QString, difference);
    const QList<int> zeros(9, 0);
    QList<int> bytes = zeros;
    bytes[field - 1] = 1 << bit;
    QCOMPARE(differences(read(rowLines(1, bytes)), {{1, recordOf(1, zeros)}}),
             QStringList{"1: " + difference});
}

void TestReadingDump::everyByteIsUnpacked_data()
{
    QTest::addColumn<int>("field");
    for (int field = 1; field <= 9; ++field)
        QTest::addRow("field %d", field) << field;
}

void TestReadingDump::everyByteIsUnpacked()
{
    QFETCH(const int, field);
    for (int value = 0; value < 256; ++value) {
        QList<int> bytes = markedBytes(1);
        bytes[field - 1] = value;
        QStringList lines = rowLines(1, bytes);
        if (value % 2 == 1)
            lines[field - 1] = line(1, field, byteText(value).toUpper());
        QCOMPARE(differences(read(lines), {{1, recordOf(1, bytes)}}), QStringList());
    }
}

void TestReadingDump::valueNeedsTwoHexadecimalDigits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    for (const auto& [text, value] :
         {std::pair{"00", 0}, {"09", 9},    {"0a", 10},   {"0f", 15},   {"0A", 10},   {"0F", 15},
          {"90", 0x90},       {"a0", 0xa0}, {"f0", 0xf0}, {"A0", 0xa0}, {"F0", 0xf0}, {"fF", 255},
          {"Ff", 255},        {"10", 16},   {"0g", 0},    {"g0", 0},    {"0G", 0},    {"G0", 0},
          {"5x", 0},          {"x5", 0},    {"0x", 0},    {"+5", 0},    {"-5", 0},    {" 5", 0},
          {"5 ", 0},          {"5\t", 0},   {"5\r", 0},   {"  ", 0},    {"5:", 0},    {"5/", 0},
          {"5@", 0},          {"5`", 0},    {"@5", 0},    {"ЖЖ", 0},    {"5а", 0},    {"٥٥", 0},
          {"１１", 0},        {"😀", 0}})
        QTest::newRow(text) << QString(text) << value;
}

void TestReadingDump::valueNeedsTwoHexadecimalDigits()
{
    QFETCH(const QString, text);
    QFETCH(const int, value);
    QCOMPARE(text.size(), 2);
    // The field is set before, so that a value of 0 is not one that was never read.
    QStringList lines = rowLines(1, markedBytes(1));
    lines.insert(3, line(1, 3, text));
    QList<int> bytes = markedBytes(1);
    bytes[2] = value;
    QCOMPARE(differences(read(lines), {{1, recordOf(1, bytes)}}), QStringList());

    lines = rowLines(1, markedBytes(1));
    lines[8] = line(1, 9, text);
    bytes = markedBytes(1);
    bytes[8] = value;
    QCOMPARE(differences(read(lines), {{1, recordOf(1, bytes)}}), QStringList());
}

void TestReadingDump::valueOfAnotherLengthIsSkipped_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"", "5", "055", "41\r", " 41", "41 ", "0x41"})
        QTest::addRow("\"%s\"", text) << QString(text);
}

void TestReadingDump::valueOfAnotherLengthIsSkipped()
{
    QFETCH(const QString, text);
    QStringList lines = rowLines(1, markedBytes(1));
    lines.insert(3, line(1, 3, text));
    QCOMPARE(differences(read(lines), {{1, recordOf(1, markedBytes(1))}}), QStringList());
    lines = rowLines(1, markedBytes(1));
    lines[8] = line(1, 9, text);
    QVERIFY(read(lines).isEmpty());
}

void TestReadingDump::carriageReturnRejectsTheLine()
{
    QStringList lines = rowLines(1, markedBytes(1));
    for (auto& text : lines)
        text += '\r';
    QVERIFY(read(lines).isEmpty());
}

void TestReadingDump::lineNeedsExactlyNineColumns_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    for (const QString separator : {";", ","}) {
        const auto row = [](const char* what, const QString& text, bool accepted) {
            QTest::addRow("%s by \"%s\"", what, text.contains(';') ? ";" : ",") << text << accepted;
        };
        const QString nine = QString("20;1;3;0;0;0;0;0;ee").replace(';', separator);
        row("nine", nine, true);
        row("eight", QString("20;1;3;0;0;0;0;ee").replace(';', separator), false);
        row("ten", nine + separator, false);
        row("eleven", nine + separator + "0" + separator, false);
        row("thirty", nine + separator.repeated(21), false);
    }
}

void TestReadingDump::lineNeedsExactlyNineColumns()
{
    QFETCH(const QString, text);
    QFETCH(const bool, accepted);
    QList<int> bytes = markedBytes(1);
    bytes[2] = accepted ? 0xee : 0;
    QCOMPARE(differences(readWithThird(text), {{1, recordOf(1, bytes)}}), QStringList());
}

void TestReadingDump::commaSeparatesIfSemicolonsDoNot()
{
    QList<int> bytes = markedBytes(1);
    bytes[2] = 0xee;
    const QMap<int, Item> accepted{{1, recordOf(1, bytes)}};
    // Semicolons within, but not eight of them.
    QCOMPARE(differences(readWithThird("20,1,3,a;b,;;;;;;;;;;,0,0,0,ee"), accepted), QStringList());
    QCOMPARE(differences(readWithThird("20;1;3;a,b;,,,,,,,,,,;0;0;0;ee"), accepted), QStringList());
    // Eight of both: semicolons.
    QCOMPARE(differences(readWithThird("20;1;3;0;0;0;,,,,,,,,;0;ee"), accepted), QStringList());
    QStringList commas;
    for (int field = 1; field <= 9; ++field)
        commas.append(line(1, field, byteText(markedBytes(1).at(field - 1)), ','));
    QCOMPARE(differences(read(commas), {{1, recordOf(1, markedBytes(1))}}), QStringList());
}

void TestReadingDump::columnsThreeToSevenAreNotUsed()
{
    QList<int> bytes = markedBytes(1);
    bytes[2] = 0xee;
    for (const QString text : {"20;1;3;;;;;;ee", "20;1;3;9;8;7;6;5;ee", "20;1;3;абв;-1;#;99999999999; ;ee"})
        QCOMPARE(differences(readWithThird(text), {{1, recordOf(1, bytes)}}), QStringList());
}

void TestReadingDump::commentsAreSkipped()
{
    QStringList lines = rowLines(1, markedBytes(1));
    QStringList commented;
    for (const auto& text : lines)
        commented += {'#' + text, text, '#' + line(2, 1, "00")};
    QCOMPARE(differences(read(commented), {{1, recordOf(1, markedBytes(1))}}), QStringList());
    QVERIFY(read(lines.replaceInStrings("20;", "#20;")).isEmpty());
}

void TestReadingDump::tableMustBeTwenty_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    for (const char* text : {"20", "020", " 20", "20 ", "+20"})
        QTest::addRow("\"%s\"", text) << QString(text) << true;
    for (const char* text : {"", "0", "2", "19", "21", "200", "-20", "0x14", "20.0", "20a", "таблица"})
        QTest::addRow("\"%s\"", text) << QString(text) << false;
}

void TestReadingDump::tableMustBeTwenty()
{
    QFETCH(const QString, text);
    QFETCH(const bool, accepted);
    QList<int> bytes = markedBytes(1);
    bytes[2] = accepted ? 0xee : 0;
    QCOMPARE(differences(readWithThird(text + ";1;3;0;0;0;0;0;ee"), {{1, recordOf(1, bytes)}}),
             QStringList());
}

void TestReadingDump::fieldMustBeOneToNine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    for (const char* text : {"3", "03", " 3", "+3"})
        QTest::addRow("\"%s\"", text) << QString(text) << true;
    for (const char* text :
         {"", "0", "10", "-1", "-3", "3x", "255", "2147483647", "-2147483648", "4294967299"})
        QTest::addRow("\"%s\"", text) << QString(text) << false;
}

void TestReadingDump::fieldMustBeOneToNine()
{
    QFETCH(const QString, text);
    QFETCH(const bool, accepted);
    QList<int> bytes = markedBytes(1);
    bytes[2] = accepted ? 0xee : 0;
    QCOMPARE(differences(readWithThird("20;1;" + text + ";0;0;0;0;0;ee"), {{1, recordOf(1, bytes)}}),
             QStringList());
}

QTEST_GUILESS_MAIN(TestReadingDump)
#include "tst_reading_dump.moc"
