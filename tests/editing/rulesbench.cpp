#include "editing/rulesbench.h"

#include "editing/fieldlistlook.h"
#include "editing/fieldsteps.h"
#include "editing/tablerows.h"
#include "support/namedparams.h"
#include "support/tablesteps.h"

#include <QListWidget>
#include <QTableWidget>
#include <QTest>

#include <utility>

namespace {

using T20Item = BD_T20Items::T20Item;

// The selection loop turns that fast here, and so many single shots of both timer loops are some turns of it.
constexpr int kTickMs = 10;
constexpr int kTurns = 4;

QStringList differences(int key, const T20Item& before, const T20Item& after)
{
    QStringList found;
    const auto compare = [&](const char* name, records::Param param) {
        if (before.*param != after.*param)
            found.append(
                QStringLiteral("%1.%2 %3>%4").arg(key).arg(name).arg(before.*param).arg(after.*param));
    };
    compare("Type", &T20Item::Type);
    for (const auto& [name, param] : records::kParams)
        compare(name, param);
    if (before.FA_NEED != after.FA_NEED || before.BL_MASK != after.BL_MASK || before.Desc != after.Desc ||
        before.DescView != after.DescView)
        found.append(QStringLiteral("%1.what no row shows").arg(key));
    return found;
}

QString seenAs(const DialogRobot::SeenBox& box)
{
    if (box.icon == QMessageBox::Warning && box.title.isEmpty() && !box.hasParent &&
        box.buttons == QMessageBox::Ok)
        return box.text;
    return QStringLiteral("no plain warning: [%1] %2").arg(box.title, box.text);
}

QString cell(const QString& text, int value, bool isEdited)
{
    return QStringLiteral("%1|%2|%3")
        .arg(text, QString::number(value), isEdited ? QStringLiteral("true") : QStringLiteral("false"));
}

QStringList differLine(const QString& text, int value)
{
    const int number = text.toInt();
    if (number == value)
        return {};
    return {QStringLiteral("int!=in2: %1 %2 %3")
                .arg(text, QString::number(number), QString::number(static_cast<unsigned int>(value)))};
}

QString changedLine(int mode, int row, const QString& text, int worked)
{
    return QStringLiteral("cellChngd : 1,%1 m1=65538 m2=%2 d=%3 di=%4")
        .arg(QString::number(row), QString::number(mode), text, QString::number(worked));
}

} // namespace

QStringList Outcome::lines() const
{
    QStringList all;
    for (const auto& change : changes)
        all.append(QStringLiteral("record: ") + change);
    for (const auto& warning : warnings)
        all.append(QStringLiteral("box: ") + warning);
    for (const auto& state : cells)
        all.append(QStringLiteral("cell: ") + state);
    for (const auto& line : log)
        all.append(QStringLiteral("log: ") + line);
    all.append(QStringLiteral("list filled: %1").arg(refills));
    return all;
}

Outcome Outcome::thenRedrawn() const
{
    Outcome after = thenRebuilt();
    after.log.append(QStringLiteral("new selItem type=0 idx=-1 ..."));
    return after;
}

Outcome Outcome::thenRebuilt() const
{
    Outcome after = *this;
    after.log.append(QStringLiteral("Scene cleared!"));
    return after;
}

Edit Edit::number(int mode, int row, int from, int to, const QString& change)
{
    return {mode, row, QString::number(from), from, QString::number(to), to, change};
}

Edit positionEdit(int from, int to)
{
    return Edit::number(1, kPositionRow, from, to, QStringLiteral("1.X %1>%2").arg(from).arg(to));
}

FieldRow other(int line, int x, int size)
{
    return {.line = line, .x = x, .size = size, .desc = QStringLiteral("Другое: %1 %2").arg(line).arg(x)};
}

FieldRow unplaced()
{
    return {.block = 9, .size = 0, .desc = QStringLiteral("Запас: поле")};
}

void addBothPicks()
{
    QTest::addColumn<int>("size");
    QTest::newRow("picked on the tape") << 4;
    QTest::newRow("picked in the list") << 0;
}

QStringList callLines(int mode, int row, const QString& text, int value, int worked)
{
    return differLine(text, value) + QStringList{changedLine(mode, row, text, worked)};
}

