#pragma once

#include <QGraphicsItem>
#include <QPixmap>

/// A bare picture in the middle of the view, wherever the item stands.
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
