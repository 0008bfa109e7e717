#include "view/itempole.h"

#include <QPainter>

#include <algorithm>

namespace {

/// Length of the body of a field that is too long to show; a tail of half height follows it.
constexpr int kCutBody = 631;

/// Of a longer text no more characters than this are drawn, which keeps painting short: the shape clips long before.
constexpr int kMostCharacters = 2 * ItemPole::kWidest;

/// The text once in the colour of the shadow, and once in green one unit left and above.
void drawShadowed(QPainter* painter, int x, int y, const QString& text, Qt::GlobalColor shadow)
{
    painter->setPen(shadow);
    painter->drawText(QPointF(x + 1, y + 1), text);
    painter->setPen(Qt::green);
    painter->drawText(QPointF(x, y), text);
}

} // namespace

ItemPole::ItemPole(int key, int dx, int height, int size, const QString& text)
    : poleText(text)
    , poleSize(size)
    , poleDX(dx)
    , poleDY(height)
    , poleW(std::min(dx * size, kWidest))
{
    setData(1, key);
    setFlags(ItemIsMovable | ItemIsSelectable | ItemClipsToShape);
}

QRectF ItemPole::boundingRect() const
{
    return QRectF(0, 0, poleW, poleDY);
}

void ItemPole::paint(QPainter* painter, const QStyleOptionGraphicsItem* /*option*/, QWidget* /*widget*/)
{
    const int n = poleSize * poleDX;
    painter->setPen(Qt::NoPen);
    painter->setBrush(Qt::gray);
    if (n > kWidest) {
        const QRectF body[] = {QRectF(0, 0, kCutBody, poleDY - 1),
                               QRectF(kCutBody, 0, kWidest - kCutBody, poleDY / 2)};
        painter->drawRects(body, 2);
    } else {
        const QRectF body(0, 0, n, poleDY - 1);
        painter->drawRects(&body, 1);
    }
    const QRectF firstCell(0, 0, poleDX, poleDY - 1);
    painter->setBrush(isSelected() ? Qt::yellow : Qt::darkGray);
    painter->drawRects(&firstCell, 1);

    paintText(painter);
    if (isSelected())
        paintSelection(painter);
}

void ItemPole::paintText(QPainter* painter) const
{
    const int mid = poleDY / 2;
    if (poleSize <= 1) {
        const bool isClass = poleText.size() > 1 && poleText.at(1) == u'.';
        drawShadowed(painter, 3, mid + 3, poleText.left(isClass ? 2 : 1), Qt::darkBlue);
    } else if (!poleMono) {
        drawShadowed(painter, 3, mid + 3, poleText.left(kMostCharacters), Qt::darkBlue);
    } else {
        // The shape clips; but no glyph reaches back from this far, so a long text need not be walked to its end.
        for (int i = 0, x = 1; i < poleText.size() && x <= poleW + kWidest; ++i, x += poleDX)
            drawShadowed(painter, x, mid + 3, poleText.mid(i, 1), Qt::black);
    }
}

void ItemPole::paintSelection(QPainter* painter) const
{
    int r = poleSize * poleDX - 1;
    if (r > poleW)
        r = poleW - 1;
    const QLineF frame[] = {QLineF(0, 0, r, 0), QLineF(0, poleDY - 1, r, poleDY - 1),
                            QLineF(r, 0, r, poleDY - 1)};
    painter->setPen(Qt::yellow);
    painter->drawLines(frame, 3);
}

void ItemPole::mousePressEvent(QGraphicsSceneMouseEvent* /*event*/) {}

void ItemPole::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    QGraphicsItem::mouseMoveEvent(event);
}

void ItemPole::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* /*event*/) {}

QVariant ItemPole::itemChange(GraphicsItemChange change, const QVariant& value)
{
    return QGraphicsItem::itemChange(change, value);
}
