#include "view/itemblockheader.h"

#include <QPainter>

ItemBlockHeader::ItemBlockHeader(int width, int height, const QString& title)
    : headerW(width)
    , headerH(height)
    , headerTitle(title)
{
    setFlag(ItemIsSelectable);
}

QRectF ItemBlockHeader::boundingRect() const
{
    return QRectF(0, 0, headerW - 1, headerH - 1);
}

void ItemBlockHeader::paint(QPainter* painter, const QStyleOptionGraphicsItem* /*option*/,
                            QWidget* /*widget*/)
{
    const QRectF body(0, 0, headerW - 1, headerH - 1);
    painter->setPen(Qt::darkBlue);
    painter->setBrush(isSelected() ? Qt::yellow : Qt::lightGray);
    painter->drawRects(&body, 1);
    painter->setPen(Qt::black);
    painter->drawText(QPointF(6, headerH - 4), headerTitle);
    painter->setPen(Qt::yellow);
    painter->drawText(QPointF(5, headerH - 5), headerTitle);
}
