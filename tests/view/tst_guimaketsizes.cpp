#include "tape.h"

#include <QTest>

#include <limits>

class tst_GUIMaketSizes : public QObject
{
    Q_OBJECT

private slots:
    void sizesOfEachFont_data();
    void sizesOfEachFont();
    void singleFieldWithHeadings();
    void singleFieldWithoutHeadings();
    void headingsSwitchedLaterMoveThePicture();
    void everyLineZeroHasTheWidthOfTheHeading();
    void fieldOnLineZeroLeavesTheHeadingAlone();
    void sizesFollowTheFont_data();
    void sizesFollowTheFont();
    void doublingGoesByEachFlagAlone();
    void leftmostFieldDecidesForItsLine();
    void lowerKeyDecidesOnTheSameCell();
    void hiddenFieldsTakeNoRoom();
    void lineThatTheModelDoesNotListIsEmpty();
    void blocksFollowEachOtherWithoutGaps();
    void topBlockAlwaysStartsAtZero();
    void recomputingAgainGivesTheSame();
};

void tst_GUIMaketSizes::sizesOfEachFont_data()
{
    QTest::addColumn<int>("font");
    QTest::addColumn<int>("dx");
    QTest::addColumn<int>("dy");
    QTest::newRow("1") << 1 << 12 << 24;
    QTest::newRow("2") << 2 << 12 << 20;
    QTest::newRow("3") << 3 << 12 << 16;
    QTest::newRow("4") << 4 << 12 << 10;
    QTest::newRow("5") << 5 << 12 << 10;
    QTest::newRow("6") << 6 << 10 << 14;
    QTest::newRow("7") << 7 << 9 << 14;
    QTest::newRow("0") << 0 << 12 << 20;
    QTest::newRow("8") << 8 << 12 << 20;
    QTest::newRow("255") << 255 << 12 << 20;
    QTest::newRow("-1") << -1 << 12 << 20;
    QTest::newRow("least") << std::numeric_limits<int>::min() << 12 << 20;
    QTest::newRow("greatest") << std::numeric_limits<int>::max() << 12 << 20;
}

void tst_GUIMaketSizes::sizesOfEachFont()
{
    QFETCH(const int, font);
    QFETCH(const int, dx);
    QFETCH(const int, dy);
    QCOMPARE(GUIMaket::FontSizeDX(font), dx);
    QCOMPARE(GUIMaket::FontSizeDY(font), dy);
}

void tst_GUIMaketSizes::singleFieldWithHeadings()
{
    Tape tape;
    tape.place(1, 3);
    QCOMPARE(tape.maket.ReComputeBDBlocks(true), 0);
    QCOMPARE(tape.maket.blocks.size(), 10);
    const auto& top = tape.maket.blocks.at(0);
    QCOMPARE(top.kolLines, 1);
    QCOMPARE(top.baseY, 0);
    QCOMPARE(top.getAllBlockDY(), 21);
    const auto& block = tape.maket.blocks.at(1);
    QCOMPARE(block.kolLines, 4);
    QCOMPARE(block.baseY, 21);
    QCOMPARE(block.lineDY, (QList<int>{21, 15, 15, 20}));
    QCOMPARE(block.lineDX, (QList<int>{384, 0, 0, 12}));
    QCOMPARE(tape.maket.getLineBaseY(1, 3), 21 + 21 + 15 + 15);
}

void tst_GUIMaketSizes::singleFieldWithoutHeadings()
{
    Tape tape;
    tape.maket.setBlockTitleEnabled(false);
    tape.place(1, 3);
    QCOMPARE(tape.maket.ReComputeBDBlocks(true), 0);
    QCOMPARE(tape.maket.blocks.at(0).kolLines, 1);
    QCOMPARE(tape.maket.blocks.at(0).getAllBlockDY(), 0);
    QCOMPARE(tape.maket.blocks.at(1).baseY, 0);
    QCOMPARE(tape.maket.blocks.at(1).lineDY, (QList<int>{0, 15, 15, 20}));
    QCOMPARE(tape.maket.blocks.at(9).baseY, 50);
    QCOMPARE(tape.maket.blocks.at(9).getAllBlockDY(), 0);
}

