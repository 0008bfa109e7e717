#include "editing/refusals.h"
#include "editing/rulesbench.h"
#include "editing/tablerows.h"
#include "support/expectedscene.h"
#include "support/tablesteps.h"

#include <QGraphicsItem>
#include <QTableWidget>
#include <QTest>

namespace {

/// The block row from one block to another.
Edit move(int from, int to)
{
    const QString change = from == to ? QString() : QStringLiteral("1.Block %1>%2").arg(from).arg(to);
    return {1, kBlockRow, headingTexts().at(from), from, headingTexts().at(to), to, change};
}

/// A field of a line's own, so that the line is there.
FieldRow anchor(int block, int line, int x)
{
    return {.block = block, .line = line, .x = x, .size = 3, .desc = QStringLiteral("Опора: %1").arg(block)};
}

} // namespace

class tst_RulesBlock : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_bench.dropIfFailed(); }

    void fieldTakesTheBlockOfTheChosenTitle_data();
    void fieldTakesTheBlockOfTheChosenTitle();
    void fieldStandsInItsNewBlockAfterTheRedraw();
    void ownTitleChangesNothing();
    void maskAloneSaysWhichBlocksAreAllowed_data();
    void maskAloneSaysWhichBlocksAreAllowed();
    void blockOutsideTheMaskIsRefused_data();
    void blockOutsideTheMaskIsRefused();
    void maskIsAskedBeforeTheLine();
    void lineBeyondTheNewBlockIsRefused_data();
    void lineBeyondTheNewBlockIsRefused();
    void lastLineOfTheNewBlockIsEnough();
    void lineIsAskedBeforeTheCell();
    void onlyAFieldThatStartsOnTheCellTakesIt_data();
    void onlyAFieldThatStartsOnTheCellTakesIt();
    void takenCellPushesTheFieldToTheRight_data();
    void takenCellPushesTheFieldToTheRight();
    void pushedFieldOfTheListTakesItsPlaceToo();
    void withoutAFreeCellToTheRightTheBlockIsRefused_data();
    void withoutAFreeCellToTheRightTheBlockIsRefused();
    void titleOutsideTheTableIsRefused();
    void refusedFieldCanBeMovedAtOnceElsewhere();
    void redrawUnderARefusalLeavesTheRecordAlone();
    void redrawUnderTheReportKeepsTheMove();

private:
    SharedBench m_bench;
};

void tst_RulesBlock::fieldTakesTheBlockOfTheChosenTitle_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("size");
    for (int to = 1; to < 10; ++to)
        QTest::addRow("from 0 to %d, on the tape", to) << 0 << to << 4;
    QTest::newRow("from 8 to 0, on the tape") << 8 << 0 << 4;
    QTest::newRow("from 0 to 1, in the list") << 0 << 1 << 0;
    QTest::newRow("from 9 to 8, in the list") << 9 << 8 << 0;
}

void tst_RulesBlock::fieldTakesTheBlockOfTheChosenTitle()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(int, size);
    auto& bench = m_bench.get();
    bench.open({{.block = from, .line = 1, .x = 7, .size = size}, anchor(from, 1, 0), anchor(to, 1, 0)});
    bench.pick(1);

    bench.choose(kBlockRow, headingTexts().at(to));

    QCOMPARE(bench.outcome().lines(), takenBlock(move(from, to)).thenRedrawn(size == 0).lines());
    QCOMPARE(bench.appliedOnCall(), 1);
}

void tst_RulesBlock::fieldStandsInItsNewBlockAfterTheRedraw()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 1, .x = 2}, anchor(0, 2, 0), anchor(1, 1, 0)});
    bench.pick(1);
    bench.choose(kBlockRow, headingTexts().at(1));
    // Two headings of 21; line 1 of the old block is empty now, 15 high, and its line 2 is 20 high.
    QCOMPARE(poleItem(bench.window(), 1)->pos(), QPointF(2 * 12 + 1, 21 + 15 + 20 + 21 + 1));
    QCOMPARE(propertyTable(bench.window())->rowCount(), 0);
}

