#include "records.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <climits>
#include <utility>

using namespace records;

class TestBlocks : public QObject
{
    Q_OBJECT

private slots:
    void maxRowsOfAnEmptyStore();
    void maxRowsPerBlock();
    void maxRowsForOtherCounts_data();
    void maxRowsForOtherCounts();
    void maxRowsCountVisibleFieldsOnly();
    void recomputeSortsFieldsIntoBlocksAndLines();
    void recomputeGivesTenBlocks();
    void recomputeSizesEachBlockByItsHighestLine();
    void recomputeListsKeysInAscendingOrderAndNotByPosition();
    void recomputeFindsTheLeftmostFieldsThatEachBlockFinds();
    void recomputeOfAnEmptyStoreLeavesTheBlocks();
    void recomputeReplacesTheOldBlocks();
    void recomputeLeavesOutFieldsOfOtherBlocks_data();
    void recomputeLeavesOutFieldsOfOtherBlocks();
    void blockOfHiddenFieldsHasOneEmptyLine();
    void visibleFieldOnLineZeroStandsOnEntryZero();
    void fieldsOnOneCellAreBothListedAndTheLowerKeyLeads();
    void blocksGoStaleUntilTheyAreRecomputed();
    void recomputeLeavesTheRecordsAlone();
    void linesFarBeyondATemplateBelongToNoLine();
    void readsOfALine();
    void lineTakesFontAndHeightFromItsLeftmostField();
    void emptyLineHasNoFields();
    void readsOutsideTheBlocksFindNothing_data();
    void readsOutsideTheBlocksFindNothing();
};

void TestBlocks::maxRowsOfAnEmptyStore()
{
    BD_T20Items bd;
    QVERIFY(bd.ComputeMaxRowInAllBlocks(10).isEmpty());
    QVERIFY(bd.items.isEmpty());
}

void TestBlocks::maxRowsPerBlock()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(0, 3, 0));
    bd.AddPoleToBD(2, fieldAt(0, 7, 0));
    bd.AddPoleToBD(3, fieldAt(0, 5, 0));
    bd.AddPoleToBD(4, fieldAt(9, 255, 0));
    bd.AddPoleToBD(5, fieldAt(4, 1, 0));
    bd.AddPoleToBD(6, fieldAt(10, 8, 0));
    QCOMPARE(bd.ComputeMaxRowInAllBlocks(10), (QList<int>{7, 0, 0, 0, 1, 0, 0, 0, 0, 255}));
}

void TestBlocks::maxRowsForOtherCounts_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<int>>("maxRows");
    QTest::newRow("none") << 0 << QList<int>{};
    QTest::newRow("one") << 1 << QList<int>{4};
    QTest::newRow("up to the last block") << 3 << QList<int>{4, 0, 6};
    QTest::newRow("more") << 5 << QList<int>{4, 0, 6, 0, 0};
}

void TestBlocks::maxRowsForOtherCounts()
{
    QFETCH(int, count);
    QFETCH(QList<int>, maxRows);
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(0, 4, 0));
    bd.AddPoleToBD(2, fieldAt(2, 6, 0));
    QCOMPARE(bd.ComputeMaxRowInAllBlocks(count), maxRows);
}

void TestBlocks::maxRowsCountVisibleFieldsOnly()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(1, 2, 0, 1));
    bd.AddPoleToBD(2, fieldAt(1, 9, 0, 0));
    bd.AddPoleToBD(3, fieldAt(1, 8, 0, -1));
    QCOMPARE(bd.ComputeMaxRowInAllBlocks(2), (QList<int>{0, 2}));
}