QStringList blockLines(int from, const QString& text, int value, int to)
{
    QStringList lines = differLine(text, value);
    lines.append(QStringLiteral("dbg: %1 %2 %3")
                     .arg(QString::number(from), text, QString::number(static_cast<unsigned int>(value))));
    if (from != to)
        lines.append(QStringLiteral("dbg: %1 %2 %3").arg(QString::number(from), text, QString::number(to)));
    lines.append(changedLine(1, 0, text, to));
    return lines;
}

Outcome takenByValue(const Edit& e)
{
    return {.changes = {e.change},
            .warnings = {},
            .cells = {cell(e.newText, e.oldValue, false), cell(e.newText, e.newValue, false),
                      cell(e.newText, e.newValue, true)},
            .log = callLines(e.mode, e.row, e.newText, e.oldValue, e.oldValue) +
                   callLines(e.mode, e.row, e.newText, e.newValue, e.newValue) +
                   callLines(e.mode, e.row, e.newText, e.newValue, e.newValue),
            .refills = 0};
}

Outcome takenByText(const Edit& e, int number)
{
    Outcome outcome{.changes = {e.change},
                    .warnings = {},
                    .cells = {cell(e.newText, e.oldValue, false)},
                    .log = callLines(e.mode, e.row, e.newText, e.oldValue, number),
                    .refills = 0};
    // A write that changes nothing calls nobody.
    if (e.newValue != e.oldValue) {
        outcome.cells.append(cell(e.newText, e.newValue, false));
        outcome.log += callLines(e.mode, e.row, e.newText, e.newValue, number);
    }
    outcome.cells.append(cell(e.newText, e.newValue, true));
    outcome.log += callLines(e.mode, e.row, e.newText, e.newValue, number);
    return outcome;
}

Outcome takenBlock(const Edit& e)
{
    Outcome outcome = takenByText(e, e.newValue);
    outcome.log = blockLines(e.oldValue, e.newText, e.oldValue, e.newValue) +
                  blockLines(e.newValue, e.newText, e.newValue, e.newValue) +
                  blockLines(e.newValue, e.newText, e.newValue, e.newValue);
    return outcome;
}

Outcome refusedByValue(const Edit& e, const QString& warning)
{
    const QString old = cell(e.oldText, e.oldValue, false);
    return {.changes = {},
            .warnings = {warning},
            // The second call puts the old cell back, which is a call of its own inside it.
            .cells = {cell(e.newText, e.oldValue, false), old, old, cell(e.oldText, e.oldValue, true)},
            .log = callLines(e.mode, e.row, e.newText, e.oldValue, e.oldValue) +
                   differLine(e.newText, e.newValue) +
                   callLines(e.mode, e.row, e.oldText, e.oldValue, e.oldValue) +
                   QStringList{changedLine(e.mode, e.row, e.newText, e.newValue)} +
                   callLines(e.mode, e.row, e.oldText, e.oldValue, e.oldValue),
            .refills = 0};
}

Outcome refusedBlock(const Edit& e, const QString& warning)
{
    const QString old = cell(e.oldText, e.oldValue, false);
    QStringList outer = blockLines(e.oldValue, e.newText, e.oldValue, e.newValue);
    const QString last = outer.takeLast();
    return {
        .changes = {},
        .warnings = {warning},
        // The first call puts the old cell back; of the other writes only the flag changes something there.
        .cells = {old, old, cell(e.oldText, e.oldValue, true)},
        .log = outer + blockLines(e.oldValue, e.oldText, e.oldValue, e.oldValue) + QStringList{last} +
               blockLines(e.oldValue, e.oldText, e.oldValue, e.oldValue),
        .refills = 0};
}

RulesBench::RulesBench()
    : m_probe(m_window)
{
    showAndStart(m_window);
    m_probe.setSelectionTick(kTickMs);
    qApp->installEventFilter(this);
    // After the window's own slot, which is connected first.
    connect(propertyTable(m_window), &QTableWidget::cellChanged, this, &RulesBench::noteCall);
    connect(fieldList(m_window)->model(), &QAbstractItemModel::modelReset, this, [this] { ++m_refills; });
}

