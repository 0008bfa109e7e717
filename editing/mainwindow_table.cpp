#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "editing/delegatecombobox.h"
#include "editing/delegatespinbox.h"
#include "editing/propertyrows.h"
#include "view/itempole.h"

#include <QApplication>

namespace {

constexpr int kNameColumn = 0;
constexpr int kValueColumn = 1;
constexpr int kMostRows = 12;

DelegateComboBox* makeListDelegate(const PropertyRow& row, const QMap<int, QString>& texts)
{
    const bool isOneAbove = row.editor != PropertyRow::Editor::List;
    const int above = row.editor == PropertyRow::Editor::ListOneAbove ? 1 : 0;
    auto* const delegate = new DelegateComboBox(isOneAbove);
    for (auto it = texts.cbegin(); it != texts.cend(); ++it)
        delegate->addLine({it.value(), it.key() + above});
    return delegate;
}

} // namespace

void MainWindow::closeTableEditors()
{
    QTableWidget* const table = ui->settingsWidget;
    for (int row = 0; row < table->rowCount(); ++row) {
        const auto index = table->model()->index(row, kValueColumn);
        if (table->indexWidget(index) != nullptr)
            table->closePersistentEditor(table->item(row, kValueColumn));
    }
}

void MainWindow::takeOpenEditor()
{
    const QWidget* const focused = QApplication::focusWidget();
    if (focused != nullptr && focused != ui->settingsWidget && ui->settingsWidget->isAncestorOf(focused))
        ui->settingsWidget->setFocus();
}

void MainWindow::beginTableForm(int nameWidth, int valueWidth, const QStringList& names,
                                QAbstractItemView::EditTriggers triggers)
{
    closeTableEditors();
    ++tableForm;
    QTableWidget* const table = ui->settingsWidget;
    table->setColumnWidth(kNameColumn, nameWidth);
    table->setColumnWidth(kValueColumn, valueWidth);
    const auto rows = static_cast<int>(names.size());
    // When the row of the current cell goes, another becomes current, which would open an editor there.
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setRowCount(rows);
    OutColumnNamesFromList(table, 0, kNameColumn, names, true);
    RemovePrevDelegates4Column(table, rows);
    table->setEditTriggers(triggers);
}

void MainWindow::OutColumnNamesFromList(QTableWidget* table, int firstRow, int column,
                                        const QStringList& texts, bool readOnly)
{
    int row = firstRow;
    for (const auto& text : texts) {
        auto* const item = new QTableWidgetItem;
        item->setData(Qt::DisplayRole, text);
        if (readOnly)
            item->setFlags(item->flags() ^ (Qt::ItemIsSelectable | Qt::ItemIsEditable));
        table->setItem(row++, column, item);
    }
}

void MainWindow::RemovePrevDelegates4Column(QTableWidget* table, int rows)
{
    for (int row = 0; row < rows; ++row) {
        auto* const delegate = qobject_cast<CellDelegate*>(table->itemDelegateForRow(row));
        if (delegate == nullptr)
            continue;
        table->setItemDelegateForRow(row, nullptr);
        delegate->dismiss();
    }
}

void MainWindow::dropTable()
{
    closeTableEditors();
    RemovePrevDelegates4Column(ui->settingsWidget, kMostRows);
}

void MainWindow::putTableItem(QTableWidgetItem* item, int row, int column, unsigned char value)
{
    item->setData(CellDelegate::kValueRole, static_cast<int>(value));
    item->setData(CellDelegate::kEditedRole, false);
    ui->settingsWidget->setItem(row, column, item);
}

void MainWindow::setTableItem(int row, int column, unsigned char value, bool asChar)
{
    putTableItem(new QTableWidgetItem(asChar ? charText(value) : QString::number(value)), row, column, value);
}

void MainWindow::setTableItem(int row, int column, const QMap<int, QString>& texts, unsigned char value)
{
    putTableItem(new QTableWidgetItem(texts.value(value)), row, column, value);
}

QString MainWindow::charText(int code)
{
    return decoder1251.toUnicode(QByteArray(1, static_cast<char>(code)));
}

QString MainWindow::shownText(const PropertyRow& row, int value)
{
    switch (row.editor) {
    case PropertyRow::Editor::Number:
        return QString::number(value, 10);
    case PropertyRow::Editor::Character:
        return charText(value);
    default:
        return (gl.*row.texts).value(static_cast<unsigned char>(value));
    }
}

void MainWindow::putTableValue(int row, const PropertyRow& property, int value)
{
    const auto byte = static_cast<unsigned char>(value);
    switch (property.editor) {
    case PropertyRow::Editor::Number:
        putTableItem(new QTableWidgetItem(QString::number(value, 10)), row, kValueColumn, byte);
        break;
    case PropertyRow::Editor::Character:
        setTableItem(row, kValueColumn, byte, true);
        break;
    default:
        setTableItem(row, kValueColumn, gl.*property.texts, byte);
        break;
    }
}

