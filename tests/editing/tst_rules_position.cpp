#include "editing/refusals.h"
#include "editing/rulesbench.h"
#include "editing/tablerows.h"
#include "support/tablesteps.h"

#include <QGraphicsProxyWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace {

Edit lineEdit(int from, int to)
{
    return Edit::number(1, kLineRow, from, to, QStringLiteral("1.Line %1>%2").arg(from).arg(to));
}

} // namespace

class tst_RulesPosition : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_bench.dropIfFailed(); }

    void fieldTakesTheTypedLine_data();
    void fieldTakesTheTypedLine();
    void fieldStandsOnItsNewLineAfterTheRedraw();
    void lineBeyondTheBlockIsRefused_data();
    void lineBeyondTheBlockIsRefused();
    void lineAddedByHandIsALineOfTheBlock();
    void lineWithTheCellTakenIsRefused_data();
    void lineWithTheCellTakenIsRefused();
    void lineIsAskedBeforeItsCell();
    void lineThatTheEditorCannotShowIsTypedOver();
    void positionOnTheTapeMovesTheItemInPlace_data();
    void positionOnTheTapeMovesTheItemInPlace();
    void positionInTheListAsksForARedraw();
    void positionFollowsPositionWithoutANewPick();
    void positionOfATakenCellIsRefused_data();
    void positionOfATakenCellIsRefused();
    void positionInsideAWideFieldIsFree();
    void positionThatTheEditorCannotShowIsTypedOver_data();
    void positionThatTheEditorCannotShowIsTypedOver();
    void twoFieldsOnOneCellPartOnlyToAFreeOne();

private:
    SharedBench m_bench;
};

void tst_RulesPosition::fieldTakesTheTypedLine_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("size");
    QTest::newRow("up, on the tape") << 3 << 1 << 4;
    QTest::newRow("down, on the tape") << 1 << 2 << 4;
    QTest::newRow("last line of the editor, on the tape") << 1 << 99 << 4;
    QTest::newRow("up, in the list") << 3 << 1 << 0;
    QTest::newRow("last line of the editor, in the list") << 1 << 99 << 0;
}

void tst_RulesPosition::fieldTakesTheTypedLine()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(int, size);
    auto& bench = m_bench.get();
    bench.open({{.line = from, .x = 7, .size = size}, other(from, 0), other(99, 0), unplaced()});
    bench.pick(1);
    bench.type(kLineRow, QString::number(to));
    QCOMPARE(bench.outcome().lines(), takenByValue(lineEdit(from, to)).thenRedrawn(size == 0).lines());
    QCOMPARE(bench.appliedOnCall(), 2);
}

void tst_RulesPosition::fieldStandsOnItsNewLineAfterTheRedraw()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 1, .x = 7}, other(3, 0)});
    bench.pick(1);
    bench.type(kLineRow, QStringLiteral("3"));
    QCOMPARE(poleItem(bench.window(), 1)->pos(), QPointF(7 * 12 + 1, 21 + 15 + 15 + 1));
    QCOMPARE(propertyTable(bench.window())->rowCount(), 0);
}

void tst_RulesPosition::lineBeyondTheBlockIsRefused_data()
{
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("size");
    QTest::newRow("next line, on the tape") << 4 << 4;
    QTest::newRow("next line, in the list") << 4 << 0;
    QTest::newRow("last line of the editor, on the tape") << 99 << 4;
}

void tst_RulesPosition::lineBeyondTheBlockIsRefused()
{
    QFETCH(int, to);
    QFETCH(int, size);
    auto& bench = m_bench.get();
    FieldRow elsewhere = other(99, 0);
    elsewhere.block = 1;
    bench.open({{.line = 2, .x = 7, .size = size}, other(3, 0), elsewhere, unplaced()});
    bench.pick(1);
    bench.type(kLineRow, QString::number(to));
    QCOMPARE(bench.outcome().lines(), refusedByValue(lineEdit(2, to), kNoLine).lines());
}

