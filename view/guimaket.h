#pragma once

#include <QList>
#include <QMap>
#include <QString>

class BD_T20Items;

/// The geometry of the tape: where each block and line stands, in scene units.
///
/// One scene unit is one printer dot at scale 100%. Blocks follow each other downward without gaps; line 0 of
/// a block is the place of its heading, print lines count from 1. A block that does not exist, or a line
/// beyond its last, has height and cell width 0 and base -1.
class GUIMaket
{
public:
    /// The geometry of one block.
    struct T_MBlock
    {
        int kolLines = 0;  ///< number of lines, line 0 included
        int baseY = 0;     ///< y of the block's top
        QList<int> lineDY; ///< height of each line
        QList<int> lineDX; ///< width of a character cell of each line; 0 on a line without fields

        /// Sum of the heights of all lines.
        int getAllBlockDY() const;

        /// y of the top of `line`; `baseY` for a line of 0 or below, -1 for one beyond the last.
        int getLineBaseY(int line) const;

        /// Replaces both lists by `count` zeros.
        void CreateBDLines(int count);
    };

    GUIMaket();

    /// Width of a character cell of `font` in dots.
    static int FontSizeDX(int font);

    /// Height of a line of `font` in dots.
    static int FontSizeDY(int font);

    bool getShablonLoaded() const { return shablonLoaded; }
    void setShablonLoaded(bool loaded) { shablonLoaded = loaded; }

    /// Scale step, 0 to 4; 2 is 100%.
    int getScale() const { return scale; }
    void setScale(int step) { scale = step; }

    bool getBlockTitleEnabled() const { return blockTitleEnabled; }
    void setBlockTitleEnabled(bool enabled) { blockTitleEnabled = enabled; }

    /// Empties `blocks` and nothing else.
    void Clear();

    /// Replaces `blocks` by `count` new ones with empty lists.
    void CreateBDBlocks(int count);

    /// Number of lines of `block`, line 0 included.
    int getBlockKolLines(int block) const;

    /// y of the top of `line` in `block`, see T_MBlock::getLineBaseY().
    int getLineBaseY(int block, int line) const;

    /// Width of a character cell of `line` in `block`.
    int getLineCharDX(int block, int line) const;

    /// Height of `line` in `block`.
    int getLineHeight(int block, int line) const;

    /// Adds a line at the end of `block`; which line opens is the model's business. Sizes are due to the next
    /// ReComputeBDBlocks().
    void AddLineInBlock(int block, int line);

    /// Removes `line` from `block`; the heading's line and lines beyond the last stay.
    void DelLineInBlock(int block, int line);

    /// Computes all sizes and positions from the model. With `rebuild` the number of lines of each block
    /// comes from the model, else each block keeps its own, so that lines added by hand survive. Returns 0,
    /// or 1 if there is nothing to do: no model, no fields, or no blocks to keep.
    int ReComputeBDBlocks(bool rebuild);

    QList<T_MBlock> blocks;
    BD_T20Items* pBD = nullptr; ///< the model to read; not owned
    QMap<int, QString> titles;
    QMap<int, QString> yesNoNames;
    QMap<int, QString> alignTitles;
    QMap<int, QString> formatTitles;
    int scale = 2;
    int headerDX = 384; ///< stands as the cell width of every line 0
    bool blockTitleEnabled = false;
    bool fontMonoWide = false; ///< field text is drawn one character to a cell
    bool shablonLoaded = false;
    int blockCount = 10;
    int headerDY = 21;    ///< height of line 0 while headings are shown
    int emptyLineDY = 15; ///< height of a line without fields

private:
    const T_MBlock* blockAt(int block) const;
};
