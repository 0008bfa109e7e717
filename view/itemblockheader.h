#pragma once

#include <QGraphicsItem>
#include <QString>

/// The heading of a block on the tape. data(1) is the block number, set by whoever makes it.
class ItemBlockHeader : public QGraphicsItem
{
public:
    enum { Type = 0x10001 };

    /// Sizes in scene units.
    ItemBlockHeader(int width, int height, const QString& title);
    ~ItemBlockHeader() override = default;
    Q_DISABLE_COPY_MOVE(ItemBlockHeader)

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;
    int type() const override { return Type; }

private:
    int headerW;
    int headerH;
    QString headerTitle;
};
