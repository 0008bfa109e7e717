#include "editing/fieldsteps.h"
#include "editing/refusals.h"
#include "editing/rulesbench.h"
#include "editing/tablerows.h"
#include "support/tablesteps.h"

#include <QComboBox>
#include <QGraphicsItem>
#include <QPointer>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

namespace {

const QString kOwn = QStringLiteral("Регистрация");
const QString kOther = QStringLiteral("Подвал чека");

/// In block 1 two fields and one of the list that has no room; in block 6 one on the position of field 1.
QList<FieldRow> fields()
{
    return {{.block = 1, .line = 1, .x = 3, .size = 4, .desc = QStringLiteral("Проба: первое")},
            {.block = 1, .line = 1, .x = 20, .size = 4, .desc = QStringLiteral("Проба: второе")},
            {.block = 6, .line = 1, .x = 3, .size = 4, .desc = QStringLiteral("Проба: третье")},
            {.block = 1, .line = 1, .x = 20, .size = 0, .desc = QStringLiteral("Проба: четвёртое")}};
}

Edit blockEdit()
{
    return {1, kBlockRow, kOwn, 1, kOther, 6, QStringLiteral("1.Block 1>6")};
}

/// The cell editors that are open.
int openEditors(MainWindow& window)
{
    int count = 0;
    const auto widgets = propertyTable(window)->viewport()->findChildren<QWidget*>();
    for (const QWidget* const widget : widgets)
        count += qobject_cast<const QSpinBox*>(widget) != nullptr ||
                         qobject_cast<const QComboBox*>(widget) != nullptr
                     ? 1
                     : 0;
    return count;
}

} // namespace

/// An editor that is left with Tab or with the key back, which would open the editor of the next cell.
class tst_RulesTab : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_bench.dropIfFailed(); }

    void refusedNumberByTab_data();
    void refusedNumberByTab();
    void refusedBlockByTab_data();
    void refusedBlockByTab();
    void reportOfAMovedFieldByTab_data();
    void reportOfAMovedFieldByTab();
    void takenNumberByTab();
    void tableThatEmptiesUnderTheBox_data();
    void tableThatEmptiesUnderTheBox();
    void tabAfterTabGoesOn();

private:
    /// Types or chooses `text` in the editor of `row` and presses `key`.
    void leave(int row, const QString& text, int key);
    void checkNoEditor();

    SharedBench m_bench;
};

void tst_RulesTab::init()
{
    m_bench.get().open(fields());
}

void tst_RulesTab::leave(int row, const QString& text, int key)
{
    auto& bench = m_bench.get();
    bench.watch();
    const auto editor = fillIn(bench.window(), row, text);
    QTest::keyClick(editor, static_cast<Qt::Key>(key));
    bench.settle();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(editor.isNull());
}

void tst_RulesTab::checkNoEditor()
{
    QCOMPARE(openEditors(m_bench.get().window()), 0);
}

namespace {

void addKeys()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Tab") << static_cast<int>(Qt::Key_Tab);
    QTest::newRow("Backtab") << static_cast<int>(Qt::Key_Backtab);
}

} // namespace

void tst_RulesTab::refusedNumberByTab_data()
{
    addKeys();
}

void tst_RulesTab::refusedNumberByTab()
{
    QFETCH(const int, key);
    auto& bench = m_bench.get();
    bench.pick(1);
    leave(kLineRow, QStringLiteral("50"), key);
    QCOMPARE(bench.outcome().lines(), refusedByValue(Edit::number(1, kLineRow, 1, 50), kNoLine).lines());
    checkNoEditor();

    leave(kPositionRow, QStringLiteral("20"), key);
    QCOMPARE(bench.outcome().lines(), refusedByValue(Edit::number(1, kPositionRow, 3, 20), kTaken).lines());
    checkNoEditor();

    bench.pick(4);
    leave(kSizeRow, QStringLiteral("5"), key);
    QCOMPARE(bench.outcome().lines(), refusedByValue(Edit::number(1, kSizeRow, 0, 5), kTaken).lines());
    QCOMPARE(cellState(bench.window(), kSizeRow), QStringLiteral("0|0|true"));
    checkNoEditor();
}

