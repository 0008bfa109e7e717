#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "view/itemblockheader.h"
#include "view/itemline.h"
#include "view/itempole.h"

#include <QGraphicsProxyWidget>
#include <QTimer>

#include <utility>

namespace {

constexpr unsigned int kAllBlocks = 0xFFFF;

// Places of the two line buttons beside the selected heading or line.
constexpr int kAddButtonDX = -27;
constexpr int kDelButtonDX = 3;
constexpr int kButtonDY = -12;

} // namespace

void MainWindow::timerTick()
{
    if (closing)
        return;
    const auto selected = scene.selectedItems();
    QGraphicsItem* const single = selected.size() == 1 ? selected.constFirst() : nullptr;
    // A pick in the list has cleared the selection, which is not the user's doing; a new one within the same turn is.
    const bool isListPick = std::exchange(listPicked, false);
    // A new item may stand at the address of one that a rebuild has deleted.
    if (single != prevItem || prevItemGone) {
        prevItem = single;
        prevItemGone = false;
        if (!isListPick || single)
            takeSelection(single);
        changeSettingTableBtnsOnOff();
    }
    if (redrawPending && !lineBoxOpen) {
        redrawPending = false;
        RedrawWithBD();
    }
    QTimer::singleShot(selectionTickMs, this, SLOT(timerTick()));
}

void MainWindow::takeSelection(QGraphicsItem* selection)
{
    ui->lePoleDesc->setText(tr("Поле не выбрано"));
    SetMaskOfPoleToAllBlocks(kAllBlocks);
    curItem = selection;
    curKey = 0;
    curType = selection == nullptr ? 0 : selection->type();
    const int number = selection == nullptr ? -1 : selection->data(1).toInt();
    switch (curType) {
    case ItemBlockHeader::Type:
        settingsWidget_initForHeader();
        break;
    case ItemPole::Type:
        // A message box of a take-over can stand before a scene whose fields are gone from the model.
        if (bd.items.contains(number))
            settingsWidget_initForPole(number);
        else
            settingsWidget_initForEmpty();
        break;
    case ItemLine::Type:
        settingsWidget_initForLine();
        break;
    default:
        settingsWidget_initForEmpty();
        break;
    }
    showLineButtons();
    if (curType == ItemPole::Type && number >= 1 && number <= bd.items.size()) {
        const auto& item = bd.getPoleByKey(number);
        ui->lePoleDesc->setText(item.Desc);
        SetMaskOfPoleToAllBlocks(item.BL_MASK);
    }
    LogAddDbg(tr("new selItem type=%1 idx=%2 ...").arg(curType).arg(number));
}

void MainWindow::showLineButtons()
{
    if (proxyLineAdd == nullptr || proxyLineDel == nullptr)
        return;
    proxyLineAdd->hide();
    proxyLineDel->hide();
    const bool isLine = curType == ItemLine::Type;
    if (curItem == nullptr || (!isLine && curType != ItemBlockHeader::Type))
        return;
    const int block = curItem->data(1).toInt();
    const int h = maket.getLineHeight(block, isLine ? curItem->data(2).toInt() : 0);
    proxyLineAdd->setPos(curItem->x() + kAddButtonDX, curItem->y() + h + kButtonDY);
    proxyLineAdd->show();
    if (isLine) {
        proxyLineDel->setPos(curItem->x() + tapeWidth + kDelButtonDX, curItem->y() + h / 2 + kButtonDY);
        proxyLineDel->show();
    }
}

void MainWindow::endPick()
{
    curItem = nullptr;
    curKey = 0;
    listPicked = false;
    settingsWidget_initForEmpty();
    ui->lePoleDesc->setText(tr("Поле не выбрано"));
    changeSettingTableBtnsOnOff();
}

void MainWindow::SetMaskOfPoleToAllBlocks(unsigned int mask)
{
    for (QGraphicsItem* const item : scene.items()) {
        if (auto* const line = qgraphicsitem_cast<ItemLine*>(item)) {
            const int b = line->data(1).toInt();
            line->lineAllowed = ((mask >> b) & 1U) != 0;
        }
    }
    scene.invalidate(QRectF(), QGraphicsScene::AllLayers);
}

int MainWindow::getKeyPlForSelectedPole()
{
    if (curItem == nullptr)
        return curKey;
    if (curKey != 0) {
        LogAddDbg(tr("ERR: getKeyPlForSelectedPole() sims!"));
        return 0;
    }
    if (curItem->type() == ItemPole::Type)
        return curItem->data(1).toInt();
    LogAddDbg(tr("ERR: getKeyPlForSelectedPole() item not Pole!"));
    return 0;
}

void MainWindow::on_btnPoleDel_clicked()
{
    if (curItem == nullptr || curItem->type() != ItemPole::Type)
        return;
    auto& item = bd.getPoleByKey(curItem->data(1).toInt());
    if (item.FA_NEED) {
        LogAddDbg(tr("Нельзя удалять!"));
        return;
    }
    curItem = nullptr;
    item.Size = 0;
    updateFilterOut();
    RedrawWithBD();
}