void TestBlocks::recomputeSortsFieldsIntoBlocksAndLines()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(2, 1, 10));
    bd.AddPoleToBD(2, fieldAt(2, 3, 0));
    bd.AddPoleToBD(3, fieldAt(0, 1, 0));
    bd.AddPoleToBD(4, fieldAt(2, 1, 0));
    bd.AddPoleToBD(5, fieldAt(2, 1, 5, 0));
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.at(0).lines.size(), 2);
    QCOMPARE(bd.blocks.at(0).lines.at(1).poles, QList<int>{3});
    const auto& lines = bd.blocks.at(2).lines;
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines.at(0).poles.isEmpty());
    QCOMPARE(lines.at(1).poles, (QList<int>{1, 4}));
    QVERIFY(lines.at(2).poles.isEmpty());
    QCOMPARE(lines.at(3).poles, QList<int>{2});
    QCOMPARE(lines.at(0).firstIdx, -1);
    QCOMPARE(lines.at(1).firstIdx, 1);
    QCOMPARE(lines.at(2).firstIdx, -1);
    QCOMPARE(lines.at(3).firstIdx, 0);
}

void TestBlocks::recomputeGivesTenBlocks()
{
    BD_T20Items bd;
    QVERIFY(bd.blocks.isEmpty());
    bd.AddPoleToBD(1, T20Item());
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.size(), 10);
    for (const auto& block : bd.blocks)
        QCOMPARE(block.lines.size(), 1);
}

void TestBlocks::recomputeSizesEachBlockByItsHighestLine()
{
    BD_T20Items bd;
    for (int block = 0; block < 10; ++block)
        bd.AddPoleToBD(block + 1, fieldAt(block, 255 - block, 0));
    bd.ReComputeBDBlocks();
    for (int block = 0; block < 10; ++block) {
        QCOMPARE(bd.blocks.at(block).lines.size(), 256 - block);
        QCOMPARE(bd.blocks.at(block).lines.last().poles, QList<int>{block + 1});
    }
}

void TestBlocks::recomputeListsKeysInAscendingOrderAndNotByPosition()
{
    BD_T20Items bd;
    bd.AddPoleToBD(3, fieldAt(1, 1, 0));
    bd.AddPoleToBD(2, fieldAt(1, 1, 20));
    bd.AddPoleToBD(1, fieldAt(1, 1, 10));
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.at(1).lines.at(1).poles, (QList<int>{1, 2, 3}));
    QCOMPARE(bd.blocks.at(1).lines.at(1).firstIdx, 2);
}

void TestBlocks::recomputeFindsTheLeftmostFieldsThatEachBlockFinds()
{
    QRandomGenerator random(1);
    BD_T20Items bd;
    // Few lines and positions, so that many fields share a line and some a cell.
    for (int key = 1; key <= 300; ++key) {
        const int block = random.bounded(10);
        const int line = random.bounded(1, 9);
        const int x = random.bounded(12);
        bd.AddPoleToBD(key, fieldAt(block, line, x, random.bounded(3)));
    }
    bd.ReComputeBDBlocks();
    QList<int> found;
    for (auto& block : bd.blocks) {
        const auto before = block.lines;
        block.ComputeParamsForAllLines(&bd);
        for (int line = 0; line < before.size(); ++line) {
            QCOMPARE(block.lines.at(line).firstIdx, before.at(line).firstIdx);
            found.append(before.at(line).firstIdx);
        }
    }
    QVERIFY(found.contains(-1));
    QVERIFY(found.contains(0));
    QVERIFY(*std::max_element(found.cbegin(), found.cend()) > 0);
}

void TestBlocks::recomputeOfAnEmptyStoreLeavesTheBlocks()
{
    BD_T20Items bd;
    bd.ReComputeBDBlocks();
    QVERIFY(bd.blocks.isEmpty());
    bd.AddPoleToBD(1, fieldAt(6, 2, 0));
    bd.ReComputeBDBlocks();
    bd.items.clear();
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.size(), 10);
    QCOMPARE(bd.blocks.at(6).lines.size(), 3);
    QCOMPARE(bd.blocks.at(6).lines.at(2).poles, QList<int>{1});
    QVERIFY(bd.items.isEmpty());
}

void TestBlocks::recomputeReplacesTheOldBlocks()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(6, 9, 0));
    bd.ReComputeBDBlocks();
    bd.getPoleByKey(1).Line = 2;
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.size(), 10);
    QCOMPARE(bd.blocks.at(6).lines.size(), 3);
    QCOMPARE(bd.blocks.at(6).lines.at(2).poles, QList<int>{1});
}

