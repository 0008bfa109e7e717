#include "editing/fieldlistlook.h"
#include "editing/rulesbench.h"
#include "editing/tablerows.h"
#include "support/tablesteps.h"

#include <QGraphicsItem>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace {

const QString kCleared = QStringLiteral("Scene cleared!");
const QString kNoSelection = QStringLiteral("new selItem type=0 idx=-1 ...");

FieldRow other()
{
    return {.x = 30, .size = 3, .desc = QStringLiteral("Другое: поле")};
}

FieldRow unplaced(bool need)
{
    return {.x = 40, .size = 0, .desc = QStringLiteral("Запас: поле"), .need = need};
}

QPushButton* deleteButton(RulesBench& bench)
{
    return named<QPushButton>(bench.window(), "btnPoleDel");
}

} // namespace

class tst_RulesDelete : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_bench.dropIfFailed(); }

    void buttonTakesTheFieldFromTheTape();
    void secondClickDoesNothing();
    void sizePutsADeletedFieldBackIntoItsCell();
    void mandatoryFieldHasNoButton();
    void mandatoryFieldIsRefusedInTheLogAlone();
    void fieldOfTheListHasAButtonByItsSize_data();
    void fieldOfTheListHasAButtonByItsSize();
    void fieldOfTheListIsNotDeleted();
    void headingsAndLinesHaveNoButton();

private:
    SharedBench m_bench;
};

void tst_RulesDelete::buttonTakesTheFieldFromTheTape()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7, .size = 4}, other(), unplaced(false)});
    bench.pick(1);
    QVERIFY(deleteButton(bench)->isEnabled());

    clickButton(bench.window(), "btnPoleDel");

    // The tape is drawn anew at once, as the button lies beside it.
    QCOMPARE(poleItem(bench.window(), 1), nullptr);
    QCOMPARE(bench.probe().curItem(), nullptr);
    bench.settle();
    const Outcome deleted{.changes = {QStringLiteral("1.Size 4>0")},
                          .warnings = {},
                          .cells = {},
                          .log = {kCleared, kNoSelection},
                          .refills = 1};
    QCOMPARE(bench.outcome().lines(), deleted.lines());
    QCOMPARE(listTexts(bench.window()), (QStringList{FieldRow().desc, unplaced(false).desc}));
    QCOMPARE(listTitle(bench.window()), QStringLiteral("Фильтр полей [2 из 3]"));
    QCOMPARE(propertyTable(bench.window())->rowCount(), 0);
    QCOMPARE(shownDesc(bench.window()), QStringLiteral("Поле не выбрано"));
    QVERIFY(!deleteButton(bench)->isEnabled());
}

void tst_RulesDelete::secondClickDoesNothing()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7, .size = 4}, other()});
    bench.pick(1);
    clickButton(bench.window(), "btnPoleDel");
    // Still enabled: the loop has not yet seen that nothing is selected.
    QVERIFY(deleteButton(bench)->isEnabled());
    bench.watch();
    clickButton(bench.window(), "btnPoleDel");
    QCOMPARE(bench.outcome().lines(), Outcome().lines());
    bench.settle();
    QCOMPARE(bench.outcome().changes, QStringList());
    QCOMPARE(bench.outcome().log, QStringList{kNoSelection});
}

void tst_RulesDelete::sizePutsADeletedFieldBackIntoItsCell()
{
    auto& bench = m_bench.get();
    bench.open({{.font = 3, .line = 2, .x = 7, .size = 4, .brightness = 9}, other()});
    bench.pick(1);
    const auto before = bench.probe().bd().items;
    const QPointF place = poleItem(bench.window(), 1)->pos();
    clickButton(bench.window(), "btnPoleDel");
    bench.settle();
    bench.pick(1);
    bench.type(kSizeRow, QStringLiteral("4"));
    QCOMPARE(poleItem(bench.window(), 1)->pos(), place);
    for (const auto param : BD_T20Items::T20Item::kDeviceParams)
        QCOMPARE(bench.record(1).*param, before.value(1).*param);
}

void tst_RulesDelete::mandatoryFieldHasNoButton()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7, .size = 4, .need = true}, other()});
    bench.pick(1);
    QVERIFY(!deleteButton(bench)->isEnabled());
    clickButton(bench.window(), "btnPoleDel");
    bench.settle();
    QCOMPARE(bench.outcome().lines(), Outcome().lines());
}

void tst_RulesDelete::mandatoryFieldIsRefusedInTheLogAlone()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7, .size = 4}, other()});
    bench.pick(1);
    // The button has been enabled for a field that turns out to be mandatory.
    bench.probe().bd().getPoleByKey(1).FA_NEED = true;
    bench.watch();
    QGraphicsItem* const item = bench.probe().curItem();
    clickButton(bench.window(), "btnPoleDel");
    bench.settle();
    const Outcome refused{
        .changes = {}, .warnings = {}, .cells = {}, .log = {QStringLiteral("Нельзя удалять!")}, .refills = 0};
    QCOMPARE(bench.outcome().lines(), refused.lines());
    QCOMPARE(bench.probe().curItem(), item);
    QCOMPARE(propertyTable(bench.window())->rowCount(), 12);
}

void tst_RulesDelete::fieldOfTheListHasAButtonByItsSize_data()
{
    QTest::addColumn<bool>("need");
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("isEnabled");
    QTest::newRow("of no size") << false << 0 << false;
    QTest::newRow("of a size that places nothing") << false << -1 << true;
    QTest::newRow("mandatory of no size") << true << 0 << false;
    QTest::newRow("mandatory of a size that places nothing") << true << -1 << false;
}

void tst_RulesDelete::fieldOfTheListHasAButtonByItsSize()
{
    QFETCH(bool, need);
    QFETCH(int, size);
    QFETCH(bool, isEnabled);
    auto& bench = m_bench.get();
    bench.open({other(), unplaced(need)});
    // No file gives a negative size.
    bench.probe().bd().getPoleByKey(2).Size = size;
    bench.pick(2);
    bench.settle();
    QCOMPARE(deleteButton(bench)->isEnabled(), isEnabled);
}

void tst_RulesDelete::fieldOfTheListIsNotDeleted()
{
    auto& bench = m_bench.get();
    bench.open({other(), unplaced(false)});
    bench.probe().bd().getPoleByKey(2).Size = -1;
    bench.pick(2);
    QVERIFY(deleteButton(bench)->isEnabled());
    clickButton(bench.window(), "btnPoleDel");
    bench.settle();
    QCOMPARE(bench.outcome().lines(), Outcome().lines());
    QCOMPARE(bench.probe().curKey(), 2);
    QCOMPARE(propertyTable(bench.window())->rowCount(), 12);
}

void tst_RulesDelete::headingsAndLinesHaveNoButton()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 2}, other()});
    for (QGraphicsItem* const item : {headerItem(bench.window(), 0), lineItem(bench.window(), 0, 1)}) {
        pickItem(bench.window(), item);
        QTRY_VERIFY(!deleteButton(bench)->isEnabled());
        bench.watch();
        clickButton(bench.window(), "btnPoleDel");
        bench.settle();
        QCOMPARE(bench.outcome().lines(), Outcome().lines());
    }
}

QTEST_MAIN(tst_RulesDelete)
#include "tst_rules_delete.moc"
