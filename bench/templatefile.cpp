#include "bench/templatefile.h"

#include "model/bd_t20items.h"

namespace {

constexpr int kLastLine = 255;
constexpr int kPlaces = 510; // after so many types block and line come back
constexpr int kFieldsOfLine = 18;
constexpr int kFieldStep = 14;
constexpr int kFonts = 8;

} // namespace

QByteArray makeTemplateFile(int count)
{
    BD_T20Items bd;
    const int labels = static_cast<int>(bd.PolesLabels.size());
    for (int type = 0; type < count; ++type) {
        const int label = type % labels;
        BD_T20Items::T20Item item;
        item.FA_NEED = BD_T20Items::getFA_NEED(label + 1);
        item.BL_MASK = 0xffff;
        item.Type = type;
        item.Block = type % BD_T20Items::kBlockCount;
        item.Font = type % kFonts;
        item.X2Y = type % 2;
        item.Line = 1 + type % kLastLine;
        item.X = type / kPlaces % kFieldsOfLine * kFieldStep;
        item.Size = 1 + type % kFieldStep;
        item.FractFormat = type % 4;
        item.Brightness = 1;
        item.AlignInPole = 1 + type % 3;
        item.AlignOnTape = 1;
        item.TailChar = ' ';
        item.Desc = bd.PolesLabels.at(label);
        bd.AddPoleToBD(type + 1, item);
    }
    QStringList rows;
    bd.SaveToListWMask(rows);
    QByteArray bytes;
    for (const auto& row : rows)
        bytes += row.toUtf8() + '\n';
    return bytes;
}