void TestBlocks::recomputeLeavesOutFieldsOfOtherBlocks_data()
{
    QTest::addColumn<int>("block");
    for (const int block : {10, 11, 255, 256, -1, INT_MIN, INT_MAX})
        QTest::addRow("%d", block) << block;
}

void TestBlocks::recomputeLeavesOutFieldsOfOtherBlocks()
{
    QFETCH(int, block);
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(block, 4, 0));
    bd.AddPoleToBD(2, fieldAt(9, 1, 0));
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.size(), 10);
    for (int i = 0; i < 10; ++i)
        QCOMPARE(bd.blocks.at(i).lines.size(), i == 9 ? 2 : 1);
    QVERIFY(bd.blocks.at(0).lines.at(0).poles.isEmpty());
    QCOMPARE(bd.blocks.at(9).lines.at(1).poles, QList<int>{2});
    QCOMPARE(bd.items.value(1).Block, block);
}

void TestBlocks::blockOfHiddenFieldsHasOneEmptyLine()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(5, 4, 0, 0));
    bd.AddPoleToBD(2, fieldAt(5, 2, 0, 0));
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.at(5).lines.size(), 1);
    QVERIFY(bd.blocks.at(5).lines.at(0).poles.isEmpty());
    QCOMPARE(bd.blocks.at(5).lines.at(0).firstIdx, -1);
}

void TestBlocks::visibleFieldOnLineZeroStandsOnEntryZero()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(3, 0, 8));
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.at(3).lines.size(), 1);
    QCOMPARE(bd.blocks.at(3).lines.at(0).poles, QList<int>{1});
    QCOMPARE(bd.blocks.at(3).lines.at(0).firstIdx, 0);
    QVERIFY(bd.isLineHavePoles(3, 0));
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 1);
}

void TestBlocks::fieldsOnOneCellAreBothListedAndTheLowerKeyLeads()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(1, 1, 9));
    bd.AddPoleToBD(2, fieldAt(1, 1, 4));
    bd.AddPoleToBD(3, fieldAt(1, 1, 4));
    bd.getPoleByKey(2).Font = 2;
    bd.getPoleByKey(3).Font = 3;
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.at(1).lines.at(1).poles, (QList<int>{1, 2, 3}));
    QCOMPARE(bd.blocks.at(1).lines.at(1).firstIdx, 1);
    QCOMPARE(bd.getLineFont(1, 1), 2);
}

void TestBlocks::blocksGoStaleUntilTheyAreRecomputed()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(1, 1, 0));
    bd.AddPoleToBD(2, fieldAt(1, 1, 5));
    bd.ReComputeBDBlocks();
    bd.getPoleByKey(1).X = 9;
    bd.getPoleByKey(2).Size = 0;
    bd.AddPoleToBD(3, fieldAt(2, 1, 0));
    QCOMPARE(bd.getLineKolPoley(1, 1), 2);
    QCOMPARE(bd.blocks.at(1).lines.at(1).firstIdx, 0);
    QCOMPARE(bd.blocks.at(2).lines.size(), 1);
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.getLineKolPoley(1, 1), 1);
    QCOMPARE(bd.blocks.at(2).lines.size(), 2);
}

void TestBlocks::recomputeLeavesTheRecordsAlone()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, distinctRecord());
    bd.AddPoleToBD(2, fieldAt(1, 1, 5));
    bd.AddPoleToBD(3, fieldAt(1, 0, 5, 0));
    const auto before = bd.items;
    bd.ReComputeBDBlocks();
    QVERIFY(isSame(bd.items, before));
}

void TestBlocks::linesFarBeyondATemplateBelongToNoLine()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(0, BD_T20Items::kLineLimit, 0));
    bd.AddPoleToBD(2, fieldAt(1, BD_T20Items::kLineLimit + 1, 0));
    bd.AddPoleToBD(3, fieldAt(2, INT_MAX, 0));
    bd.AddPoleToBD(4, fieldAt(3, -1, 0));
    bd.AddPoleToBD(5, fieldAt(4, INT_MIN, 0));
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.at(0).lines.size(), BD_T20Items::kLineLimit + 1);
    QCOMPARE(bd.getLineKolPoley(0, BD_T20Items::kLineLimit), 1);
    for (int block = 1; block < 10; ++block) {
        QCOMPARE(bd.blocks.at(block).lines.size(), 1);
        QVERIFY(bd.blocks.at(block).lines.at(0).poles.isEmpty());
    }
}