RulesBench::~RulesBench()
{
    // The window processes events on its way out, when the members after it are gone.
    qApp->removeEventFilter(this);
    propertyTable(m_window)->disconnect(this);
    fieldList(m_window)->model()->disconnect(this);
}

bool RulesBench::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Timer && watched->inherits("QSingleShotTimer"))
        ++m_turns;
    return QObject::eventFilter(watched, event);
}

void RulesBench::settle()
{
    const int until = m_turns + kTurns;
    QTRY_VERIFY(m_turns >= until && m_probe.isSettled());
}

void RulesBench::open(const QList<FieldRow>& fields)
{
    // A file with fewer fields than the template before it would leave the others in place.
    m_probe.bd().Clear();
    openFile(m_dir.write(QStringLiteral("template.csv"), maskFile(fields)));
    QCOMPARE(m_probe.bd().items.size(), fields.size());
}

void RulesBench::openFile(const QString& path)
{
    openTemplate(m_window, m_robot, path);
    settle();
    QCOMPARE(m_robot.takeTexts(), QStringList());
    QVERIFY(m_probe.maket().getShablonLoaded());
}

void RulesBench::pick(int key, int mode)
{
    watch();
    pickField(m_window, key);
    if (mode != m_mode)
        clickButton(m_window, mode == 1 ? "btnSetSetModePoz" : "btnSetSetModeView");
    m_mode = mode;
    QTRY_VERIFY(m_probe.isSettled());
    QCOMPARE(propertyTable(m_window)->rowCount(), mode == 1 ? 12 : 8);
    const Outcome seen = outcome();
    QCOMPARE(seen.changes, QStringList());
    QCOMPARE(seen.warnings, QStringList());
    watch();
}

void RulesBench::watch()
{
    m_before = m_probe.bd().items;
    m_logStart = m_probe.log().size();
    m_robot.takeBoxes();
    m_boxes.clear();
    m_cells.clear();
    m_refills = 0;
    m_appliedOnCall = 0;
}

void RulesBench::type(int row, const QString& text)
{
    watch();
    typeNumber(m_window, row, text);
    settle();
}

void RulesBench::choose(int row, const QString& text)
{
    watch();
    chooseText(m_window, row, text);
    settle();
}

void RulesBench::openAndLeave(int row)
{
    watch();
    QWidget* const editor = openEditor(m_window, row);
    QVERIFY(editor != nullptr);
    pressEnter(editor);
    settle();
}

Outcome RulesBench::outcome()
{
    m_boxes += m_robot.takeBoxes();
    QStringList warnings;
    for (const auto& box : std::as_const(m_boxes))
        warnings.append(seenAs(box));
    return {.changes = changes(),
            .warnings = warnings,
            .cells = m_cells,
            .log = logSince(m_window, m_logStart),
            .refills = m_refills};
}

QStringList RulesBench::changes()
{
    QStringList found;
    const auto& items = m_probe.bd().items;
    for (auto it = items.cbegin(); it != items.cend(); ++it) {
        if (m_before.contains(it.key()))
            found += differences(it.key(), m_before.value(it.key()), it.value());
        else
            found.append(QStringLiteral("%1 is new").arg(it.key()));
    }
    if (items.size() < m_before.size())
        found.append(QStringLiteral("fields are gone"));
    return found;
}

void RulesBench::noteCall(int row, int column)
{
    if (column != 1)
        return;
    m_cells.append(cellState(m_window, row));
    if (m_appliedOnCall == 0 && !changes().isEmpty())
        m_appliedOnCall = static_cast<int>(m_cells.size());
}

void checkLeftAlone(RulesBench& bench, int row, const QString& state)
{
    bench.openAndLeave(row);
    const Outcome outcome = bench.outcome();
    QCOMPARE(outcome.changes, QStringList());
    QCOMPARE(outcome.warnings, QStringList());
    QVERIFY(!outcome.log.contains(QStringLiteral("Scene cleared!")));
    QCOMPARE(outcome.refills, 0);
    QCOMPARE(cellState(bench.window(), row), state);
}

RulesBench& SharedBench::get()
{
    if (m_bench == nullptr)
        m_bench = std::make_unique<RulesBench>();
    return *m_bench;
}

void SharedBench::dropIfFailed()
{
    if (QTest::currentTestFailed())
        m_bench.reset();
}
