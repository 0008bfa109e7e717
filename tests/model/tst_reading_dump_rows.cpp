#include "dumprows.h"

#include <QTest>

using namespace dumprows;
using recordtools::differences;

class TestReadingDumpRows : public QObject
{
    Q_OBJECT

private slots:
    void noLinesGiveOne();
    void rowsStartAtOneOrTwo();
    void rowsMayNotStartElsewhere_data();
    void rowsMayNotStartElsewhere();
    void gapEndsTheReadingOfAllLaterRows();
    void rowsDoNotGoBack();
    void rowMovesOnWithALineThatIsRejectedLater_data();
    void rowMovesOnWithALineThatIsRejectedLater();
    void rowStaysWithALineThatIsRejectedEarlier_data();
    void rowStaysWithALineThatIsRejectedEarlier();
    void missingFieldKeepsTheValueOfTheRowBefore_data();
    void missingFieldKeepsTheValueOfTheRowBefore();
    void rowWithoutItsLastFieldIsNeverStored();
    void lastFieldStoresWhatIsThereAtThatMoment();
    void repeatedFieldReplacesTheValue();
    void rowsBeyondTheCatalogueAreUnknown();
    void recordsAreReplacedKeyByKey();
    void linesWithoutARecordChangeNothing();
};

void TestReadingDumpRows::noLinesGiveOne()
{
    BD_T20Items bd;
    bd.items[1] = recordtools::markedItem(1);
    QCOMPARE(bd.LoadFromListV02({}), 1);
    QCOMPARE(differences(bd.items, {{1, recordtools::markedItem(1)}}), QStringList());
    QCOMPARE(bd.LoadFromListV02({""}), 0);
    QCOMPARE(bd.LoadFromListV02(rowLines(1, markedBytes(1))), 0);
}

void TestReadingDumpRows::rowsStartAtOneOrTwo()
{
    const auto two = rowLines(2, markedBytes(2));
    const auto three = rowLines(3, markedBytes(3));
    QCOMPARE(
        differences(read(two + three), {{2, recordOf(2, markedBytes(2))}, {3, recordOf(3, markedBytes(3))}}),
        QStringList());
}

void TestReadingDumpRows::rowsMayNotStartElsewhere_data()
{
    QTest::addColumn<QString>("row");
    for (const char* row : {"0", "3", "4", "-1", "", "x", "160", "2147483647", "-2147483648", "4294967297"})
        QTest::addRow("\"%s\"", row) << QString(row);
}

void TestReadingDumpRows::rowsMayNotStartElsewhere()
{
    QFETCH(const QString, row);
    QStringList lines = rowLines(1, markedBytes(5));
    lines.replaceInStrings("20;1;", "20;" + row + ';');
    QVERIFY(read(lines).isEmpty());
    // Such rows leave no trace.
    lines += rowLines(1, markedBytes(1));
    QCOMPARE(differences(read(lines), {{1, recordOf(1, markedBytes(1))}}), QStringList());
}

void TestReadingDumpRows::gapEndsTheReadingOfAllLaterRows()
{
    QStringList lines = rowLines(1, markedBytes(1)) + rowLines(2, markedBytes(2));
    for (const int row : {4, 5, 6, 7, 14})
        lines += rowLines(row, markedBytes(row));
    const QMap<int, Item> expected{{1, recordOf(1, markedBytes(1))}, {2, recordOf(2, markedBytes(2))}};
    QCOMPARE(differences(read(lines), expected), QStringList());
}

void TestReadingDumpRows::rowsDoNotGoBack()
{
    const QStringList lines =
        rowLines(1, markedBytes(1)) + rowLines(2, markedBytes(2)) + rowLines(1, markedBytes(7));
    const QMap<int, Item> expected{{1, recordOf(1, markedBytes(1))}, {2, recordOf(2, markedBytes(2))}};
    QCOMPARE(differences(read(lines), expected), QStringList());
}

void TestReadingDumpRows::rowMovesOnWithALineThatIsRejectedLater_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("value of one character") << "20;2;1;0;0;0;0;0;4";
    QTest::newRow("value with a carriage return") << "20;2;1;0;0;0;0;0;41\r";
    QTest::newRow("field 0") << "20;2;0;0;0;0;0;0;41";
    QTest::newRow("field 10") << "20;2;10;0;0;0;0;0;41";
    QTest::newRow("nothing behind the row") << "20;2;;;;;;;";
}

void TestReadingDumpRows::rowMovesOnWithALineThatIsRejectedLater()
{
    QFETCH(const QString, text);
    QStringList lines = rowLines(1, markedBytes(1));
    lines.insert(8, text);
    // The rest of row 1 comes too late, and row 3 is next.
    lines += rowLines(3, markedBytes(3));
    QCOMPARE(differences(read(lines), {{3, recordOf(3, markedBytes(3))}}), QStringList());
}

void TestReadingDumpRows::rowStaysWithALineThatIsRejectedEarlier_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("comment") << "#20;2;1;0;0;0;0;0;41";
    QTest::newRow("eight columns") << "20;2;1;0;0;0;0;41";
    QTest::newRow("ten columns") << "20;2;1;0;0;0;0;0;0;41";
    QTest::newRow("another table") << "21;2;1;0;0;0;0;0;41";
    QTest::newRow("too short") << "20;2;1";
    QTest::newRow("a row too far") << "20;3;1;0;0;0;0;0;41";
}

