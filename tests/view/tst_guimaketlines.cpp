#include "tape.h"

#include <QTest>

#include <limits>

class tst_GUIMaketLines : public QObject
{
    Q_OBJECT

private slots:
    void baseOfALineBeyondTheLast();
    void addedLineSurvivesARedrawAndNotANewLayout();
    void addedLineTakesTheFieldsThatMoveOntoIt();
    void addedLineIsAppendedWhateverItsNumber_data();
    void addedLineIsAppendedWhateverItsNumber();
    void deletedLineLeavesBothLists();
    void headingAndLinesBeyondTheLastAreNotDeleted_data();
    void headingAndLinesBeyondTheLastAreNotDeleted();
    void deletingGoesByEachListsOwnLength();
    void redrawKeepsTheNumberOfLines();
    void blocksThatDoNotExistAreHarmless_data();
    void blocksThatDoNotExistAreHarmless();
    void linesThatDoNotExistHaveNoSize();
};

void tst_GUIMaketLines::baseOfALineBeyondTheLast()
{
    Tape tape;
    tape.place(1, 3);
    tape.maket.ReComputeBDBlocks(true);
    QCOMPARE(tape.maket.getLineBaseY(1, tape.maket.getBlockKolLines(1)), -1);
    QCOMPARE(tape.maket.getLineBaseY(0, 1), -1);
}

void tst_GUIMaketLines::addedLineSurvivesARedrawAndNotANewLayout()
{
    Tape tape;
    tape.place(1, 1);
    tape.maket.ReComputeBDBlocks(true);
    tape.maket.AddLineInBlock(1, 1);
    QCOMPARE(tape.maket.blocks.at(1).lineDY, (QList<int>{21, 20, 0}));
    QCOMPARE(tape.maket.blocks.at(1).lineDX, (QList<int>{384, 12, 0}));
    QCOMPARE(tape.maket.blocks.at(1).kolLines, 3);

    for (int redraw = 0; redraw < 3; ++redraw) {
        QCOMPARE(tape.maket.ReComputeBDBlocks(false), 0);
        QCOMPARE(tape.maket.blocks.at(1).lineDY, (QList<int>{21, 20, 15}));
        QCOMPARE(tape.maket.blocks.at(1).lineDX, (QList<int>{384, 12, 0}));
        QCOMPARE(tape.maket.blocks.at(2).baseY, 21 + 56);
    }

    tape.place(1, 2);
    tape.maket.ReComputeBDBlocks(false);
    QCOMPARE(tape.maket.getLineHeight(1, 2), 20);

    tape.bd.items[2].Size = 0;
    tape.bd.ReComputeBDBlocks();
    tape.maket.ReComputeBDBlocks(false);
    QCOMPARE(tape.maket.getLineHeight(1, 2), 15);
    QCOMPARE(tape.maket.ReComputeBDBlocks(true), 0);
    QCOMPARE(tape.maket.blocks.at(1).lineDY, (QList<int>{21, 20}));
}

void tst_GUIMaketLines::addedLineTakesTheFieldsThatMoveOntoIt()
{
    Tape tape;
    tape.place(0, 1);
    tape.place(0, 2).Font = 1;
    tape.maket.ReComputeBDBlocks(true);
    tape.maket.AddLineInBlock(0, 2);
    tape.bd.AddLineInBlock(0, 2);
    tape.bd.ReComputeBDBlocks();
    tape.maket.ReComputeBDBlocks(false);
    QCOMPARE(tape.maket.blocks.at(0).lineDY, (QList<int>{21, 20, 15, 24}));
}

void tst_GUIMaketLines::addedLineIsAppendedWhateverItsNumber_data()
{
    QTest::addColumn<int>("line");
    for (const int line : {-1, 0, 1, 2, 3, 100})
        QTest::addRow("%d", line) << line;
}

void tst_GUIMaketLines::addedLineIsAppendedWhateverItsNumber()
{
    QFETCH(const int, line);
    GUIMaket maket;
    maket.CreateBDBlocks(2);
    maket.blocks[1].lineDY = {21, 20, 24};
    maket.blocks[1].lineDX = {384, 12, 9};
    maket.blocks[1].kolLines = 3;
    maket.AddLineInBlock(1, line);
    QCOMPARE(maket.blocks.at(1).lineDY, (QList<int>{21, 20, 24, 0}));
    QCOMPARE(maket.blocks.at(1).lineDX, (QList<int>{384, 12, 9, 0}));
    QCOMPARE(maket.blocks.at(1).kolLines, 4);
    QCOMPARE(maket.getBlockKolLines(0), 0);
}

