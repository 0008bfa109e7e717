#include "emulator/paper.h"

#include "emulator/fieldtext.h"

#include <QMap>
#include <QTextCodec>

#include <algorithm>

namespace emulator {

namespace {

constexpr int kEmptyLineHeight = 15;
/// A text without an end must not use up the paper.
constexpr qsizetype kMaxPieces = 50;

using Fields = QList<const TemplateRow*>;

/// Geometry of a line, by its leftmost field; of two on the same cell the earlier row wins.
PaperLine blankLine(const Fields& fields)
{
    const TemplateRow* first =
        *std::min_element(fields.begin(), fields.end(), [](const TemplateRow* a, const TemplateRow* b) {
            return a->value(Param::X) < b->value(Param::X);
        });
    PaperLine line;
    line.columns = first->value(Param::DoubleWidth) != 0 ? 2 : 1;
    line.cellWidth = fontCellWidth(first->value(Param::Font)) * line.columns;
    line.height =
        fontCellHeight(first->value(Param::Font)) * (first->value(Param::DoubleHeight) != 0 ? 2 : 1);
    return line;
}

int widthOf(const TemplateRow& row, const Fields& fields, int cells)
{
    const int x = row.value(Param::X);
    if (row.value(Param::Expand) == 0)
        return row.value(Param::Size);
    int end = cells;
    for (const TemplateRow* other : fields)
        if (other->value(Param::X) > x)
            end = std::min(end, other->value(Param::X));
    return std::max(end - x, row.value(Param::Size));
}

/// A field that is alone on its line may move on the tape; beside others it keeps its cell.
int cellOf(const TemplateRow& row, const Fields& fields, int width, int cells)
{
    const int align = row.value(Param::AlignOnTape);
    if (fields.size() == 1 && align == kCentre)
        return std::max(0, (cells - width) / 2);
    if (fields.size() == 1 && align == kRight)
        return std::max(0, cells - width);
    return row.value(Param::X);
}

void addTail(const TemplateRow& row, PaperText& text)
{
    const int tail = row.value(Param::TailChar);
    if (tail > kBlank)
        text.text +=
            QTextCodec::codecForName("Windows-1251")->toUnicode(QByteArray(1, static_cast<char>(tail)));
}

Paper fieldLines(const SubTable& rows, const QList<int>& keys, const FieldValues& values, int tapeWidth)
{
    Fields fields;
    bool dropped = false;
    bool filled = false;
    for (const int key : keys) {
        const TemplateRow& row = rows[key - 1];
        const FieldValue value = values.value(key);
        fields.append(&row);
        dropped = dropped || (row.value(Param::DropIfZero) != 0 && value.isZero());
        filled = filled || !value.isEmpty();
    }
    if (dropped || !filled)
        return {};

    const PaperLine blank = blankLine(fields);
    const int cells = tapeWidth / blank.cellWidth;
    Paper lines{blank};
    for (const int key : keys) {
        const TemplateRow& row = rows[key - 1];
        const int width = widthOf(row, fields, cells);
        const QStringList pieces = fieldPieces(row, values.value(key), width).mid(0, kMaxPieces);
        for (qsizetype i = 0; i < pieces.size(); ++i) {
            if (i == lines.size())
                lines.append(blank);
            PaperText text{cellOf(row, fields, width, cells), pieces[i]};
            if (i + 1 == pieces.size() && !values.value(key).isEmpty())
                addTail(row, text);
            text.text.truncate(std::max(0, cells - text.cell));
            lines[i].texts.append(text);
        }
    }
    return lines;
}

/// Keys of the placed fields of a block, by their line.
QMap<int, QList<int>> linesOfBlock(const SubTable& rows, int block)
{
    QMap<int, QList<int>> lines;
    for (qsizetype i = 0; i < rows.size(); ++i)
        if (rows[i].isPlaced() && rows[i].value(Param::Block) == block)
            lines[rows[i].value(Param::Line)].append(static_cast<int>(i) + 1);
    return lines;
}

} // namespace

int fontCellWidth(int font)
{
    switch (font) {
    case 6:
        return 10;
    case 7:
        return 9;
    default:
        return 12;
    }
}

int fontCellHeight(int font)
{
    switch (font) {
    case 1:
        return 24;
    case 3:
        return 16;
    case 4:
    case 5:
        return 10;
    case 6:
    case 7:
        return 14;
    default:
        return 20;
    }
}

Paper layOut(const SubTable& rows, const QList<PaperPass>& passes, int lineLength)
{
    Paper paper;
    for (const PaperPass& pass : passes) {
        const QMap<int, QList<int>> lines = linesOfBlock(rows, pass.block);
        const int last = lines.isEmpty() ? 0 : lines.lastKey();
        for (int number = 1; number <= last; ++number) {
            if (lines.contains(number))
                paper += fieldLines(rows, lines[number], pass.values, lineLength * kTapeCellWidth);
            else
                paper.append({kEmptyLineHeight, kTapeCellWidth, 1, {}});
        }
    }
    return paper;
}

Paper plainPaper(const QStringList& lines)
{
    Paper paper;
    for (const QString& line : lines)
        paper.append({fontCellHeight(0), fontCellWidth(0), 1, {{0, line}}});
    return paper;
}

QString paperText(const Paper& paper)
{
    QString all;
    for (const PaperLine& line : paper) {
        QString text;
        for (const PaperText& piece : line.texts)
            for (qsizetype i = 0; i < piece.text.size(); ++i) {
                const qsizetype column = (piece.cell + i) * line.columns;
                text = text.leftJustified(column + 1);
                if (piece.text[i] != ' ')
                    text[column] = piece.text[i];
            }
        while (text.endsWith(' '))
            text.chop(1);
        all += text + '\n';
    }
    return all;
}

} // namespace emulator
