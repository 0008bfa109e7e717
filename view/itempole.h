#pragma once

#include <QGraphicsItem>
#include <QString>

/// The picture of one field on the tape. data(1) is the field's key.
///
/// A field is selected when the mouse is released over it. It can be dragged on the screen, but nothing reads
/// its new place: the next rebuild puts the picture back.
class ItemPole : public QGraphicsItem
{
public:
    enum { Type = 0x10002 };

    /// The widest that a field is painted, in scene units.
    static constexpr int kWidest = 633;

    /// `dx`: width of a character cell, `height`: that of the line, both in scene units; `size`: width of the
    /// field in characters; `text`: what to show.
    ItemPole(int key, int dx, int height, int size, const QString& text);
    ~ItemPole() override = default;
    Q_DISABLE_COPY_MOVE(ItemPole)

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;
    int type() const override { return Type; }

    bool poleMono = false; ///< the text is drawn one character to a cell

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

private:
    void paintText(QPainter* painter) const;
    void paintSelection(QPainter* painter) const;

    QString poleText;
    int poleSize;
    int poleDX;
    int poleDY;
    int poleW;
    [[maybe_unused]] bool poleReserved = false;
};
