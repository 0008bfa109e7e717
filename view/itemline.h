#pragma once

#include <QGraphicsItem>

/// The guide of one print line on the tape: its edges and its character cells. data(1) is the block number and
/// data(2) the line number, both set by whoever makes it.
class ItemLine : public QGraphicsItem
{
public:
    enum { Type = 0x10003 };

    /// Sizes in scene units; `cellDX`, the width of a character cell, is above 4. `empty`: the line has no
    /// field. `titleMode`: 1 while headings are shown, else 2.
    ItemLine(bool empty, int titleMode, int width, int height, int cellDX);
    ~ItemLine() override = default;
    Q_DISABLE_COPY_MOVE(ItemLine)

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;
    int type() const override { return Type; }

    /// True while the selected field may stand in this line's block; a line that is not allowed is hatched.
    bool lineAllowed = true;

private:
    int lineEmpty;
    int lineTitleMode;
    int lineW;
    int lineH;
    int lineCellDX;
};