void tst_RulesPosition::lineAddedByHandIsALineOfTheBlock()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 1, .x = 7}, other(2, 0)});
    // The new line opens above line 2, whose field moves down to line 3.
    pickItem(bench.window(), lineItem(bench.window(), 0, 2));
    const auto buttons = bench.probe().scene().items();
    for (QGraphicsItem* const item : buttons) {
        auto* const proxy = qgraphicsitem_cast<QGraphicsProxyWidget*>(item);
        if (proxy != nullptr && qobject_cast<QPushButton*>(proxy->widget())->text() == u"+")
            clickItem(bench.window(), proxy);
    }
    bench.settle();
    QCOMPARE(bench.record(2).Line, 3);
    bench.pick(1);
    bench.type(kLineRow, QStringLiteral("2"));
    QCOMPARE(bench.outcome().lines(), takenByValue(lineEdit(1, 2)).thenRedrawn().lines());
    bench.pick(1);
    bench.type(kLineRow, QStringLiteral("4"));
    QCOMPARE(bench.outcome().lines(), refusedByValue(lineEdit(2, 4), kNoLine).lines());
}

void tst_RulesPosition::lineWithTheCellTakenIsRefused_data()
{
    addBothPicks();
}

void tst_RulesPosition::lineWithTheCellTakenIsRefused()
{
    QFETCH(int, size);
    auto& bench = m_bench.get();
    bench.open({{.line = 2, .x = 7, .size = size}, other(1, 7), unplaced()});
    bench.pick(1);
    bench.type(kLineRow, QStringLiteral("1"));
    QCOMPARE(bench.outcome().lines(), refusedByValue(lineEdit(2, 1), kTaken).lines());
}

void tst_RulesPosition::lineIsAskedBeforeItsCell()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 1, .x = 7}, other(2, 7)});
    // Taken all the same, though the tape has no such line yet.
    bench.probe().bd().getPoleByKey(2).Line = 3;
    bench.pick(1);
    bench.type(kLineRow, QStringLiteral("3"));
    QCOMPARE(bench.outcome().lines(), refusedByValue(lineEdit(1, 3), kNoLine).lines());
}

void tst_RulesPosition::lineThatTheEditorCannotShowIsTypedOver()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 200, .x = 7}, unplaced()});
    bench.pick(1);
    // The editor opens on 99, which is the number that the user wants.
    bench.type(kLineRow, QStringLiteral("99"));
    QCOMPARE(bench.outcome().lines(), takenByValue(lineEdit(200, 99)).thenRedrawn().lines());
}

void tst_RulesPosition::positionOnTheTapeMovesTheItemInPlace_data()
{
    QTest::addColumn<FieldRow>("field");
    QTest::addColumn<int>("to");
    QTest::addColumn<QPointF>("place");
    // Lines 1 and 2 are empty, 15 high each.
    const FieldRow plain{.line = 3, .x = 2};
    QTest::newRow("right") << plain << 30 << QPointF(361, 21 + 30 + 1);
    QTest::newRow("to the edge") << plain << 0 << QPointF(1, 21 + 30 + 1);
    QTest::newRow("last of the editor") << plain << 99 << QPointF(1189, 21 + 30 + 1);
    QTest::newRow("narrow font") << FieldRow{.font = 7, .line = 3, .x = 2} << 30 << QPointF(271, 21 + 30 + 1);
    QTest::newRow("double width") << FieldRow{.x2x = 1, .line = 3, .x = 2} << 30 << QPointF(721, 21 + 30 + 1);
    QTest::newRow("first position") << FieldRow{.x = 0} << 1 << QPointF(13, 21 + 1);
}

void tst_RulesPosition::positionOnTheTapeMovesTheItemInPlace()
{
    QFETCH(FieldRow, field);
    QFETCH(int, to);
    QFETCH(QPointF, place);
    auto& bench = m_bench.get();
    bench.open({field, unplaced()});
    bench.pick(1);
    QGraphicsItem* const item = poleItem(bench.window(), 1);

    bench.type(kPositionRow, QString::number(to));

    QCOMPARE(bench.outcome().lines(), takenByValue(positionEdit(field.x, to)).lines());
    QCOMPARE(bench.appliedOnCall(), 2);
    QCOMPARE(item->pos(), place);
    QCOMPARE(bench.probe().curItem(), item);
    QVERIFY(item->isSelected());
    QCOMPARE(propertyTable(bench.window())->rowCount(), 12);
    QCOMPARE(cellState(bench.window(), kPositionRow), QStringLiteral("%1|%1|true").arg(to));
}

void tst_RulesPosition::positionInTheListAsksForARedraw()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7, .size = 0}, other(1, 0)});
    bench.pick(1);
    bench.type(kPositionRow, QStringLiteral("12"));
    QCOMPARE(bench.outcome().lines(), takenByValue(positionEdit(7, 12)).thenRebuilt().lines());
    // The tape had no selection to lose, so the table stays.
    QCOMPARE(cellState(bench.window(), kPositionRow), QStringLiteral("12|12|true"));
    QCOMPARE(bench.probe().curKey(), 1);
}

