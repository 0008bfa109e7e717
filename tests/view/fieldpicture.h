#pragma once

#include "picture.h"

/// A field without its text and its selection frame: the body in gray with the first cell in `firstCell`. A
/// field of more than 633 units ends in a notch of half height.
inline Picture bareField(int dx, int height, int size, Qt::GlobalColor firstCell = Qt::darkGray)
{
    Picture picture(700, height);
    const int length = dx * size;
    if (length > 633) {
        picture.fill(0, 0, 631, height - 1, Qt::gray);
        picture.fill(631, 0, 2, height / 2, Qt::gray);
    } else {
        picture.fill(0, 0, length, height - 1, Qt::gray);
    }
    picture.fill(0, 0, dx, height - 1, firstCell);
    return picture;
}

/// Adds a text in green with its shadow one unit right and below.
inline void writeShadowed(Picture& picture, int x, int y, const QString& text, Qt::GlobalColor shadow,
                          const QFont& font = QFont())
{
    picture.write(x + 1, y + 1, text, shadow, font);
    picture.write(x, y, text, Qt::green, font);
}

/// Adds the frame of a selected field: yellow along the top, the bottom and column `right`.
inline void drawFrame(Picture& picture, int right, int height)
{
    picture.fill(0, 0, right + 1, 1, Qt::yellow);
    picture.fill(0, height - 1, right + 1, 1, Qt::yellow);
    picture.fill(right, 0, 1, height, Qt::yellow);
}
