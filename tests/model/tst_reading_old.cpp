#include "oldrecords.h"

#include <QTest>

#include <limits>

using namespace oldrecords;
using recordtools::differences;

class TestReadingOld : public QObject
{
    Q_OBJECT

private slots:
    void everyFieldComesFromItsColumn_data() { bothFormats(); }
    void everyFieldComesFromItsColumn();
    void oneColumnChangesOneField_data();
    void oneColumnChangesOneField();
    void columnIsTakenAsANumber_data() { recordtools::addNumberRows(); }
    void columnIsTakenAsANumber();
    void numbersOutOfRangeAreStored_data() { bothFormats(); }
    void numbersOutOfRangeAreStored();
    void maskModeIsMadeOfTwoColumns_data();
    void maskModeIsMadeOfTwoColumns();
    void maskModeBeyondEveryNumberStaysOutOfRange_data();
    void maskModeBeyondEveryNumberStaysOutOfRange();
    void lineNeeds39Characters_data() { bothFormats(); }
    void lineNeeds39Characters();
    void lineNeeds20Columns_data();
    void lineNeeds20Columns();
    void lineThatVotesForNothingIsARecord_data();
    void lineThatVotesForNothingIsARecord();
    void firstColumnDecides_data();
    void firstColumnDecides();
    void skippedLineUsesNoKey_data() { bothFormats(); }
    void skippedLineUsesNoKey();
    void commaSeparatesIfSemicolonsDoNot_data() { bothFormats(); }
    void commaSeparatesIfSemicolonsDoNot();
};

void TestReadingOld::everyFieldComesFromItsColumn()
{
    QFETCH(const bool, old);
    QCOMPARE(differences(read({lineOf(old)}, old), {{1, recordOf(old, 1)}}), QStringList());
}

void TestReadingOld::oneColumnChangesOneField_data()
{
    QTest::addColumn<bool>("old");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("field");
    const QStringList common{"Block", "Font", "X2X", "X2Y", "PoleFlags", "LineGap", "Line", "X", "Size"};
    // MaskMode has a test of its own.
    const QStringList oldFields =
        common + QStringList{"FractFormat", "",           "",           "CutToWidth",  "Expand",
                             "PressRight",  "DropIfZero", "Brightness", "AlignInPole", "AlignOnTape",
                             "TailChar"};
    const QStringList newFields =
        common + QStringList{"DropIfZero",  "PressRight", "Expand",      "CutToWidth",  "MaskMode",
                             "FractFormat", "Brightness", "AlignInPole", "AlignOnTape", "TailChar"};
    for (const bool old : {true, false}) {
        const QStringList& fields = old ? oldFields : newFields;
        for (int column = 0; column < fields.size(); ++column) {
            if (!fields.at(column).isEmpty())
                QTest::addRow("%s: column %d", old ? "old" : "new", column)
                    << old << column << fields.at(column);
        }
    }
}

void TestReadingOld::oneColumnChangesOneField()
{
    QFETCH(const bool, old);
    QFETCH(const int, column);
    QFETCH(const QString, field);
    QCOMPARE(differences(read({lineWith(old, column, "-777")}, old), {{1, recordOf(old, 1)}}),
             QStringList{"1: " + field + "=-777"});
}

void TestReadingOld::columnIsTakenAsANumber()
{
    QFETCH(const QString, text);
    QFETCH(const int, value);
    for (const bool old : {true, false}) {
        for (const int column : {1, 18}) {
            const auto items = read({lineWith(old, column, text)}, old);
            QCOMPARE(items.size(), 1);
            const Item& item = items.first();
            QCOMPARE(column == 1 ? item.Font : old ? item.AlignOnTape : item.TailChar, value);
        }
    }
}

void TestReadingOld::numbersOutOfRangeAreStored()
{
    QFETCH(const bool, old);
    const auto items =
        read({lineWith(old, 0, "-5"), lineWith(old, 6, "0"), lineWith(old, 8, "2147483647")}, old);
    QCOMPARE(items.keys(), (QList<int>{1, 2, 3}));
    QCOMPARE(items[1].Block, -5);
    QCOMPARE(items[2].Line, 0);
    QCOMPARE(items[3].Size, std::numeric_limits<int>::max());
}