void tst_GUIMaketLines::deletedLineLeavesBothLists()
{
    GUIMaket maket;
    maket.CreateBDBlocks(2);
    maket.blocks[1].lineDY = {21, 20, 24, 15};
    maket.blocks[1].lineDX = {384, 12, 9, 0};
    maket.blocks[1].kolLines = 4;
    maket.DelLineInBlock(1, 1);
    QCOMPARE(maket.blocks.at(1).lineDY, (QList<int>{21, 24, 15}));
    QCOMPARE(maket.blocks.at(1).lineDX, (QList<int>{384, 9, 0}));
    QCOMPARE(maket.blocks.at(1).kolLines, 3);
    maket.DelLineInBlock(1, 2);
    QCOMPARE(maket.blocks.at(1).lineDY, (QList<int>{21, 24}));
    QCOMPARE(maket.blocks.at(1).lineDX, (QList<int>{384, 9}));
    QCOMPARE(maket.blocks.at(1).kolLines, 2);
}

void tst_GUIMaketLines::headingAndLinesBeyondTheLastAreNotDeleted_data()
{
    QTest::addColumn<int>("line");
    QTest::newRow("heading") << 0;
    QTest::newRow("above the heading") << -1;
    QTest::newRow("just beyond the last") << 4;
    QTest::newRow("far beyond the last") << 1000;
}

void tst_GUIMaketLines::headingAndLinesBeyondTheLastAreNotDeleted()
{
    QFETCH(const int, line);
    Tape tape;
    tape.place(1, 3);
    tape.maket.ReComputeBDBlocks(true);
    const QString before = numbersOf(tape.maket);
    tape.maket.DelLineInBlock(1, line);
    QCOMPARE(numbersOf(tape.maket), before);
}

void tst_GUIMaketLines::deletingGoesByEachListsOwnLength()
{
    GUIMaket maket;
    maket.CreateBDBlocks(1);
    maket.blocks[0].lineDY = {21, 20, 24};
    maket.blocks[0].lineDX = {384, 12};
    maket.blocks[0].kolLines = 5;
    maket.DelLineInBlock(0, 2);
    QCOMPARE(maket.blocks.at(0).lineDY, (QList<int>{21, 20}));
    QCOMPARE(maket.blocks.at(0).lineDX, (QList<int>{384, 12}));
    QCOMPARE(maket.blocks.at(0).kolLines, 4);
    maket.DelLineInBlock(0, 3);
    QCOMPARE(maket.blocks.at(0).lineDY, (QList<int>{21, 20}));
    QCOMPARE(maket.blocks.at(0).kolLines, 3);

    // A count below the lengths is what bounds the line.
    maket.blocks[0].kolLines = 1;
    maket.DelLineInBlock(0, 1);
    QCOMPARE(maket.blocks.at(0).lineDY, (QList<int>{21, 20}));
    QCOMPARE(maket.blocks.at(0).kolLines, 1);
}

void tst_GUIMaketLines::redrawKeepsTheNumberOfLines()
{
    Tape tape;
    auto& item = tape.place(1, 3);
    tape.maket.ReComputeBDBlocks(true);

    item.Line = 5;
    tape.bd.ReComputeBDBlocks();
    QCOMPARE(tape.maket.ReComputeBDBlocks(false), 0);
    QCOMPARE(tape.maket.blocks.at(1).lineDY, (QList<int>{21, 15, 15, 15}));

    item.Line = 1;
    tape.bd.ReComputeBDBlocks();
    QCOMPARE(tape.maket.ReComputeBDBlocks(false), 0);
    QCOMPARE(tape.maket.blocks.at(1).lineDY, (QList<int>{21, 20, 15, 15}));
    QCOMPARE(tape.maket.blocks.at(1).kolLines, 4);

    QCOMPARE(tape.maket.ReComputeBDBlocks(true), 0);
    QCOMPARE(tape.maket.blocks.at(1).lineDY, (QList<int>{21, 20}));
}

void tst_GUIMaketLines::blocksThatDoNotExistAreHarmless_data()
{
    QTest::addColumn<int>("block");
    for (const int block : {-1, 10, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        QTest::addRow("%d", block) << block;
}

void tst_GUIMaketLines::blocksThatDoNotExistAreHarmless()
{
    QFETCH(const int, block);
    Tape tape;
    tape.place(1, 3);
    tape.maket.ReComputeBDBlocks(true);
    const QString before = numbersOf(tape.maket);
    QCOMPARE(tape.maket.getBlockKolLines(block), 0);
    QCOMPARE(tape.maket.getLineBaseY(block, 1), -1);
    QCOMPARE(tape.maket.getLineCharDX(block, 1), 0);
    QCOMPARE(tape.maket.getLineHeight(block, 1), 0);
    tape.maket.AddLineInBlock(block, 1);
    tape.maket.DelLineInBlock(block, 1);
    QCOMPARE(numbersOf(tape.maket), before);
}

void tst_GUIMaketLines::linesThatDoNotExistHaveNoSize()
{
    Tape tape;
    tape.place(1, 3);
    tape.maket.ReComputeBDBlocks(true);
    for (const int line : {-1, 4, 1000}) {
        QCOMPARE(tape.maket.getLineCharDX(1, line), 0);
        QCOMPARE(tape.maket.getLineHeight(1, line), 0);
    }
}

QTEST_MAIN(tst_GUIMaketLines)
#include "tst_guimaketlines.moc"