void tst_GUIMaketSizes::headingsSwitchedLaterMoveThePicture()
{
    Tape tape;
    tape.place(1, 3);
    tape.maket.ReComputeBDBlocks(true);
    QCOMPARE(tape.maket.getLineBaseY(9, 0), 9 * 21 + 50);
    tape.maket.setBlockTitleEnabled(false);
    QCOMPARE(tape.maket.ReComputeBDBlocks(false), 0);
    QCOMPARE(tape.maket.getLineBaseY(9, 0), 50);
    QCOMPARE(tape.maket.getLineBaseY(1, 1), 0);
    tape.maket.setBlockTitleEnabled(true);
    QCOMPARE(tape.maket.ReComputeBDBlocks(false), 0);
    QCOMPARE(tape.maket.getLineBaseY(9, 0), 9 * 21 + 50);
}

void tst_GUIMaketSizes::everyLineZeroHasTheWidthOfTheHeading()
{
    Tape tape;
    tape.place(4, 2);
    for (const bool titles : {true, false}) {
        tape.maket.setBlockTitleEnabled(titles);
        tape.maket.ReComputeBDBlocks(true);
        for (int block = 0; block < 10; ++block) {
            QCOMPARE(tape.maket.getLineCharDX(block, 0), 384);
            QCOMPARE(tape.maket.getLineHeight(block, 0), titles ? 21 : 0);
        }
    }
}

void tst_GUIMaketSizes::fieldOnLineZeroLeavesTheHeadingAlone()
{
    Tape tape;
    tape.place(0, 0);
    QCOMPARE(tape.maket.ReComputeBDBlocks(true), 0);
    QCOMPARE(tape.maket.getBlockKolLines(0), 1);
    QCOMPARE(tape.maket.getLineHeight(0, 0), 21);
    QCOMPARE(tape.maket.getLineCharDX(0, 0), 384);
}

void tst_GUIMaketSizes::sizesFollowTheFont_data()
{
    sizesOfEachFont_data();
}

void tst_GUIMaketSizes::sizesFollowTheFont()
{
    QFETCH(const int, font);
    QFETCH(const int, dx);
    QFETCH(const int, dy);
    Tape tape;
    auto& item = tape.place(3, 1);
    item.Font = font;
    tape.maket.ReComputeBDBlocks(true);
    QCOMPARE(tape.maket.getLineCharDX(3, 1), dx);
    QCOMPARE(tape.maket.getLineHeight(3, 1), dy);
    item.X2X = 1;
    item.X2Y = 1;
    tape.maket.ReComputeBDBlocks(false);
    QCOMPARE(tape.maket.getLineCharDX(3, 1), 2 * dx);
    QCOMPARE(tape.maket.getLineHeight(3, 1), 2 * dy);
}

void tst_GUIMaketSizes::doublingGoesByEachFlagAlone()
{
    Tape tape;
    tape.place(0, 1).X2X = 1;
    tape.place(0, 2).X2Y = 1;
    auto& odd = tape.place(0, 3);
    odd.X2X = -1;
    odd.X2Y = 3;
    tape.maket.ReComputeBDBlocks(true);
    QCOMPARE(tape.maket.blocks.at(0).lineDX, (QList<int>{384, 24, 12, 24}));
    QCOMPARE(tape.maket.blocks.at(0).lineDY, (QList<int>{21, 20, 40, 40}));
}

