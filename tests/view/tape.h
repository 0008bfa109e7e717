#pragma once

#include "model/bd_t20items.h"
#include "view/guimaket.h"

/// A template of fields and the layout that reads it.
struct Tape
{
    Tape()
    {
        maket.pBD = &bd;
        maket.setBlockTitleEnabled(true);
    }

    /// Adds a visible field of one character, font 2, and brings the model's blocks up to date.
    BD_T20Items::T20Item& place(int block, int line, int x = 0)
    {
        BD_T20Items::T20Item item;
        item.Block = block;
        item.Line = line;
        item.X = x;
        item.Size = 1;
        item.Font = 2;
        const int key = static_cast<int>(bd.items.size()) + 1;
        bd.AddPoleToBD(key, item);
        bd.ReComputeBDBlocks();
        return bd.items[key];
    }

    BD_T20Items bd;
    GUIMaket maket;
};

/// All numbers of a layout in one text, to see whether anything changed.
inline QString numbersOf(const GUIMaket& maket)
{
    QString text;
    for (const auto& block : maket.blocks) {
        text += QStringLiteral("%1 at %2:").arg(block.kolLines).arg(block.baseY);
        for (const int height : block.lineDY)
            text += QStringLiteral(" %1").arg(height);
        text += QStringLiteral(" /");
        for (const int width : block.lineDX)
            text += QStringLiteral(" %1").arg(width);
        text += QLatin1Char('\n');
    }
    return text;
}
