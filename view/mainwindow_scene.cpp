#include "app/mainwindow.h"

#include "view/itemblockheader.h"
#include "view/itemline.h"
#include "view/itempole.h"

#include <QGraphicsProxyWidget>
#include <QPushButton>

namespace {

// A cell width of this or less is no cell to draw.
constexpr int kNoCell = 4;
constexpr int kEmptyLineCell = 30;
constexpr int kLostFieldCell = 5;
constexpr int kLineButtonSize = 24;

// Halvings of the scene by the index of its items. Each rebuild fells the index: a deeper one costs more to grow
// than it saves until then.
constexpr int kIndexDepth = 4;

QPushButton* makeLineButton(const QString& text)
{
    auto* const button = new QPushButton(text);
    button->setFixedSize(kLineButtonSize, kLineButtonSize);
    // Else the proxy shows it first, with all that a first showing takes.
    button->hide();
    return button;
}

} // namespace

void MainWindow::rebuildView()
{
    curItem = nullptr;
    prevItemGone = prevItem != nullptr;
    scene.setBspTreeDepth(kIndexDepth);
    // Nothing stays, so no item need report where it was.
    scene.update();
    scene.clear();
    scene.setBackgroundBrush(Qt::white);
    LogAddDbg(tr("Scene cleared!"));

    // The order of the calls is the stacking order of the items.
    if (!maket.blocks.isEmpty()) {
        addTapeFrame();
        if (maket.getBlockTitleEnabled())
            addBlockHeaders();
        addGuideLines();
    }
    addPoles();
    // White on white: it only stretches the scene to the left, where the "+" marker goes.
    scene.addLine(-30, 0, -29, 0, QPen(Qt::white));
    addLineButtons();
}

void MainWindow::addTapeFrame()
{
    const int yEnd = maket.getLineBaseY(maket.blockCount - 1, 0) + 1;
    const QPen pen(Qt::darkBlue);
    scene.addLine(0, 0, tapeWidth, 0, pen);
    scene.addLine(0, 0, 0, yEnd, pen);
    scene.addLine(tapeWidth + 1, 0, tapeWidth + 1, yEnd, pen);
}

void MainWindow::addBlockHeaders()
{
    for (int b = 0; b < maket.blockCount; ++b) {
        auto* const header = new ItemBlockHeader(tapeWidth, maket.headerDY, gl.blockTitles.value(b));
        header->setPos(1, maket.getLineBaseY(b, 0) + 1);
        header->setData(1, b);
        scene.addItem(header);
    }
}

void MainWindow::addGuideLines()
{
    const int mode = maket.getBlockTitleEnabled() ? 1 : 2;
    for (int b = 0; b < maket.blockCount; ++b) {
        for (int l = 1; l < maket.getBlockKolLines(b); ++l) {
            int dx = maket.getLineCharDX(b, l);
            if (dx <= kNoCell)
                dx = kEmptyLineCell;
            auto* const line =
                new ItemLine(!bd.isLineHavePoles(b, l), mode, tapeWidth, maket.getLineHeight(b, l), dx);
            line->setPos(1, maket.getLineBaseY(b, l) + 1);
            line->setData(1, b);
            line->setData(2, l);
            scene.addItem(line);
        }
    }
}

void MainWindow::addPoles()
{
    const auto count = bd.items.size();
    for (int key = 1; key <= count; ++key) {
        if (!bd.isItemVisibled(key))
            continue;
        const auto& item = bd.getPoleByKey(key);
        int dx = maket.getLineCharDX(item.Block, item.Line);
        if (dx <= kNoCell)
            dx = kLostFieldCell;
        auto* const pole =
            new ItemPole(key, dx, maket.getLineHeight(item.Block, item.Line), item.Size, item.DescView);
        pole->poleMono = maket.fontMonoWide;
        pole->setPos(dx * item.X + 1, maket.getLineBaseY(item.Block, item.Line) + 1);
        scene.addItem(pole);
    }
}

void MainWindow::addLineButtons()
{
    btnLineAdd = makeLineButton(tr("+"));
    btnLineDel = makeLineButton(tr("-"));
    connect(btnLineAdd, &QPushButton::clicked, this, &MainWindow::maketAddSelectedLine);
    connect(btnLineDel, &QPushButton::clicked, this, &MainWindow::maketDelSelectedLine);
    proxyLineAdd = scene.addWidget(btnLineAdd);
    proxyLineDel = scene.addWidget(btnLineDel);
    proxyLineAdd->hide();
    proxyLineDel->hide();
}

void MainWindow::RedrawOnly()
{
    curItem = nullptr;
    maket.ReComputeBDBlocks(false);
    rebuildView();
}

void MainWindow::RedrawWithBD()
{
    curItem = nullptr;
    bd.ReComputeBDBlocks();
    maket.ReComputeBDBlocks(false);
    rebuildView();
}