void tst_RulesBlock::ownTitleChangesNothing()
{
    auto& bench = m_bench.get();
    // Neither the mask nor the cell, which a second field takes, matter to a field that stays.
    bench.open({{.block = 3, .x = 5, .blockMask = 0}, anchor(3, 1, 5), anchor(0, 1, 0)});
    bench.pick(1);
    bench.choose(kBlockRow, headingTexts().at(3));
    const Outcome nothing{.changes = {},
                          .warnings = {},
                          .cells = {QStringLiteral("Итог|3|true")},
                          .log = blockLines(3, headingTexts().at(3), 3, 3),
                          .refills = 0};
    QCOMPARE(bench.outcome().lines(), nothing.lines());
}

void tst_RulesBlock::maskAloneSaysWhichBlocksAreAllowed_data()
{
    QTest::addColumn<unsigned int>("mask");
    QTest::addColumn<int>("to");
    QTest::addColumn<bool>("isAllowed");
    QTest::newRow("bit of the first block") << 0x0001U << 0 << true;
    QTest::newRow("all bits but that of the first block") << 0xfffeU << 0 << false;
    QTest::newRow("bit of the last block") << 0x0200U << 9 << true;
    QTest::newRow("all bits but that of the last block") << 0xfdffU << 9 << false;
    QTest::newRow("bit of the block before it") << 0x0100U << 9 << false;
    QTest::newRow("no bit of any block") << 0xfc00U << 9 << false;
}

void tst_RulesBlock::maskAloneSaysWhichBlocksAreAllowed()
{
    QFETCH(unsigned int, mask);
    QFETCH(int, to);
    QFETCH(bool, isAllowed);
    auto& bench = m_bench.get();
    bench.open({{.block = 4, .x = 7, .blockMask = mask}, anchor(4, 1, 0), anchor(to, 1, 0)});
    bench.pick(1);
    bench.choose(kBlockRow, headingTexts().at(to));
    const Outcome expected =
        isAllowed ? takenBlock(move(4, to)).thenRedrawn() : refusedBlock(move(4, to), kForbidden);
    QCOMPARE(bench.outcome().lines(), expected.lines());
}

void tst_RulesBlock::blockOutsideTheMaskIsRefused_data()
{
    addBothPicks();
}

void tst_RulesBlock::blockOutsideTheMaskIsRefused()
{
    QFETCH(int, size);
    auto& bench = m_bench.get();
    QList<FieldRow> fields{{.x = 7, .size = size, .blockMask = 0}};
    for (int block = 0; block < 10; ++block)
        fields.append(anchor(block, 1, 0));
    bench.open(fields);
    bench.pick(1);
    for (int to = 1; to < 10; ++to) {
        bench.choose(kBlockRow, headingTexts().at(to));
        QCOMPARE(bench.outcome().lines(), refusedBlock(move(0, to), kForbidden).lines());
        QCOMPARE(cellState(bench.window(), kBlockRow), QStringLiteral("Шапка чека|0|true"));
    }
}

void tst_RulesBlock::maskIsAskedBeforeTheLine()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 2, .blockMask = 0x1}, anchor(1, 1, 0)});
    bench.pick(1);
    bench.choose(kBlockRow, headingTexts().at(1));
    QCOMPARE(bench.outcome().lines(), refusedBlock(move(0, 1), kForbidden).lines());
}

void tst_RulesBlock::lineBeyondTheNewBlockIsRefused_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("size");
    QTest::newRow("next line, on the tape") << 4 << 4;
    QTest::newRow("next line, in the list") << 4 << 0;
    QTest::newRow("far line, on the tape") << 255 << 4;
    QTest::newRow("far line, in the list") << 255 << 0;
}

void tst_RulesBlock::lineBeyondTheNewBlockIsRefused()
{
    QFETCH(int, line);
    QFETCH(int, size);
    auto& bench = m_bench.get();
    bench.open({{.line = line, .size = size}, anchor(1, 3, 0), anchor(0, 1, 30)});
    bench.pick(1);
    bench.choose(kBlockRow, headingTexts().at(1));
    QCOMPARE(bench.outcome().lines(), refusedBlock(move(0, 1), kNoLineThere).lines());
}

void tst_RulesBlock::lastLineOfTheNewBlockIsEnough()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 255, .x = 7}, anchor(1, 255, 0)});
    bench.pick(1);
    bench.choose(kBlockRow, headingTexts().at(1));
    QCOMPARE(bench.outcome().lines(), takenBlock(move(0, 1)).thenRedrawn().lines());
}