void tst_RulesPosition::positionFollowsPositionWithoutANewPick()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7}, other(1, 20), unplaced()});
    bench.pick(1);
    bench.type(kPositionRow, QStringLiteral("12"));
    bench.type(kPositionRow, QStringLiteral("9"));
    // The flag is set from the time before, so its write calls nobody.
    const Outcome again{.changes = {QStringLiteral("1.X 12>9")},
                        .warnings = {},
                        .cells = {QStringLiteral("9|12|true"), QStringLiteral("9|9|true")},
                        .log = callLines(1, kPositionRow, QStringLiteral("9"), 12, 12) +
                               callLines(1, kPositionRow, QStringLiteral("9"), 9, 9),
                        .refills = 0};
    QCOMPARE(bench.outcome().lines(), again.lines());
    QCOMPARE(poleItem(bench.window(), 1)->x(), 9.0 * 12 + 1);
    // Its old cells are free again, and that of the other field is not.
    bench.type(kPositionRow, QStringLiteral("7"));
    QCOMPARE(bench.outcome().changes, QStringList{QStringLiteral("1.X 9>7")});
    bench.type(kPositionRow, QStringLiteral("20"));
    QCOMPARE(bench.outcome().warnings, QStringList{kTaken});
    QCOMPARE(poleItem(bench.window(), 1)->x(), 7.0 * 12 + 1);
}

void tst_RulesPosition::positionOfATakenCellIsRefused_data()
{
    addBothPicks();
}

void tst_RulesPosition::positionOfATakenCellIsRefused()
{
    QFETCH(int, size);
    auto& bench = m_bench.get();
    bench.open({{.x = 7, .size = size}, other(1, 12), unplaced()});
    bench.pick(1);
    bench.type(kPositionRow, QStringLiteral("12"));
    QCOMPARE(bench.outcome().lines(), refusedByValue(positionEdit(7, 12), kTaken).lines());
    QCOMPARE(cellState(bench.window(), kPositionRow), QStringLiteral("7|7|true"));
    if (size > 0)
        QCOMPARE(poleItem(bench.window(), 1)->x(), 7.0 * 12 + 1);
}

void tst_RulesPosition::positionInsideAWideFieldIsFree()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 40}, other(1, 5, 30), other(2, 20), other(1, 20, 0)});
    bench.pick(1);
    bench.type(kPositionRow, QStringLiteral("20"));
    QCOMPARE(bench.outcome().lines(), takenByValue(positionEdit(40, 20)).lines());
}

void tst_RulesPosition::positionThatTheEditorCannotShowIsTypedOver_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("by a number") << 150 << 30;
    QTest::newRow("by the number that the editor opens on") << 150 << 99;
    QTest::newRow("from the last of all") << 255 << 0;
}

void tst_RulesPosition::positionThatTheEditorCannotShowIsTypedOver()
{
    QFETCH(int, from);
    QFETCH(int, to);
    auto& bench = m_bench.get();
    bench.open({{.x = from}, unplaced()});
    bench.pick(1);
    bench.type(kPositionRow, QString::number(to));
    QCOMPARE(bench.outcome().lines(), takenByValue(positionEdit(from, to)).lines());
}

void tst_RulesPosition::twoFieldsOnOneCellPartOnlyToAFreeOne()
{
    auto& bench = m_bench.get();
    // The file has two fields on one cell. The one below shows its right end.
    bench.open({{.x = 7, .size = 20}, other(1, 7), other(2, 7), unplaced()});
    bench.pick(1);
    bench.type(kLineRow, QStringLiteral("2"));
    QCOMPARE(bench.outcome().lines(), refusedByValue(lineEdit(1, 2), kTaken).lines());
    bench.type(kPositionRow, QStringLiteral("8"));
    QCOMPARE(bench.outcome().changes, QStringList{QStringLiteral("1.X 7>8")});
    // Back on it the program does not let it.
    bench.type(kPositionRow, QStringLiteral("7"));
    QCOMPARE(bench.outcome().changes, QStringList());
    QCOMPARE(bench.outcome().warnings, QStringList{kTaken});
}

QTEST_MAIN(tst_RulesPosition)
#include "tst_rules_position.moc"