QAbstractItemDelegate* MainWindow::makeDelegate(const PropertyRow& row)
{
    if (row.editor == PropertyRow::Editor::Number)
        return new DelegateSpinBox(row.minimum, row.maximum);
    if (row.editor != PropertyRow::Editor::Character)
        return makeListDelegate(row, gl.*row.texts);
    auto* const delegate = new DelegateComboBox(false);
    for (int code = row.minimum; code <= row.maximum; ++code)
        delegate->addLine({charText(code), code});
    return delegate;
}

void MainWindow::fillPoleForm(int key, std::span<const PropertyRow> rows, int nameWidth, int valueWidth)
{
    const auto item = bd.getPoleByKey(key);
    QStringList names;
    for (const auto& row : rows)
        names.append(tr(row.name));
    beginTableForm(nameWidth, valueWidth, names, QAbstractItemView::AllEditTriggers);
    int row = 0;
    for (const auto& property : rows) {
        ui->settingsWidget->setItemDelegateForRow(row, makeDelegate(property));
        putTableValue(row, property, property.valueOf(item));
        ++row;
    }
}

void MainWindow::settingsWidget_initForEmpty()
{
    closeTableEditors();
    ++tableForm;
    ui->settingsWidget->setColumnWidth(kNameColumn, 200);
    ui->settingsWidget->setColumnWidth(kValueColumn, 125);
    ui->settingsWidget->setRowCount(0);
}

void MainWindow::settingsWidget_initForHeader()
{
    const int block = curItem->data(1).toInt();
    beginTableForm(180, 165, {tr("Название"), tr("Номер")}, QAbstractItemView::NoEditTriggers);
    OutColumnNamesFromList(ui->settingsWidget, 0, kValueColumn,
                           {tr("%1").arg(gl.blockTitles.value(block)), tr("%1").arg(block)}, false);
}

void MainWindow::settingsWidget_initForLine()
{
    const int b = curItem->data(1).toInt();
    const int l = curItem->data(2).toInt();
    int font = -1;
    int count = 0;
    int factor = 1;
    if (bd.isLineHavePoles(b, l)) {
        font = bd.getLineFont(b, l);
        count = bd.getLineKolPoley(b, l);
        factor = bd.getLineX2Y(b, l) != 0 ? 2 : 1;
    }
    const int dx = GUIMaket::FontSizeDX(font);
    const int dy = GUIMaket::FontSizeDY(font);
    beginTableForm(180, 165, {tr("Высота"), tr("Шрифт"), tr("Полей"), tr("Блок")},
                   QAbstractItemView::NoEditTriggers);
    OutColumnNamesFromList(ui->settingsWidget, 0, kValueColumn,
                           {tr("%1").arg(dy * factor), tr("%1 (%2x%3)").arg(font).arg(dx).arg(dy),
                            tr("%1").arg(count),
                            tr("[%1] %2").arg(QString::number(b), gl.blockTitles.value(b))},
                           false);
}

void MainWindow::settingsWidget_initForPole(int key)
{
    if (setMode == 1)
        settingsWidget_initForPolePoz(key);
    else
        settingsWidget_initForPoleView(key);
}

void MainWindow::settingsWidget_initForPolePoz(int key)
{
    fillPoleForm(key, positionRows(), 170, 155);
}

void MainWindow::settingsWidget_initForPoleView(int key)
{
    fillPoleForm(key, viewRows(), 180, 165);
}

void MainWindow::changeSettingTableBtnsOnOff()
{
    bool isMode = true;
    bool isDel = false;
    if (curItem != nullptr && curItem->type() == ItemPole::Type)
        isDel = bd.items.contains(curItem->data(1).toInt()) && !bd.isItemNEED(curItem->data(1).toInt());
    else if (curKey == 0)
        isMode = false;
    else
        isDel = !bd.isItemNEED(curKey) && bd.getPoleByKey(curKey).Size != 0;
    ui->btnSetSetModePoz->setEnabled(isMode);
    ui->btnSetSetModeView->setEnabled(isMode);
    ui->btnPoleDel->setEnabled(isDel);
}

void MainWindow::changeSetMode(int mode)
{
    ui->btnSetSetModePoz->setChecked(mode == 1);
    ui->btnSetSetModeView->setChecked(mode == 2);
    setMode = mode;
    // No key right after a redraw, which has dropped the selection: there is no field to show.
    if (const int key = getKeyPlForSelectedPole(); key != 0)
        settingsWidget_initForPole(key);
}

void MainWindow::on_btnSetSetModePoz_clicked()
{
    changeSetMode(1);
}

void MainWindow::on_btnSetSetModeView_clicked()
{
    changeSetMode(2);
}