void tst_RulesBlock::lineIsAskedBeforeTheCell()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 4, .x = 99}, anchor(1, 3, 99)});
    // Taken all the same, though the tape has no such line yet.
    bench.probe().bd().getPoleByKey(2).Line = 4;
    bench.pick(1);
    bench.choose(kBlockRow, headingTexts().at(1));
    QCOMPARE(bench.outcome().lines(), refusedBlock(move(0, 1), kNoLineThere).lines());
}

void tst_RulesBlock::onlyAFieldThatStartsOnTheCellTakesIt_data()
{
    QTest::addColumn<FieldRow>("other");
    QTest::newRow("a wide field over the cell") << FieldRow{.block = 1, .x = 4, .size = 255};
    QTest::newRow("a field on another line") << FieldRow{.block = 1, .line = 2, .x = 5};
    QTest::newRow("a field in another block") << FieldRow{.block = 2, .x = 5};
    QTest::newRow("a field of no size on the cell") << FieldRow{.block = 1, .x = 5, .size = 0};
}

void tst_RulesBlock::onlyAFieldThatStartsOnTheCellTakesIt()
{
    QFETCH(FieldRow, other);
    auto& bench = m_bench.get();
    bench.open({{.x = 5}, anchor(1, 1, 0), other});
    bench.pick(1);
    bench.choose(kBlockRow, headingTexts().at(1));
    QCOMPARE(bench.outcome().lines(), takenBlock(move(0, 1)).thenRedrawn().lines());
}

void tst_RulesBlock::takenCellPushesTheFieldToTheRight_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<QList<int>>("taken");
    QTest::addColumn<int>("found");
    QTest::newRow("next cell is free") << 5 << QList{5} << 6;
    QTest::newRow("next two cells are taken") << 5 << QList{5, 6, 7} << 8;
    QTest::newRow("a taken cell further on does not matter") << 5 << QList{5, 7} << 6;
    QTest::newRow("from the left edge") << 0 << QList{0, 1} << 2;
    QTest::newRow("last cell of the search") << 97 << QList{97, 98} << 99;
    QTest::newRow("last cell of the search is the next one") << 98 << QList{98} << 99;
    QTest::newRow("from 100 to the next cell") << 100 << QList{100} << 101;
    QTest::newRow("from 100 to the next cell without a test of it") << 100 << QList{100, 101} << 101;
    QTest::newRow("from 150 to the next cell without a test of it") << 150 << QList{150, 151} << 151;
    QTest::newRow("from 254 to the last position of all") << 254 << QList{254} << 255;
}

void tst_RulesBlock::takenCellPushesTheFieldToTheRight()
{
    QFETCH(int, x);
    QFETCH(QList<int>, taken);
    QFETCH(int, found);
    auto& bench = m_bench.get();
    QList<FieldRow> fields{{.x = x, .size = 4}};
    for (const int cell : std::as_const(taken))
        fields.append(anchor(1, 1, cell));
    bench.open(fields);
    bench.pick(1);

    bench.choose(kBlockRow, headingTexts().at(1));

    Outcome expected = takenBlock(move(0, 1)).thenRedrawn();
    expected.changes.append(QStringLiteral("1.X %1>%2").arg(x).arg(found));
    expected.warnings = QStringList{pushedTo(found)};
    QCOMPARE(bench.outcome().lines(), expected.lines());
    QCOMPARE(bench.appliedOnCall(), 1);
    QCOMPARE(poleItem(bench.window(), 1)->x(), 12.0 * found + 1);
}

void tst_RulesBlock::pushedFieldOfTheListTakesItsPlaceToo()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 5, .size = 0}, anchor(1, 1, 5)});
    bench.pick(1);
    bench.choose(kBlockRow, headingTexts().at(1));
    Outcome expected = takenBlock(move(0, 1)).thenRebuilt();
    expected.changes.append(QStringLiteral("1.X 5>6"));
    expected.warnings = QStringList{pushedTo(6)};
    QCOMPARE(bench.outcome().lines(), expected.lines());
}

void tst_RulesBlock::withoutAFreeCellToTheRightTheBlockIsRefused_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("lastTaken");
    QTest::addColumn<int>("size");
    QTest::newRow("all cells from 97 taken, those to the left free") << 97 << 99 << 4;
    QTest::newRow("98 and 99 taken") << 98 << 99 << 4;
    QTest::newRow("98 and 99 taken, in the list") << 98 << 99 << 0;
    QTest::newRow("99 taken and 100 free") << 99 << 99 << 4;
    QTest::newRow("99 taken and 100 free, in the list") << 99 << 99 << 0;
    QTest::newRow("no position after 255") << 255 << 255 << 4;
}

