#include "sessionuser.h"

#include "app/mainwindow.h"
#include "sessionwait.h"
#include "strainedtemplate.h"
#include "support/tablesteps.h"
#include "support/windowprobe.h"
#include "view/itempole.h"

#include <QComboBox>
#include <QGraphicsItem>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

namespace {

constexpr int kPositionRow = 2;
constexpr int kSizeRow = 3;
constexpr int kRowsOfPositions = 12;

/// All properties of all fields, for a comparison.
QStringList fieldTexts(const BD_T20Items& bd)
{
    QStringList rows;
    bd.SaveToListWMask(rows);
    return rows;
}

} // namespace

int SessionUser::fieldInTable() const
{
    // None right after a redraw: the table still shows the field that was selected, and an edit changes nothing.
    const WindowProbe probe(m_window);
    const QGraphicsItem* const item = probe.curItem();
    if (probe.curKey() != 0 || item == nullptr)
        return probe.curKey();
    return item->type() == ItemPole::Type ? item->data(1).toInt() : 0;
}

void SessionUser::useEditor(QWidget* editor, int row, int percent)
{
    const WindowProbe probe(m_window);
    if (editor != m_editor) {
        m_editor = editor;
        m_cell = {};
        m_cell.key = fieldInTable();
        m_cell.isPositions = m_table->rowCount() == kRowsOfPositions;
        m_cell.row = row;
        m_cell.isOnTape = probe.curKey() == 0;
        m_cell.isChoice = false;
    }
    if (!chance(percent))
        return;
    if (auto* const number = qobject_cast<QSpinBox*>(editor)) {
        number->selectAll();
        QTest::keyClicks(number, QString::number(chance(70) ? upTo(15) : upTo(300)));
    } else if (auto* const list = qobject_cast<QComboBox*>(editor)) {
        QTest::keyClick(list, Qt::Key_Home);
        for (int i = upTo(std::min(list->count(), 10) - 1); i > 0; --i)
            QTest::keyClick(list, Qt::Key_Down);
    }
    m_cell.isChoice = true;
}

CellEntry SessionUser::entryIn(const QWidget* editor) const
{
    CellEntry entry = m_cell;
    if (const auto* const number = qobject_cast<const QSpinBox*>(editor)) {
        entry.number = number->value();
    } else if (const auto* const list = qobject_cast<const QComboBox*>(editor)) {
        entry.isChoice = list->currentIndex() >= 0;
        entry.number = list->currentIndex() + firstListNumber(entry.isPositions, entry.row);
    }
    return entry;
}

bool SessionUser::isEditorOpen() const
{
    return m_editor != nullptr && m_editor->isVisible();
}

void SessionUser::editCell()
{
    if (m_table->rowCount() == 0)
        return;
    const int row = chance(60) ? upTo(3) : upTo(m_table->rowCount() - 1);
    if (row >= m_table->rowCount())
        return;
    const QPointer<QWidget> editor = openEditor(m_window, row);
    if (editor == nullptr)
        return;
    const QString shown = valueCell(m_window, row)->text();
    useEditor(editor, row, 90);
    if (row == kPositionRow) {
        m_checks.positionWasMoved();
        // A cell that shows the position from before a push may refuse what it would take otherwise.
        const int x = WindowProbe(m_window).bd().items.value(m_cell.key).X;
        m_isCertain = m_isCertain && (!m_cell.isPositions || shown == QString::number(x));
    }
    if (row == kSizeRow)
        m_checks.sizeWasEdited();
    const bool isCommit = chance(90);
    const CellEntry cell = entryIn(editor);
    tell(QStringLiteral("field %1, row %2: %3").arg(cell.key).arg(row).arg(isCommit ? cell.number : -1));
    if (isCommit)
        m_change = [cell](const TemplateState& start) { return afterEntry(start, cell); };
    QTest::keyClick(editor, isCommit ? Qt::Key_Return : Qt::Key_Escape);
    if (!waitUntil([&] { return editor == nullptr || !editor->isVisible(); }))
        m_wrong.append(QStringLiteral("the editor of row %1 stays open: %2 %3")
                           .arg(QString::number(row), QString::fromLatin1(editor->metaObject()->className()),
                                editor->property("text").toString()));
}

void SessionUser::leaveEditorOpen()
{
    if (m_table->rowCount() == 0)
        return;
    const int row = upTo(m_table->rowCount() - 1);
    QWidget* const editor = openEditor(m_window, row);
    if (editor != nullptr)
        useEditor(editor, row, 50);
    tell(QStringLiteral("row %1").arg(row));
}

