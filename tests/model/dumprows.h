#pragma once

#include "recordtools.h"

/// Lines and records of the format "new, 9*9": one line for each of the nine table fields of a row.
namespace dumprows {

using recordtools::Item;

inline QString line(int row, int field, const QString& value, QChar separator = ';')
{
    return QStringList{"20", QString::number(row), QString::number(field), "0", "0", "0", "0", "0", value}
        .join(separator);
}

inline QString byteText(int value)
{
    return QString("%1").arg(value, 2, 16, QChar('0'));
}

/// The nine lines of a row, whose table fields 1 to 9 hold `values`.
inline QStringList rowLines(int row, const QList<int>& values)
{
    QStringList lines;
    for (int field = 1; field <= 9; ++field)
        lines.append(line(row, field, byteText(values.at(field - 1))));
    return lines;
}

/// A row whose bytes differ from field to field and from row to row (below 16).
inline QList<int> markedBytes(int row)
{
    QList<int> bytes;
    for (int field = 1; field <= 9; ++field)
        bytes.append(field * 16 + row);
    return bytes;
}

/// Where the numbers lie in the nine bytes.
struct Packed
{
    int field;
    int lowBit;
    int width;
    int Item::*param;
};

inline constexpr Packed kPacking[] = {
    {1, 0, 8, &Item::Block},      {2, 4, 4, &Item::Font},        {2, 3, 1, &Item::X2X},
    {2, 2, 1, &Item::X2Y},        {2, 0, 2, &Item::PoleFlags},   {3, 0, 8, &Item::LineGap},
    {4, 0, 8, &Item::Line},       {5, 0, 8, &Item::X},           {6, 0, 8, &Item::Size},
    {7, 7, 1, &Item::DropIfZero}, {7, 6, 1, &Item::PressRight},  {7, 5, 1, &Item::Expand},
    {7, 4, 1, &Item::CutToWidth}, {7, 2, 2, &Item::MaskMode},    {7, 0, 2, &Item::FractFormat},
    {8, 4, 4, &Item::Brightness}, {8, 2, 2, &Item::AlignInPole}, {8, 0, 2, &Item::AlignOnTape},
    {9, 0, 8, &Item::TailChar},
};

/// The record of a complete row, with the descriptions of the catalogue.
inline Item recordOf(int row, const QList<int>& bytes)
{
    static const BD_T20Items catalogue;
    Item item;
    item.FA_NEED = recordtools::isMandatory(row);
    item.BL_MASK = 0xffff;
    item.Type = row;
    for (const auto& packed : kPacking)
        item.*packed.param = bytes.at(packed.field - 1) / (1 << packed.lowBit) % (1 << packed.width);
    item.Desc = catalogue.PolesLabels.at(row - 1);
    item.DescView = catalogue.PolesLabelsView.at(row - 1);
    return item;
}

inline QMap<int, Item> read(const QStringList& lines)
{
    BD_T20Items bd = recordtools::emptyStore();
    bd.LoadFromListV02(lines);
    return bd.items;
}

} // namespace dumprows