void tst_RulesBlock::withoutAFreeCellToTheRightTheBlockIsRefused()
{
    QFETCH(int, x);
    QFETCH(int, lastTaken);
    QFETCH(int, size);
    auto& bench = m_bench.get();
    QList<FieldRow> fields{{.x = x, .size = size}};
    for (int cell = x; cell <= lastTaken; ++cell)
        fields.append(anchor(1, 1, cell));
    bench.open(fields);
    bench.pick(1);
    bench.choose(kBlockRow, headingTexts().at(1));
    QCOMPARE(bench.outcome().lines(), refusedBlock(move(0, 1), kTaken).lines());
    QCOMPARE(cellState(bench.window(), 2), QStringLiteral("%1|%1|false").arg(x));
}

void tst_RulesBlock::titleOutsideTheTableIsRefused()
{
    auto& bench = m_bench.get();
    bench.open({{.block = 1}, anchor(0, 1, 0)});
    bench.pick(1);
    // No editor offers such a text.
    valueCell(bench.window(), kBlockRow)->setText(QStringLiteral("Фискальный блок"));
    bench.settle();
    const QString own = headingTexts().at(1);
    QStringList log = blockLines(1, QStringLiteral("Фискальный блок"), 1, -1);
    const QString last = log.takeLast();
    log += blockLines(1, own, 1, 1) + QStringList{last};
    const QString cell = QStringLiteral("Регистрация|1|false");
    const Outcome refused{
        .changes = {}, .warnings = {kForbidden}, .cells = {cell, cell}, .log = log, .refills = 0};
    QCOMPARE(bench.outcome().lines(), refused.lines());
}

void tst_RulesBlock::refusedFieldCanBeMovedAtOnceElsewhere()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 5, .blockMask = 0x5}, anchor(1, 1, 0), anchor(2, 1, 0)});
    bench.pick(1);
    bench.choose(kBlockRow, headingTexts().at(1));
    QCOMPARE(bench.outcome().warnings, QStringList{kForbidden});
    bench.choose(kBlockRow, headingTexts().at(2));
    QCOMPARE(bench.outcome().changes, QStringList{QStringLiteral("1.Block 0>2")});
    QCOMPARE(bench.outcome().warnings, QStringList());
}

void tst_RulesBlock::redrawUnderARefusalLeavesTheRecordAlone()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 5, .blockMask = 0x1}, anchor(1, 1, 0)});
    bench.pick(1);
    bench.robot().whileBoxIsOpen([&] { bench.probe().requestRedraw(); },
                                 [&] { return propertyTable(bench.window())->rowCount() == 0; });
    chooseText(bench.window(), kBlockRow, headingTexts().at(1));
    bench.settle();
    QCOMPARE(bench.outcome().changes, QStringList());
    QCOMPARE(bench.outcome().warnings, QStringList{kForbidden});
    QCOMPARE(propertyTable(bench.window())->rowCount(), 0);
    QCOMPARE(bench.probe().curItem(), nullptr);
}

void tst_RulesBlock::redrawUnderTheReportKeepsTheMove()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 5}, anchor(0, 1, 0), anchor(1, 1, 5)});
    bench.pick(1);
    bench.robot().whileBoxIsOpen([&] { bench.probe().requestRedraw(); },
                                 [&] { return propertyTable(bench.window())->rowCount() == 0; });
    chooseText(bench.window(), kBlockRow, headingTexts().at(1));
    bench.settle();
    QCOMPARE(bench.outcome().changes,
             (QStringList{QStringLiteral("1.Block 0>1"), QStringLiteral("1.X 5>6")}));
    QCOMPARE(bench.outcome().warnings, QStringList{pushedTo(6)});
    QCOMPARE(bench.outcome().log.count(QStringLiteral("Scene cleared!")), 2);
    QCOMPARE(poleItem(bench.window(), 1)->pos(), QPointF(6 * 12 + 1, 21 + 20 + 21 + 1));
}

QTEST_MAIN(tst_RulesBlock)
#include "tst_rules_block.moc"
