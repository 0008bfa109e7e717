#include "view/itempurepic.h"

#include <QPainter>

ItemPurePic::ItemPurePic(int width, int height, const QPixmap& pixmap)
    : picW(width)
    , picH(height)
    , picPixmap(pixmap)
{
}

QRectF ItemPurePic::boundingRect() const
{
    return QRectF(0, 0, picW - 1, picH - 1);
}

void ItemPurePic::paint(QPainter* painter, const QStyleOptionGraphicsItem* /*option*/, QWidget* /*widget*/)
{
    const QRect target(330 - picW / 2, 225 - picH / 2, picW, picH);
    painter->drawPixmap(target, picPixmap, picPixmap.rect());
}