void tst_RulesTab::refusedBlockByTab_data()
{
    addKeys();
}

void tst_RulesTab::refusedBlockByTab()
{
    QFETCH(const int, key);
    auto& bench = m_bench.get();
    auto narrow = fields();
    narrow[0].blockMask = 0x2;
    bench.open(narrow);
    bench.pick(1);
    leave(kBlockRow, kOther, key);
    QCOMPARE(bench.outcome().lines(), refusedBlock(blockEdit(), kForbidden).lines());
    QCOMPARE(cellState(bench.window(), kBlockRow), QStringLiteral("Регистрация|1|true"));
    checkNoEditor();
}

void tst_RulesTab::reportOfAMovedFieldByTab_data()
{
    addKeys();
}

void tst_RulesTab::reportOfAMovedFieldByTab()
{
    QFETCH(const int, key);
    auto& bench = m_bench.get();
    bench.pick(1);
    leave(kBlockRow, kOther, key);
    Outcome expected = takenBlock(blockEdit()).thenRedrawn();
    expected.changes.append(QStringLiteral("1.X 3>4"));
    expected.warnings = {pushedTo(4)};
    QCOMPARE(bench.outcome().lines(), expected.lines());
    QCOMPARE(propertyTable(bench.window())->rowCount(), 0);
    checkNoEditor();
}

void tst_RulesTab::takenNumberByTab()
{
    auto& bench = m_bench.get();
    bench.pick(1);
    leave(kPositionRow, QStringLiteral("9"), Qt::Key_Tab);
    const auto edit = Edit::number(1, kPositionRow, 3, 9, QStringLiteral("1.X 3>9"));
    QCOMPARE(bench.outcome().lines(), takenByValue(edit).lines());
    checkNoEditor();
}

void tst_RulesTab::tableThatEmptiesUnderTheBox_data()
{
    addKeys();
}

void tst_RulesTab::tableThatEmptiesUnderTheBox()
{
    QFETCH(const int, key);
    auto& bench = m_bench.get();
    for (const int row : {kLineRow, kPositionRow}) {
        bench.pick(1);
        bench.robot().whileBoxIsOpen([&bench] { bench.probe().requestRedraw(); },
                                     [&bench] { return propertyTable(bench.window())->rowCount() == 0; });
        leave(row, row == kLineRow ? QStringLiteral("50") : QStringLiteral("20"), key);
        const Outcome outcome = bench.outcome();
        QCOMPARE(outcome.changes, QStringList());
        QCOMPARE(outcome.warnings, QStringList{row == kLineRow ? kNoLine : kTaken});
        QCOMPARE(propertyTable(bench.window())->rowCount(), 0);
        checkNoEditor();
    }
    // The table works on.
    bench.pick(1);
    bench.type(kSizeRow, QStringLiteral("7"));
    QCOMPARE(bench.outcome().changes, QStringList{QStringLiteral("1.Size 4>7")});
}

void tst_RulesTab::tabAfterTabGoesOn()
{
    auto& bench = m_bench.get();
    bench.pick(1);
    leave(kLineRow, QStringLiteral("50"), Qt::Key_Tab);
    QTableWidget* const table = propertyTable(bench.window());
    QCOMPARE(table->currentRow(), kPositionRow);
    QCOMPARE(table->currentColumn(), 0);
    // The next Tab comes to the value of that row, and its editor opens by itself.
    QTest::keyClick(table, Qt::Key_Tab);
    QCOMPARE(table->currentColumn(), 1);
    const QPointer<QSpinBox> editor(qobject_cast<QSpinBox*>(table->indexWidget(table->currentIndex())));
    QVERIFY(editor != nullptr);
    QCOMPARE(editor->value(), 3);
    bench.watch();
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("8"));
    QTest::keyClick(editor, Qt::Key_Tab);
    bench.settle();
    QCOMPARE(bench.outcome().changes, QStringList{QStringLiteral("1.X 3>8")});
    QCOMPARE(poleItem(bench.window(), 1)->x(), 12.0 * 8 + 1);
}

QTEST_MAIN(tst_RulesTab)
#include "tst_rules_tab.moc"
