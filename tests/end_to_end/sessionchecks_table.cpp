#include "sessionchecks.h"

#include "app/mainwindow.h"
#include "editing/celldelegate.h"
#include "support/expectedscene.h"
#include "support/windowprobe.h"
#include "templatestate.h"
#include "view/itemblockheader.h"
#include "view/itemline.h"

#include <QGraphicsItem>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>

namespace {

constexpr int kNameColumn = 0;
constexpr int kValueColumn = 1;
constexpr int kXRow = 2;
constexpr int kFormatRow = 5;

QString textAt(const QTableWidget& table, int row, int column)
{
    const QTableWidgetItem* const cell = table.item(row, column);
    return cell == nullptr ? QStringLiteral("no cell") : cell->text();
}

} // namespace

void SessionChecks::checkSelection()
{
    const WindowProbe probe(m_window);
    const auto selected = probe.scene().selectedItems();
    const QGraphicsItem* const single = selected.size() == 1 ? selected.constFirst() : nullptr;
    expect(selected.size() <= 1, [&] { return QStringLiteral("%1 items selected").arg(selected.size()); });
    expect(probe.curItem() == single, [] { return QStringLiteral("another item is current"); });
    expect(single == nullptr || probe.curKey() == 0,
           [&] { return QStringLiteral("field %1 picked beside an item").arg(probe.curKey()); });
    const int key = pickedKey();
    const QString wanted = key == 0 ? QStringLiteral("Поле не выбрано") : probe.bd().items.value(key).Desc;
    const QString shown = m_desc->text();
    expect(shown == wanted, [&] { return QString(u"description " + shown); });
}

void SessionChecks::checkButtons()
{
    const WindowProbe probe(m_window);
    const int key = pickedKey();
    expect(m_positions->isEnabled() == (key != 0) && m_view->isEnabled() == (key != 0),
           [] { return QStringLiteral("mode buttons"); });
    expect(m_positions->isChecked() != m_view->isChecked(), [] { return QStringLiteral("marked mode"); });

    const bool isDelete = m_delete->isEnabled();
    const auto field = probe.bd().items.value(key);
    const bool isPlaced = probe.curItem() != nullptr || field.Size != 0;
    if (isDelete == (key != 0 && !field.FA_NEED && isPlaced))
        m_isDeleteOld = false;
    else
        expect(m_isDeleteOld && key != 0 && !field.FA_NEED, [] { return QStringLiteral("delete button"); });
}

QStringList SessionChecks::lineTexts(int block, int line) const
{
    const auto& bd = WindowProbe(m_window).bd();
    const auto& lines = bd.blocks.at(block).lines;
    int font = -1;
    int factor = 1;
    qsizetype count = 0;
    if (line < lines.size() && lines.at(line).firstIdx >= 0) {
        count = lines.at(line).poles.size();
        const auto first = bd.items.value(lines.at(line).poles.at(lines.at(line).firstIdx));
        font = first.Font;
        factor = first.X2Y + 1;
    }
    const int dx = GUIMaket::FontSizeDX(font);
    const int dy = GUIMaket::FontSizeDY(font);
    return {QString::number(dy * factor), QStringLiteral("%1 (%2x%3)").arg(font).arg(dx).arg(dy),
            QString::number(count), QStringLiteral("[%1] %2").arg(block).arg(headingTexts().value(block))};
}

void SessionChecks::checkNames(const QStringList& names, bool isEditable)
{
    QStringList found;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        found.append(textAt(*m_table, row, kNameColumn));
        const QTableWidgetItem* const name = m_table->item(row, kNameColumn);
        expect(name != nullptr && (name->flags() & (Qt::ItemIsSelectable | Qt::ItemIsEditable)) == 0,
               [&] { return QStringLiteral("the name of row %1 can be edited").arg(row); });
    }
    expect(found == names, [&] { return QString(u"rows " + found.join(u", ")); });
    const auto triggers = isEditable ? QTableWidget::AllEditTriggers : QTableWidget::NoEditTriggers;
    expect(m_table->editTriggers() == triggers, [] { return QStringLiteral("edit triggers"); });
}

