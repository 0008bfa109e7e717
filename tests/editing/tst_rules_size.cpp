#include "editing/fieldlistlook.h"
#include "editing/refusals.h"
#include "editing/rulesbench.h"
#include "editing/tablerows.h"
#include "support/tablesteps.h"

#include <QGraphicsItem>
#include <QTest>

namespace {

Edit sizeEdit(int from, int to)
{
    return Edit::number(1, kSizeRow, from, to, QStringLiteral("1.Size %1>%2").arg(from).arg(to));
}

} // namespace

class tst_RulesSize : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_bench.dropIfFailed(); }

    void sizeOnTheTapeIsTaken_data();
    void sizeOnTheTapeIsTaken();
    void sizeOfAnUnplacedFieldPlacesIt();
    void sizeOfAnUnplacedFieldLeavesTheLineWhenAllAreListed();
    void sizeOfNothingTakesTheFieldFromTheTape();
    void sizeOnALineBeyondTheBlockIsRefused();
    void firstSizeOnATakenCellIsRefused();
    void laterSizeIsTakenWhateverStandsOnTheCell();
    void placedFieldIsEditedOnFromTheList();

private:
    SharedBench m_bench;
};

void tst_RulesSize::sizeOnTheTapeIsTaken_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("to");
    QTest::newRow("smaller") << 7 << 1;
    QTest::newRow("larger") << 7 << 41;
    QTest::newRow("wider than the tape") << 7 << 255;
    QTest::newRow("beyond the tape") << 255 << 255;
}

void tst_RulesSize::sizeOnTheTapeIsTaken()
{
    QFETCH(int, x);
    QFETCH(int, to);
    auto& bench = m_bench.get();
    bench.open({{.x = x, .size = 4}, unplaced()});
    bench.pick(1);
    bench.type(kSizeRow, QString::number(to));
    Outcome expected = takenByValue(sizeEdit(4, to)).thenRedrawn();
    expected.refills = 1;
    QCOMPARE(bench.outcome().lines(), expected.lines());
    QCOMPARE(bench.appliedOnCall(), 2);
    QCOMPARE(listTitle(bench.window()), QStringLiteral("Фильтр полей [1 из 2]"));
    QCOMPARE(poleItem(bench.window(), 1)->boundingRect().width(), std::min(to * 12, 633));
}

void tst_RulesSize::sizeOfAnUnplacedFieldPlacesIt()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 2, .x = 7, .size = 0}, other(2, 0), unplaced()});
    QCOMPARE(listTitle(bench.window()), QStringLiteral("Фильтр полей [2 из 3]"));
    QCOMPARE(poleItem(bench.window(), 1), nullptr);
    bench.pick(1);

    bench.type(kSizeRow, QStringLiteral("9"));

    Outcome expected = takenByValue(sizeEdit(0, 9)).thenRebuilt();
    expected.refills = 1;
    QCOMPARE(bench.outcome().lines(), expected.lines());
    QCOMPARE(listTexts(bench.window()), QStringList{unplaced().desc});
    QCOMPARE(listTitle(bench.window()), QStringLiteral("Фильтр полей [1 из 3]"));
    QCOMPARE(poleItem(bench.window(), 1)->pos(), QPointF(7 * 12 + 1, 21 + 15 + 1));
    QCOMPARE(bench.probe().curKey(), 1);
    QCOMPARE(cellState(bench.window(), kSizeRow), QStringLiteral("9|9|true"));
}

void tst_RulesSize::sizeOfAnUnplacedFieldLeavesTheLineWhenAllAreListed()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7, .size = 0}, other(1, 0)});
    clickButton(bench.window(), "btnFiltrShowAll");
    QCOMPARE(listTitle(bench.window()), QStringLiteral("Фильтр полей [2 из 2]"));
    bench.pick(1);
    bench.type(kSizeRow, QStringLiteral("9"));
    QCOMPARE(bench.outcome().refills, 1);
    QCOMPARE(listTexts(bench.window()), (QStringList{FieldRow().desc, other(1, 0).desc}));
    QCOMPARE(listTitle(bench.window()), QStringLiteral("Фильтр полей [2 из 2]"));
    clickButton(bench.window(), "btnFiltrShowAll");
}

void tst_RulesSize::sizeOfNothingTakesTheFieldFromTheTape()
{
    auto& bench = m_bench.get();
    // Mandatory fields too: only the button asks for that.
    bench.open({{.x = 7, .size = 4, .need = true}, other(1, 0), unplaced()});
    bench.pick(1);
    bench.type(kSizeRow, QStringLiteral("0"));
    Outcome expected = takenByValue(sizeEdit(4, 0)).thenRedrawn();
    expected.refills = 1;
    QCOMPARE(bench.outcome().lines(), expected.lines());
    QCOMPARE(poleItem(bench.window(), 1), nullptr);
    QCOMPARE(listTexts(bench.window()), (QStringList{FieldRow().desc, unplaced().desc}));
    QCOMPARE(listTitle(bench.window()), QStringLiteral("Фильтр полей [2 из 3]"));
}

void tst_RulesSize::sizeOnALineBeyondTheBlockIsRefused()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 3, .size = 0}, other(2, 0)});
    bench.pick(1);
    bench.type(kSizeRow, QStringLiteral("9"));
    QCOMPARE(bench.outcome().lines(), refusedByValue(sizeEdit(0, 9), kNoLine).lines());
    QCOMPARE(listTitle(bench.window()), QStringLiteral("Фильтр полей [1 из 2]"));
    QCOMPARE(cellState(bench.window(), kSizeRow), QStringLiteral("0|0|true"));
}

void tst_RulesSize::firstSizeOnATakenCellIsRefused()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7, .size = 0}, other(1, 7)});
    bench.pick(1);
    bench.type(kSizeRow, QStringLiteral("9"));
    QCOMPARE(bench.outcome().lines(), refusedByValue(sizeEdit(0, 9), kTaken).lines());
    // A cell beside the taken one is free, though it lies inside that field.
    bench.type(kPositionRow, QStringLiteral("8"));
    bench.type(kSizeRow, QStringLiteral("9"));
    QCOMPARE(bench.outcome().changes, QStringList{QStringLiteral("1.Size 0>9")});
    QCOMPARE(bench.outcome().warnings, QStringList());
}

void tst_RulesSize::laterSizeIsTakenWhateverStandsOnTheCell()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7, .size = 20}, other(1, 7), unplaced()});
    bench.pick(1);
    bench.type(kSizeRow, QStringLiteral("9"));
    Outcome expected = takenByValue(sizeEdit(20, 9)).thenRedrawn();
    expected.refills = 1;
    QCOMPARE(bench.outcome().lines(), expected.lines());
}

void tst_RulesSize::placedFieldIsEditedOnFromTheList()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7, .size = 0}, other(1, 0), unplaced()});
    bench.pick(1);
    bench.type(kSizeRow, QStringLiteral("4"));
    bench.type(kPositionRow, QStringLiteral("12"));
    QCOMPARE(bench.outcome().lines(), takenByValue(positionEdit(7, 12)).thenRebuilt().lines());
    QCOMPARE(poleItem(bench.window(), 1)->x(), 12.0 * 12 + 1);
    bench.type(kSizeRow, QStringLiteral("0"));
    QCOMPARE(bench.outcome().changes, QStringList{QStringLiteral("1.Size 4>0")});
    QCOMPARE(poleItem(bench.window(), 1), nullptr);
}

QTEST_MAIN(tst_RulesSize)
#include "tst_rules_size.moc"