TemplateState SessionUser::state() const
{
    const WindowProbe probe(m_window);
    TemplateState state;
    const auto& items = probe.bd().items;
    for (auto it = items.cbegin(); it != items.cend(); ++it)
        state.fields.emplace_hint(state.fields.cend(), it.key(), it.value());
    for (int b = 0; b < BD_T20Items::kBlockCount; ++b)
        state.lines.append(probe.maket().getBlockKolLines(b));
    return state;
}

QString SessionUser::templateFault(const TemplateState& before)
{
    if (m_isOpening)
        return {};
    const TemplateState found = state();
    if (m_isCertain)
        return differenceOf(m_change ? m_change(before).state : before, found);
    QStringList faults;
    for (const auto& start : std::as_const(m_starts)) {
        faults.append(differenceOf(start, found));
        if (m_change)
            faults.append(differenceOf(m_change(start).state, found));
    }
    return faults.contains(QString()) ? QString() : faults.join(QStringLiteral(" and "));
}

QString SessionUser::redrawFault(const TemplateState& before, bool isRebuilt) const
{
    if (!m_isCertain || m_isRedrawFree || m_isOpening)
        return {};
    const bool isExpected = m_change && m_change(before).isRedraw;
    if (isRebuilt == isExpected)
        return {};
    return isRebuilt ? QStringLiteral("the tape is drawn anew") : QStringLiteral("the tape is not redrawn");
}

void SessionUser::checkBoxes(const TemplateState& before)
{
    static const QStringList known{
        QStringLiteral("Поле не может находиться в данном блоке!"),
        QStringLiteral("Нет такой строки в новом блоке!"),
        QStringLiteral("Нет такой строки!"),
        QStringLiteral("Ячейка уже занята!"),
        QStringLiteral("Ячейка в новом блоке занята - поле помещено в ячейку "),
        QStringLiteral("Строка не пустая!\nНельзя удалить."),
    };
    QStringList texts;
    for (const auto& box : m_robot.takeBoxes()) {
        texts.append(box.text);
        const bool isKnown = std::any_of(known.cbegin(), known.cend(),
                                         [&](const QString& text) { return box.text.startsWith(text); });
        if (!isKnown || box.icon != QMessageBox::Warning || !box.title.isEmpty())
            m_wrong.append(QStringLiteral("box: ") + box.text);
        if (box.text.startsWith(known.at(4)))
            m_checks.fieldWasPushed();
    }
    const QStringList wanted = m_change ? m_change(before).boxes : QStringList();
    if (m_isCertain && texts != wanted)
        m_wrong.append(QStringLiteral("boxes: %1, not %2").arg(texts.join(u'|'), wanted.join(u'|')));
}

void SessionUser::open()
{
    QString path;
    if (chance(40)) {
        path = m_dir.write(QStringLiteral("strained.csv"), maskFile(strainedTemplate(m_random)));
    } else {
        const QString width = chance(50) ? QStringLiteral("80") : QStringLiteral("57");
        path = QStringLiteral(SAMPLES_DIR "/grocery-%1mm.csv").arg(width);
    }
    const auto& bd = WindowProbe(m_window).bd();
    // Fields beyond the end of the file stay.
    const QStringList before = fieldTexts(bd);
    QStringList wanted = QString::fromUtf8(bytesOf(path)).split(u'\n');
    wanted.removeLast();
    wanted += before.mid(wanted.size());
    openTemplate(m_window, m_robot, path);
    settle();
    const QStringList found = fieldTexts(bd);
    for (qsizetype i = 0; i < std::max(wanted.size(), found.size()); ++i) {
        if (wanted.value(i) == found.value(i))
            continue;
        m_wrong.append(QStringLiteral("field %1 is %2, not %3 as in the file")
                           .arg(QString::number(i + 1), found.value(i), wanted.value(i)));
        break;
    }
    m_isOpening = true;
}

void SessionUser::saveAndReopen()
{
    const auto& bd = WindowProbe(m_window).bd();
    m_isRedrawFree = true;
    m_change = afterReopening;
    const QString path = m_dir.path(QStringLiteral("session.csv"));
    saveTemplateAs(m_window, m_robot, path);
    const QStringList saved = fieldTexts(bd);
    if (bytesOf(path) != (saved.join(u'\n') + u'\n').toUtf8())
        m_wrong.append(QStringLiteral("the file does not hold the fields"));
    openTemplate(m_window, m_robot, path);
    if (fieldTexts(bd) != saved)
        m_wrong.append(QStringLiteral("the file read back gives other fields"));
    if (chance(40))
        open();
}
