#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "view/itempole.h"

void MainWindow::makeFilteredPoleyList(QStringList& out)
{
    out.clear();
    const auto n = static_cast<int>(bd.items.size());
    out.reserve(n);
    // Nothing in the walk lets the user at the buttons: one look at them serves all keys.
    const bool isAllShown = ui->btnFiltrShowAll->isChecked();
    const bool isFiltered = ui->chbFilter->isChecked();
    const bool isCaseSensitive = ui->btnFiltrRegistr->isChecked();
    QString filter = ui->lePolesFilterStr->text();
    if (!isCaseSensitive)
        filter = filter.toUpper();
    auto it = bd.items.lowerBound(1);
    const auto end = bd.items.end();
    for (int key = 1; key <= n; ++key, ++it) {
        // A missing key gets a blank record, as everywhere.
        if (it == end || it.key() != key)
            it = bd.items.insert(it, key, {});
        const auto& item = it.value();
        if (!isAllShown && item.Size > 0)
            continue;
        if (isFiltered) {
            const QString desc = isCaseSensitive ? item.Desc : item.Desc.toUpper();
            if (!desc.contains(filter))
                continue;
        }
        out.append(item.Desc);
    }
}

void MainWindow::updateFilterOut()
{
    QStringList list;
    makeFilteredPoleyList(list);
    // Clearing resets the view, even where there is nothing to clear.
    if (ui->listWidget->count() > 0)
        ui->listWidget->clear();
    ui->listWidget->insertItems(ui->listWidget->count(), list);
    ui->grBoxFilter->setTitle(
        tr("Фильтр полей [%1 из %2]").arg(QString::number(list.size()), QString::number(bd.items.size())));
}

void MainWindow::on_chbFilter_stateChanged(int /*arg1*/)
{
    updateFilterOut();
}

void MainWindow::on_btnFiltrShowAll_toggled(bool /*checked*/)
{
    updateFilterOut();
}

void MainWindow::on_lePolesFilterStr_textChanged(QString /*arg1*/)
{
    updateFilterOut();
}

void MainWindow::on_btnFiltrRegistr_clicked()
{
    updateFilterOut();
}

void MainWindow::on_listView_clicked(QModelIndex /*index*/) {}

void MainWindow::on_listWidget_itemSelectionChanged()
{
    const auto lines = ui->listWidget->selectedItems();
    if (lines.size() != 1)
        return;
    const int key = bd.getPoleKeyByDesc(lines.constFirst()->text());

    bool isOnScene = false;
    for (QGraphicsItem* const item : scene.items()) {
        if (item->type() == ItemPole::Type && item->data(1).toInt() == key) {
            scene.clearSelection();
            item->setSelected(true);
            isOnScene = true;
        }
    }
    if (isOnScene) {
        // The field picked in the list before gives way, even to the one that the loop knows as selected.
        if (curKey != 0)
            prevItemGone = true;
        listPicked = false;
        return;
    }

    curKey = key;
    // The loop may not have taken yet what is selected, or that a redraw has dropped it.
    if (curItem != nullptr || prevItemGone || !scene.selectedItems().isEmpty()) {
        curItem = nullptr;
        listPicked = true;
        scene.clearSelection();
    }
    if (key >= 1 && key <= bd.items.size()) {
        ui->lePoleDesc->setText(bd.getPoleByKey(key).Desc);
        settingsWidget_initForPole(curKey);
    } else {
        ui->lePoleDesc->setText(tr("Поле не выбрано"));
        settingsWidget_initForEmpty();
    }
    changeSettingTableBtnsOnOff();
}