void TestReadingDumpRows::rowStaysWithALineThatIsRejectedEarlier()
{
    QFETCH(const QString, text);
    QStringList lines = rowLines(1, markedBytes(1));
    lines.insert(8, text);
    lines += rowLines(3, markedBytes(3));
    QCOMPARE(differences(read(lines), {{1, recordOf(1, markedBytes(1))}}), QStringList());
}

void TestReadingDumpRows::missingFieldKeepsTheValueOfTheRowBefore_data()
{
    QTest::addColumn<int>("field");
    for (int field = 1; field <= 8; ++field)
        QTest::addRow("field %d", field) << field;
}

void TestReadingDumpRows::missingFieldKeepsTheValueOfTheRowBefore()
{
    QFETCH(const int, field);
    // Row 11 is not mandatory and row 12 is: what belongs to the row is not kept.
    QStringList lines;
    QMap<int, Item> expected;
    for (int row = 1; row <= 13; ++row) {
        QList<int> bytes = markedBytes(row);
        QStringList added = rowLines(row, bytes);
        if (row == 12) {
            bytes[field - 1] = markedBytes(11).at(field - 1);
            added.removeAt(field - 1);
        }
        lines += added;
        expected[row] = recordOf(row, bytes);
    }
    if (field == 1)
        expected[12].Type = 11; // table field 1 sets it
    QCOMPARE(differences(read(lines), expected), QStringList());
}

void TestReadingDumpRows::rowWithoutItsLastFieldIsNeverStored()
{
    // Row 2 is cut off before its end, and row 3 has nothing but its end: row 3 shows what row 2 left.
    const QStringList lines =
        rowLines(1, markedBytes(1)) + rowLines(2, markedBytes(2)).mid(0, 8) + QStringList{line(3, 9, "ee")};
    QList<int> bytes = markedBytes(2);
    bytes[8] = 0xee;
    Item third = recordOf(3, bytes);
    third.Type = 2;
    QCOMPARE(differences(read(lines), {{1, recordOf(1, markedBytes(1))}, {3, third}}), QStringList());
}

void TestReadingDumpRows::lastFieldStoresWhatIsThereAtThatMoment()
{
    // The end of row 1 stands before its field 8, which then counts for row 2.
    QStringList lines = rowLines(1, markedBytes(1));
    lines.insert(7, line(1, 9, "ee"));
    lines.removeLast();
    lines += {line(2, 1, "05"), line(2, 9, "dd")};
    const auto items = read(lines);
    QCOMPARE(items.keys(), (QList<int>{1, 2}));
    QCOMPARE(items[1].TailChar, 0xee);
    QCOMPARE(items[1].Size, markedBytes(1).at(5));
    QList<int> bytes = markedBytes(1);
    bytes[0] = 5;
    bytes[8] = 0xdd;
    QCOMPARE(differences(items[2], recordOf(2, bytes)), QStringList());
}

void TestReadingDumpRows::repeatedFieldReplacesTheValue()
{
    QStringList lines = rowLines(1, markedBytes(1));
    lines += {line(1, 6, "07"), line(1, 9, "08")};
    QList<int> bytes = markedBytes(1);
    bytes[5] = 7;
    bytes[8] = 8;
    QCOMPARE(differences(read(lines), {{1, recordOf(1, bytes)}}), QStringList());
}

void TestReadingDumpRows::rowsBeyondTheCatalogueAreUnknown()
{
    QStringList lines;
    for (int row = 1; row <= 162; ++row)
        lines += rowLines(row, QList<int>(9, row));
    const auto items = read(lines);
    QCOMPARE(items.size(), 162);
    for (int row = 1; row <= 160; ++row)
        QCOMPARE(differences(items[row], recordOf(row, QList<int>(9, row))), QStringList());
    QCOMPARE(items[95].DescView, "ЗН: надпись");
    QCOMPARE(items[160].Desc, "Картинка");
    QCOMPARE(items[161].Desc, "unknow:161");
    QCOMPARE(items[161].DescView, "unk.:161");
    QCOMPARE(items[162].Desc, "unknow:162");
    QCOMPARE(items[162].DescView, "unk.:162");
    QCOMPARE(items[162].FA_NEED, false);
    QCOMPARE(items[162].Type, 162);
}

void TestReadingDumpRows::recordsAreReplacedKeyByKey()
{
    BD_T20Items bd;
    QMap<int, Item> expected;
    for (const int key : {0, 1, 2, 3, 9})
        bd.items[key] = expected[key] = recordtools::markedItem(key);
    bd.LoadFromListV02(rowLines(1, markedBytes(1)) + rowLines(2, markedBytes(2)));
    expected[1] = recordOf(1, markedBytes(1));
    expected[2] = recordOf(2, markedBytes(2));
    QCOMPARE(differences(bd.items, expected), QStringList());
}

void TestReadingDumpRows::linesWithoutARecordChangeNothing()
{
    BD_T20Items bd;
    bd.items[1] = recordtools::markedItem(1);
    QStringList lines = rowLines(1, markedBytes(1));
    lines.removeLast();
    QCOMPARE(bd.LoadFromListV02(lines + QStringList{"", ";;;;;;;;", "#;;;;;;;;", "20;1;9"}), 0);
    QCOMPARE(differences(bd.items, {{1, recordtools::markedItem(1)}}), QStringList());
}

QTEST_GUILESS_MAIN(TestReadingDumpRows)
#include "tst_reading_dump_rows.moc"
