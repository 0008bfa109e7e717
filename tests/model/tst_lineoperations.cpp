#include "records.h"

#include <QTest>

#include <climits>

using namespace records;

class TestLineOperations : public QObject
{
    Q_OBJECT

private slots:
    void addLineMovesFieldsDownFromItsLine();
    void addLineAtTheFirstAndLastLine();
    void addLineBehindTheLastDoesNothing_data();
    void addLineBehindTheLastDoesNothing();
    void delLineMovesFieldsUpFromBelow();
    void delLineMovesTheNextLineOntoIt();
    void delLineAtTheLastLineMovesNothing();
    void delLineBehindTheLastDoesNothing_data();
    void delLineBehindTheLastDoesNothing();
    void delLineZeroMovesTheFirstLineToZero();
    void addThenDelLineRestoresTheLines();
    void hiddenFieldsKeepTheirLine();
    void otherBlocksKeepTheirLines();
    void lineOperationsChangeNothingButTheLine();
    void lineOperationsDoNotRecomputeBlocks();
    void lineOperationsOfAnEmptyStoreDoNothing_data();
    void lineOperationsOfAnEmptyStoreDoNothing();
    void lineOperationsGoByTheComputedBlocks();
    void copyOfAStoreIsNotMovedAlong();
};

void TestLineOperations::addLineMovesFieldsDownFromItsLine()
{
    BD_T20Items bd =
        computedStoreOf({fieldAt(1, 1, 0), fieldAt(1, 2, 0), fieldAt(1, 2, 9), fieldAt(1, 3, 0)});
    bd.AddLineInBlock(1, 2);
    QCOMPARE(linesOf(bd), (QList<int>{1, 3, 3, 4}));
}

void TestLineOperations::addLineAtTheFirstAndLastLine()
{
    BD_T20Items bd = computedStoreOf({fieldAt(1, 0, 0), fieldAt(1, 1, 0), fieldAt(1, 3, 0)});
    bd.AddLineInBlock(1, 3);
    QCOMPARE(linesOf(bd), (QList<int>{0, 1, 4}));
    bd.AddLineInBlock(1, 0);
    QCOMPARE(linesOf(bd), (QList<int>{1, 2, 5}));
}

void TestLineOperations::addLineBehindTheLastDoesNothing_data()
{
    QTest::addColumn<int>("line");
    QTest::newRow("number of lines") << 4;
    QTest::newRow("beyond") << 5;
    QTest::newRow("highest int") << INT_MAX;
}

void TestLineOperations::addLineBehindTheLastDoesNothing()
{
    QFETCH(int, line);
    BD_T20Items bd = computedStoreOf({fieldAt(1, 1, 0), fieldAt(1, 3, 0)});
    QCOMPARE(bd.blocks.at(1).lines.size(), 4);
    bd.getPoleByKey(2).Line = 200;
    bd.AddLineInBlock(1, line);
    QCOMPARE(linesOf(bd), (QList<int>{1, 200}));
}

void TestLineOperations::delLineMovesFieldsUpFromBelow()
{
    BD_T20Items bd = computedStoreOf(
        {fieldAt(1, 1, 0), fieldAt(1, 2, 0), fieldAt(1, 4, 0), fieldAt(1, 4, 9), fieldAt(1, 5, 0)});
    bd.DelLineInBlock(1, 3);
    QCOMPARE(linesOf(bd), (QList<int>{1, 2, 3, 3, 4}));
}

void TestLineOperations::delLineMovesTheNextLineOntoIt()
{
    BD_T20Items bd = computedStoreOf({fieldAt(1, 2, 0), fieldAt(1, 3, 5)});
    bd.DelLineInBlock(1, 2);
    QCOMPARE(linesOf(bd), (QList<int>{2, 2}));
}

void TestLineOperations::delLineAtTheLastLineMovesNothing()
{
    BD_T20Items bd = computedStoreOf({fieldAt(1, 1, 0), fieldAt(1, 3, 5)});
    bd.DelLineInBlock(1, 3);
    QCOMPARE(linesOf(bd), (QList<int>{1, 3}));
}

void TestLineOperations::delLineBehindTheLastDoesNothing_data()
{
    addLineBehindTheLastDoesNothing_data();
}

void TestLineOperations::delLineBehindTheLastDoesNothing()
{
    QFETCH(int, line);
    BD_T20Items bd = computedStoreOf({fieldAt(1, 1, 0), fieldAt(1, 3, 0)});
    bd.getPoleByKey(2).Line = 200;
    bd.DelLineInBlock(1, line);
    QCOMPARE(linesOf(bd), (QList<int>{1, 200}));
}

void TestLineOperations::delLineZeroMovesTheFirstLineToZero()
{
    BD_T20Items bd = computedStoreOf({fieldAt(1, 1, 0), fieldAt(1, 2, 0)});
    bd.DelLineInBlock(1, 0);
    QCOMPARE(linesOf(bd), (QList<int>{0, 1}));
}

