#include "view/itemline.h"

#include <QPainter>
#include <QVarLengthArray>

namespace {

constexpr int kMostCells = 65;

} // namespace

ItemLine::ItemLine(bool empty, int titleMode, int width, int height, int cellDX)
    : lineEmpty(empty ? 1 : 0)
    , lineTitleMode(titleMode)
    , lineW(width)
    , lineH(height)
    , lineCellDX(cellDX)
{
    setFlag(ItemIsSelectable);
}

QRectF ItemLine::boundingRect() const
{
    return QRectF(0, 0, lineW - 1, lineH - 1);
}

void ItemLine::paint(QPainter* painter, const QStyleOptionGraphicsItem* /*option*/, QWidget* /*widget*/)
{
    const QPen withTitles(Qt::lightGray);
    const QPen withoutTitles(Qt::lightGray);
    painter->setPen(lineTitleMode == 1 ? withTitles : withoutTitles);

    if (!lineAllowed) {
        const QRectF hatched(0, 0, lineW, lineH - 1);
        painter->setBrush(Qt::lightGray);
        painter->setBrush(Qt::DiagCrossPattern);
        painter->drawRects(&hatched, 1);
    }
    if (isSelected() || lineEmpty != 0) {
        const QRectF body(0, 0, lineW, lineH);
        painter->setBrush(isSelected() ? Qt::yellow : Qt::darkMagenta);
        painter->drawRects(&body, 1);
    }

    QVarLengthArray<QLineF, 2 + 2 * kMostCells> lines;
    lines.append(QLineF(0, 0, lineW - 1, 0));
    lines.append(QLineF(0, lineH - 1, lineW - 1, lineH - 1));
    int left = 0;
    int right = lineCellDX - 1;
    for (int cell = 1; right < lineW && cell <= kMostCells; ++cell) {
        lines.append(QLineF(left, 0, left, lineH - 1));
        lines.append(QLineF(right, 0, right, lineH - 1));
        left += lineCellDX;
        right += lineCellDX;
    }
    painter->drawLines(lines.constData(), static_cast<int>(lines.size()));
}
