#pragma once

#include <QGraphicsItem>
#include <QPixmap>

/// A bare picture, painted centred on a fixed point: 330 right of and 225 below the item's origin.
class ItemPurePic : public QGraphicsItem
{
public:
    /// Sizes in scene units.
    ItemPurePic(int width, int height, const QPixmap& pixmap);
    ~ItemPurePic() override = default;
    Q_DISABLE_COPY_MOVE(ItemPurePic)

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    int picW;
    int picH;
    QPixmap picPixmap;
};