void TestReadingOld::maskModeIsMadeOfTwoColumns_data()
{
    QTest::addColumn<QString>("high");
    QTest::addColumn<QString>("low");
    QTest::addColumn<int>("value");
    const auto row = [](const char* high, const char* low, int value) {
        QTest::addRow("%s and %s", high, low) << QString(high) << QString(low) << value;
    };
    row("0", "0", 0);
    row("0", "1", 1);
    row("1", "0", 2);
    row("1", "1", 3);
    row("0", "2", 0);
    row("0", "3", 1);
    row("1", "254", 2);
    row("2", "0", 4);
    row("3", "7", 7);
    row("-1", "0", -2);
    row("-1", "1", -1);
    row("0", "-1", 1);
    row("0", "-2", 0);
    row("", "", 0);
    row("x", "1", 1);
    row("1", "x", 2);
    row("0", "2147483647", 1);
    row("0", "-2147483648", 0);
    row("1073741823", "1", std::numeric_limits<int>::max());
    row("-1073741824", "0", std::numeric_limits<int>::min());
    row("2147483648", "1", 1);
}

void TestReadingOld::maskModeIsMadeOfTwoColumns()
{
    QFETCH(const QString, high);
    QFETCH(const QString, low);
    QFETCH(const int, value);
    QStringList columns = columnsOf(true);
    columns[10] = high;
    columns[11] = low;
    Item expected = recordOf(true, 1);
    expected.MaskMode = value;
    QCOMPARE(differences(read({columns.join(';')}, true), {{1, expected}}), QStringList());
}

void TestReadingOld::maskModeBeyondEveryNumberStaysOutOfRange_data()
{
    QTest::addColumn<QString>("high");
    QTest::newRow("just above") << "1073741824";
    QTest::newRow("highest") << "2147483647";
    QTest::newRow("just below") << "-1073741825";
    QTest::newRow("lowest") << "-2147483648";
}

void TestReadingOld::maskModeBeyondEveryNumberStaysOutOfRange()
{
    QFETCH(const QString, high);
    for (const int low : {0, 1}) {
        BD_T20Items bd;
        bd.LoadFromListV01(
            {"0;0;0;0;0;0;1;0;10;0;" + high + ';' + QString::number(low) + ";0;0;0;0;0;1;1;32"}, true);
        QCOMPARE(bd.items.size(), 1);
        QStringList messages;
        QCOMPARE(bd.CheckBDCorrect(10, messages, false), 1);
        QCOMPARE(messages, QStringList{"У поля №1 недопустимое значение(я)!"});
    }
}

void TestReadingOld::lineNeeds39Characters()
{
    QFETCH(const bool, old);
    const QString line39 = QString("1;").repeated(19) + '1';
    const QString line38 = QString("1;").repeated(19);
    QCOMPARE(line39.size(), 39);
    QCOMPARE(line38.size(), 38);
    QCOMPARE(read({line39}, old).size(), 1);
    QCOMPARE(read({line38}, old).size(), 0);
    // Characters, not bytes.
    const QString cyrillic38 = QString("1;").repeated(2) + ';' + QString("1;").repeated(16) + "Ж";
    QCOMPARE(cyrillic38.size(), 38);
    QCOMPARE(cyrillic38.count(';'), 19);
    QCOMPARE(read({cyrillic38}, old).size(), 0);
    QCOMPARE(read({cyrillic38 + 'Z'}, old).size(), 1);
}

void TestReadingOld::lineNeeds20Columns_data()
{
    QTest::addColumn<bool>("old");
    QTest::addColumn<int>("count");
    for (int count = 18; count <= 30; ++count)
        forBoth(QString("%1 columns").arg(count), [count](QTestData& data) { data << count; });
    forBoth("1000 columns", [](QTestData& data) { data << 1000; });
}

void TestReadingOld::lineNeeds20Columns()
{
    QFETCH(const bool, old);
    QFETCH(const int, count);
    QStringList columns = recordtools::countedColumns(50, count);
    for (const char separator : {';', ','}) {
        const auto items = read({columns.join(separator)}, old);
        QCOMPARE(items.size(), count < 20 ? 0 : 1);
        if (count < 20)
            continue;
        // Columns behind the last known one are of no matter; two digits are no description.
        Item expected = recordOf(old, 1);
        expected.Desc = "Шапка: заголовок";
        expected.DescView = "Ш.: заголовок";
        QCOMPARE(differences(items.first(), expected), QStringList());
    }
}