void tst_GUIMaketSizes::leftmostFieldDecidesForItsLine()
{
    Tape tape;
    auto& right = tape.place(0, 1, 20);
    right.Font = 1;
    right.X2X = 1;
    right.X2Y = 1;
    tape.place(0, 1, 3).Font = 7;
    tape.place(0, 1, 10).Font = 3;
    tape.maket.ReComputeBDBlocks(true);
    QCOMPARE(tape.maket.getLineCharDX(0, 1), 9);
    QCOMPARE(tape.maket.getLineHeight(0, 1), 14);

    right.X = 0;
    tape.bd.ReComputeBDBlocks();
    tape.maket.ReComputeBDBlocks(false);
    QCOMPARE(tape.maket.getLineCharDX(0, 1), 24);
    QCOMPARE(tape.maket.getLineHeight(0, 1), 48);
}

void tst_GUIMaketSizes::lowerKeyDecidesOnTheSameCell()
{
    Tape tape;
    tape.place(0, 1, 5).Font = 6;
    tape.place(0, 1, 5).Font = 1;
    tape.maket.ReComputeBDBlocks(true);
    QCOMPARE(tape.maket.getLineCharDX(0, 1), 10);
    QCOMPARE(tape.maket.getLineHeight(0, 1), 14);
}

void tst_GUIMaketSizes::hiddenFieldsTakeNoRoom()
{
    Tape tape;
    tape.place(0, 1);
    tape.place(0, 4).Size = 0;
    tape.place(5, 2).Size = 0;
    tape.bd.ReComputeBDBlocks();
    tape.maket.ReComputeBDBlocks(true);
    QCOMPARE(tape.maket.getBlockKolLines(0), 2);
    QCOMPARE(tape.maket.getBlockKolLines(5), 1);
}

void tst_GUIMaketSizes::lineThatTheModelDoesNotListIsEmpty()
{
    Tape tape;
    tape.place(0, 2);
    tape.bd.blocks.clear();
    QCOMPARE(tape.maket.ReComputeBDBlocks(true), 0);
    QCOMPARE(tape.maket.blocks.at(0).lineDY, (QList<int>{21, 15, 15}));
    QCOMPARE(tape.maket.blocks.at(0).lineDX, (QList<int>{384, 0, 0}));
}

void tst_GUIMaketSizes::blocksFollowEachOtherWithoutGaps()
{
    Tape tape;
    tape.place(0, 2).Font = 1;
    tape.place(3, 1).Font = 6;
    tape.place(9, 3);
    tape.maket.ReComputeBDBlocks(true);
    int y = 0;
    for (int block = 0; block < 10; ++block) {
        QCOMPARE(tape.maket.blocks.at(block).baseY, y);
        for (int line = 0; line < tape.maket.getBlockKolLines(block); ++line) {
            QCOMPARE(tape.maket.getLineBaseY(block, line), y);
            y += tape.maket.getLineHeight(block, line);
        }
    }
    QCOMPARE(y, 10 * 21 + (15 + 24) + 14 + (15 + 15 + 20));
}

void tst_GUIMaketSizes::topBlockAlwaysStartsAtZero()
{
    Tape tape;
    tape.place(1, 3);
    for (const bool rebuild : {true, false}) {
        tape.maket.ReComputeBDBlocks(true);
        tape.maket.blocks[0].baseY = 70;
        QCOMPARE(tape.maket.ReComputeBDBlocks(rebuild), 0);
        QCOMPARE(tape.maket.blocks.at(0).baseY, 0);
        QCOMPARE(tape.maket.blocks.at(1).baseY, 21);
    }
}

void tst_GUIMaketSizes::recomputingAgainGivesTheSame()
{
    Tape tape;
    tape.place(0, 2).X2Y = 1;
    tape.place(7, 1).Font = 7;
    tape.maket.ReComputeBDBlocks(true);
    const QString once = numbersOf(tape.maket);
    for (const bool rebuild : {false, true, false}) {
        QCOMPARE(tape.maket.ReComputeBDBlocks(rebuild), 0);
        QCOMPARE(numbersOf(tape.maket), once);
    }
}

QTEST_MAIN(tst_GUIMaketSizes)
#include "tst_guimaketsizes.moc"