void SessionChecks::checkValues(const QStringList& texts)
{
    int row = 0;
    for (const auto& text : texts) {
        expect(textAt(*m_table, row, kValueColumn) == text,
               [&] { return QStringLiteral("row %1 is not %2").arg(QString::number(row), text); });
        ++row;
    }
}

void SessionChecks::checkTable()
{
    const QGraphicsItem* const item = WindowProbe(m_window).curItem();
    const int key = pickedKey();
    if (key != 0) {
        checkPoleTable(key);
    } else if (item == nullptr) {
        const int rows = m_table->rowCount();
        expect(rows == 0, [&] { return QStringLiteral("%1 rows for nothing").arg(rows); });
    } else if (item->type() == ItemBlockHeader::Type) {
        const int block = item->data(1).toInt();
        checkNames({QStringLiteral("Название"), QStringLiteral("Номер")}, false);
        checkValues({headingTexts().value(block), QString::number(block)});
    } else {
        checkNames({QStringLiteral("Высота"), QStringLiteral("Шрифт"), QStringLiteral("Полей"),
                    QStringLiteral("Блок")},
                   false);
        checkValues(lineTexts(item->data(1).toInt(), item->data(2).toInt()));
    }
}

void SessionChecks::checkPoleTable(int key)
{
    const WindowProbe probe(m_window);
    const bool isPositions = m_positions->isChecked();
    const auto field = probe.bd().items.value(key);
    checkNames(rowNames(isPositions), true);
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const int number = shownNumber(field, isPositions, row);
        const QString text = shownText(field, isPositions, row);
        const QTableWidgetItem* const cell = m_table->item(row, kValueColumn);
        const bool isRight = cell != nullptr && (text.isNull() || cell->text() == text);
        if (isPositions && row == kXRow) {
            if (isRight)
                m_isShownXOld = false;
            else if (m_isShownXOld && probe.curItem() == nullptr)
                continue;
        }
        expect(isRight, [&] {
            return QString(QStringLiteral("field %1, row %2 is %3, not %4")
                               .arg(QString::number(key), QString::number(row),
                                    textAt(*m_table, row, kValueColumn), text));
        });
        if (cell == nullptr)
            continue;
        const bool isEdited = cell->data(CellDelegate::kEditedRole).toBool();
        const int value = cell->data(CellDelegate::kValueRole).toInt();
        const bool isOneLess = !isPositions && row == kFormatRow && isEdited && value == number - 1;
        expect(value == (number & 0xff) || isOneLess,
               [&] { return QStringLiteral("field %1, row %2 holds %3").arg(key).arg(row).arg(value); });
    }
}

void SessionChecks::checkFieldList()
{
    const auto& bd = WindowProbe(m_window).bd();
    const bool isAll = m_all->isChecked();
    const bool isCase = m_case->isChecked();
    const bool isFilter = m_filter->isChecked();
    const QString typed = m_filterText->text();
    const QString filter = isCase ? typed : typed.toUpper();
    QStringList wanted;
    for (const auto& field : bd.items) {
        if (!isAll && field.Size > 0)
            continue;
        if (isFilter && !(isCase ? field.Desc : field.Desc.toUpper()).contains(filter))
            continue;
        wanted.append(field.Desc);
    }
    QStringList shown;
    for (int i = 0; i < m_list->count(); ++i)
        shown.append(m_list->item(i)->text());
    expect(shown == wanted,
           [&] { return QStringLiteral("%1 fields listed, not %2").arg(shown.size()).arg(wanted.size()); });
    const QString title = m_box->title();
    expect(title == QStringLiteral("Фильтр полей [%1 из %2]").arg(wanted.size()).arg(bd.items.size()),
           [&] { return QString(u"title " + title); });
}