void TestReadingOld::lineThatVotesForNothingIsARecord_data()
{
    QTest::addColumn<bool>("old");
    QTest::addColumn<int>("count");
    for (int count = 22; count <= 25; ++count)
        forBoth(QString("%1 columns").arg(count), [count](QTestData& data) { data << count; });
}

void TestReadingOld::lineThatVotesForNothingIsARecord()
{
    QFETCH(const bool, old);
    QFETCH(const int, count);
    QStringList columns = columnsOf(old);
    while (columns.size() < count)
        columns.append("Ещё столбец");
    BD_T20Items bd;
    QList<int> votes;
    bd.LoadFrom_AnalizeType({columns.join(';')}, votes);
    QCOMPARE(votes, QList<int>(5, 0));
    bd.LoadFromListV01({columns.join(';')}, old);
    QCOMPARE(differences(bd.items, {{1, recordOf(old, 1)}}), QStringList());
}

void TestReadingOld::firstColumnDecides_data()
{
    QTest::addColumn<bool>("old");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<int>("block");
    const auto row = [](const QString& text, bool accepted, int block) {
        forBoth('"' + text + '"', [&](QTestData& data) { data << text << accepted << block; });
    };
    row("0", true, 0);
    row("1", true, 1);
    row("2", true, 2);
    row("9", true, 9);
    row("77", true, 77);
    row("01", true, 1);
    row(" 1", true, 1);
    row("1 ", true, 1);
    row("+1", true, 1);
    row("-1", true, -1);
    row("2147483647", true, 2147483647);
    row("", false, 0);
    row("00", false, 0);
    row("-0", false, 0);
    row("+0", false, 0);
    row(" 0", false, 0);
    row("0 ", false, 0);
    row("abc", false, 0);
    row("0x1", false, 0);
    row("1.0", false, 0);
    row("Блок", false, 0);
    row("2147483648", false, 0);
    row("#1", false, 0);
}

void TestReadingOld::firstColumnDecides()
{
    QFETCH(const bool, old);
    QFETCH(const QString, text);
    QFETCH(const bool, accepted);
    QFETCH(const int, block);
    // The line behind shows whether the first one used up a key.
    const auto items = read({lineWith(old, 0, text), lineOf(old)}, old);
    QCOMPARE(items.keys(), accepted ? (QList<int>{1, 2}) : QList<int>{1});
    Item expected = recordOf(old, 1);
    if (accepted)
        expected.Block = block;
    QCOMPARE(differences(items[1], expected), QStringList());
}

void TestReadingOld::skippedLineUsesNoKey()
{
    QFETCH(const bool, old);
    const QStringList lines{
        lineWith(old, 0, "Блок"), // a header row
        lineWith(old, 0, "10"),
        "",
        '#' + lineWith(old, 0, "11"), // a comment
        lineWith(old, 0, "12"),
        "1;1;1",                                       // too short
        recordtools::countedColumns(50, 19).join(';'), // a column is missing
        lineWith(old, 0, "abc"),
        lineWith(old, 0, "00"),
        lineWith(old, 0, "0"),
        "\r",
    };
    QMap<int, Item> expected{{1, recordOf(old, 1)}, {2, recordOf(old, 2)}, {3, recordOf(old, 3)}};
    expected[1].Block = 10;
    expected[2].Block = 12;
    expected[3].Block = 0;
    QCOMPARE(differences(read(lines, old), expected), QStringList());
}

void TestReadingOld::commaSeparatesIfSemicolonsDoNot()
{
    QFETCH(const bool, old);
    const QMap<int, Item> expected{{1, recordOf(old, 1)}};
    QCOMPARE(differences(read({columnsOf(old).join(',')}, old), expected), QStringList());

    // Too few semicolons are part of the text.
    QStringList columns = columnsOf(old);
    columns.last() = "Свой: а;б;в";
    QCOMPARE(read({columns.join(',')}, old).value(1).Desc, "Свой: а;б;в");

    // Enough semicolons win over any number of commas.
    columns = columnsOf(old);
    columns[1] = QString(30, ',');
    Item withCommas = recordOf(old, 1);
    withCommas.Font = 0;
    QCOMPARE(differences(read({columns.join(';')}, old), {{1, withCommas}}), QStringList());
}

QTEST_GUILESS_MAIN(TestReadingOld)
#include "tst_reading_old.moc"