void TestLineOperations::addThenDelLineRestoresTheLines()
{
    BD_T20Items bd = computedStoreOf({fieldAt(1, 1, 0), fieldAt(1, 2, 0), fieldAt(1, 3, 0)});
    bd.AddLineInBlock(1, 2);
    bd.ReComputeBDBlocks();
    QVERIFY(!bd.isLineHavePoles(1, 2));
    bd.DelLineInBlock(1, 2);
    QCOMPARE(linesOf(bd), (QList<int>{1, 2, 3}));
}

void TestLineOperations::hiddenFieldsKeepTheirLine()
{
    BD_T20Items bd =
        computedStoreOf({fieldAt(1, 2, 0), fieldAt(1, 2, 5, 0), fieldAt(1, 4, 0), fieldAt(1, 4, 5, 0)});
    bd.AddLineInBlock(1, 1);
    QCOMPARE(linesOf(bd), (QList<int>{3, 2, 5, 4}));
    bd.ReComputeBDBlocks();
    bd.DelLineInBlock(1, 1);
    bd.DelLineInBlock(1, 1);
    QCOMPARE(linesOf(bd), (QList<int>{1, 2, 3, 4}));
}

void TestLineOperations::otherBlocksKeepTheirLines()
{
    BD_T20Items bd = computedStoreOf({fieldAt(0, 3, 0), fieldAt(1, 3, 0), fieldAt(2, 3, 0)});
    bd.AddLineInBlock(1, 1);
    QCOMPARE(linesOf(bd), (QList<int>{3, 4, 3}));
    bd.DelLineInBlock(2, 1);
    QCOMPARE(linesOf(bd), (QList<int>{3, 4, 2}));
}

void TestLineOperations::lineOperationsChangeNothingButTheLine()
{
    T20Item item = distinctRecord();
    item.Block = 1;
    item.Line = 3;
    BD_T20Items bd = computedStoreOf({item});
    bd.AddLineInBlock(1, 3);
    item.Line = 4;
    QVERIFY(isSame(bd.items.value(1), item));
    bd.DelLineInBlock(1, 2);
    item.Line = 3;
    QVERIFY(isSame(bd.items.value(1), item));
    QCOMPARE(bd.items.size(), 1);
}

void TestLineOperations::lineOperationsDoNotRecomputeBlocks()
{
    BD_T20Items bd = computedStoreOf({fieldAt(1, 2, 0)});
    bd.AddLineInBlock(1, 1);
    QCOMPARE(bd.blocks.at(1).lines.size(), 3);
    QCOMPARE(bd.blocks.at(1).lines.at(2).poles, QList<int>{1});
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.at(1).lines.size(), 4);
    bd.DelLineInBlock(1, 1);
    QCOMPARE(bd.blocks.at(1).lines.size(), 4);
    QCOMPARE(bd.blocks.at(1).lines.at(3).poles, QList<int>{1});
}

void TestLineOperations::lineOperationsOfAnEmptyStoreDoNothing_data()
{
    QTest::addColumn<bool>("hasStaleBlocks");
    QTest::newRow("no blocks at all") << false;
    QTest::newRow("blocks of fields that are gone") << true;
}

void TestLineOperations::lineOperationsOfAnEmptyStoreDoNothing()
{
    QFETCH(bool, hasStaleBlocks);
    BD_T20Items bd;
    if (hasStaleBlocks) {
        bd = computedStoreOf({fieldAt(0, 3, 0)});
        bd.items.clear();
    }
    for (const int line : {0, 1, 3, 4}) {
        bd.AddLineInBlock(0, line);
        bd.DelLineInBlock(0, line);
    }
    QVERIFY(bd.items.isEmpty());
    QCOMPARE(bd.blocks.size(), hasStaleBlocks ? 10 : 0);
}

void TestLineOperations::lineOperationsGoByTheComputedBlocks()
{
    BD_T20Items bd = computedStoreOf({fieldAt(1, 1, 0)});
    bd.AddPoleToBD(2, fieldAt(1, 9, 0));
    bd.AddLineInBlock(1, 5);
    bd.DelLineInBlock(1, 5);
    QCOMPARE(linesOf(bd), (QList<int>{1, 9}));
    bd.AddLineInBlock(1, 1);
    QCOMPARE(linesOf(bd), (QList<int>{2, 10}));
}

void TestLineOperations::copyOfAStoreIsNotMovedAlong()
{
    BD_T20Items bd = computedStoreOf({fieldAt(1, 1, 0), fieldAt(1, 2, 0)});
    const BD_T20Items copy = bd;
    bd.AddLineInBlock(1, 1);
    QCOMPARE(linesOf(bd), (QList<int>{2, 3}));
    QCOMPARE(linesOf(copy), (QList<int>{1, 2}));
}

QTEST_GUILESS_MAIN(TestLineOperations)
#include "tst_lineoperations.moc"
