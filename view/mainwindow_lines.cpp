#include "app/mainwindow.h"

#include "view/itemblockheader.h"
#include "view/itemline.h"

// Both slots run inside a click on a button of the scene, so they only ask for the redraw.

namespace {

/// The highest number of a line that a template may have.
constexpr int kLastLine = 255;

} // namespace

bool MainWindow::isRoomForLine(int block, int line)
{
    for (const auto& item : std::as_const(bd.items)) {
        if (item.Size > 0 && item.Block == block && item.Line >= line && item.Line >= kLastLine)
            return false;
    }
    return true;
}

void MainWindow::refreshStaleBlocks()
{
    // A click that comes before the redraw of the one before: the fields have moved, their lines have not.
    if (redrawPending)
        bd.ReComputeBDBlocks();
}

void MainWindow::maketAddSelectedLine()
{
    LogAddDbg(tr("Add selected line?"));
    if (curItem == nullptr)
        return;
    int block = 0;
    int line = 1;
    if (curItem->type() == ItemBlockHeader::Type) {
        block = curItem->data(1).toInt();
    } else if (curItem->type() == ItemLine::Type) {
        block = curItem->data(1).toInt();
        line = curItem->data(2).toInt();
    } else {
        return;
    }
    refreshStaleBlocks();
    if (!isRoomForLine(block, line))
        return;
    maket.AddLineInBlock(block, line);
    bd.AddLineInBlock(block, line);
    redrawPending = true;
}

void MainWindow::maketDelSelectedLine()
{
    LogAddDbg(tr("Del selected line?"));
    if (curItem == nullptr || curItem->type() != ItemLine::Type)
        return;
    const int block = curItem->data(1).toInt();
    const int line = curItem->data(2).toInt();
    refreshStaleBlocks();
    if (bd.isLineHavePoles(block, line)) {
        // The loop runs under the box, and its redraw would delete the button that has been clicked.
        lineBoxOpen = true;
        msgBoxWarnOK(tr("Строка не пустая!\nНельзя удалить."));
        lineBoxOpen = false;
        return;
    }
    maket.DelLineInBlock(block, line);
    bd.DelLineInBlock(block, line);
    redrawPending = true;
}
