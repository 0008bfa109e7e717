#pragma once

#include "emulator/receiptdata.h"
#include "emulator/templatetable.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace emulator {

/// Dots of one cell of the tape; a tape of n characters is n of these wide.
constexpr int kTapeCellWidth = 12;

/// A piece of text on a line, one character for each cell.
struct PaperText
{
    int cell = 0;
    QString text;
};

/// One printed line. All its cells are equal: the leftmost field decides on them.
struct PaperLine
{
    int height = 0;
    int cellWidth = 0;
    /// 2 for double width.
    int columns = 1;
    QList<PaperText> texts;
};

using Paper = QList<PaperLine>;

/// Size of one cell of a font in dots.
int fontCellWidth(int font);
int fontCellHeight(int font);

/// Lays a receipt out by a template. Lines of fields without any data are left out, and so are those that hold a
/// zero where the field does not want it; lines without fields are blank.
Paper layOut(const SubTable& rows, const QList<PaperPass>& passes, int lineLength);

/// Plain lines in the ordinary font.
Paper plainPaper(const QStringList& lines);

/// The paper as text, a character for each cell.
QString paperText(const Paper& paper);

} // namespace emulator