void TestBlocks::readsOfALine()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(4, 2, 3));
    bd.AddPoleToBD(2, fieldAt(4, 2, 8));
    bd.AddPoleToBD(3, fieldAt(4, 2, 8, 0));
    bd.AddPoleToBD(4, fieldAt(9, 1, 0));
    bd.ReComputeBDBlocks();
    QVERIFY(bd.isLineHavePoles(4, 2));
    QCOMPARE(bd.getLineKolPoley(4, 2), 2);
    QVERIFY(bd.isLineHavePoles(9, 1));
    QCOMPARE(bd.getLineKolPoley(9, 1), 1);
    bd.blocks[4].lines[2].firstIdx = -1;
    QVERIFY(!bd.isLineHavePoles(4, 2));
    QCOMPARE(bd.getLineKolPoley(4, 2), 2);
}

void TestBlocks::lineTakesFontAndHeightFromItsLeftmostField()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(4, 1, 20));
    bd.AddPoleToBD(2, fieldAt(4, 1, 3));
    bd.AddPoleToBD(3, fieldAt(4, 1, 30));
    auto& leftmost = bd.getPoleByKey(2);
    leftmost.Font = 6;
    leftmost.X2X = 1;
    bd.getPoleByKey(1).X2Y = 1;
    bd.getPoleByKey(1).Font = 5;
    bd.getPoleByKey(3).Font = 4;
    bd.ReComputeBDBlocks();
    QVERIFY(isSame(bd.getLineFirstPole(4, 1), leftmost));
    QCOMPARE(bd.getLineFont(4, 1), 6);
    QCOMPARE(bd.getLineX2X(4, 1), 1);
    QCOMPARE(bd.getLineX2Y(4, 1), 0);
    leftmost.X2X = 0;
    leftmost.X2Y = 1;
    QCOMPARE(bd.getLineX2X(4, 1), 0);
    QCOMPARE(bd.getLineX2Y(4, 1), 1);
}

void TestBlocks::emptyLineHasNoFields()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(4, 2, 3));
    bd.getPoleByKey(1).Font = 5;
    bd.ReComputeBDBlocks();
    for (const int line : {0, 1}) {
        QVERIFY(!bd.isLineHavePoles(4, line));
        QCOMPARE(bd.getLineKolPoley(4, line), 0);
        QCOMPARE(bd.getLineFont(4, line), 0);
        QCOMPARE(bd.getLineX2X(4, line), 0);
        QCOMPARE(bd.getLineX2Y(4, line), 0);
    }
}

void TestBlocks::readsOutsideTheBlocksFindNothing_data()
{
    QTest::addColumn<int>("block");
    QTest::addColumn<int>("line");
    QTest::newRow("line behind the last") << 4 << 3;
    QTest::newRow("line -1") << 4 << -1;
    QTest::newRow("block behind the last") << 10 << 1;
    QTest::newRow("block -1") << -1 << 1;
    QTest::newRow("lowest ints") << INT_MIN << INT_MIN;
    QTest::newRow("highest ints") << INT_MAX << INT_MAX;
}

void TestBlocks::readsOutsideTheBlocksFindNothing()
{
    QFETCH(int, block);
    QFETCH(int, line);
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(4, 2, 3));
    bd.getPoleByKey(1).Font = 5;
    bd.ReComputeBDBlocks();
    QVERIFY(!bd.isLineHavePoles(block, line));
    QCOMPARE(bd.getLineKolPoley(block, line), 0);
    QVERIFY(isBlank(bd.getLineFirstPole(block, line)));
    QCOMPARE(bd.getLineFont(block, line), 0);
    QCOMPARE(bd.getLineX2X(block, line), 0);
    QCOMPARE(bd.getLineX2Y(block, line), 0);
}

QTEST_GUILESS_MAIN(TestBlocks)
#include "tst_blocks.moc"
