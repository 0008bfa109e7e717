#pragma once

#include "recordtools.h"

/// Lines and records of the two formats that have one line for each record and no number in it:
/// "old, 20+[str]" (`old` is true) and "new, 19+str".
namespace oldrecords {

using recordtools::Item;

inline const QString kDesc = "Свой: текст";

/// Columns 50, 51, 52, … with a description behind the numbers of the format.
inline QStringList columnsOf(bool old)
{
    return recordtools::countedColumns(50, old ? 20 : 19) << kDesc;
}

inline QString lineOf(bool old)
{
    return columnsOf(old).join(';');
}

inline QString lineWith(bool old, int column, const QString& text)
{
    QStringList columns = columnsOf(old);
    columns[column] = text;
    return columns.join(';');
}

/// What columnsOf() stand for as record `key`.
inline Item recordOf(bool old, int key)
{
    Item item;
    item.FA_NEED = recordtools::isMandatory(key);
    item.BL_MASK = 0xffff;
    item.Type = key;
    item.Block = 50;
    item.Font = 51;
    item.X2X = 52;
    item.X2Y = 53;
    item.PoleFlags = 54;
    item.LineGap = 55;
    item.Line = 56;
    item.X = 57;
    item.Size = 58;
    if (old) {
        item.FractFormat = 59;
        item.MaskMode = 60 * 2 + 1;
        item.CutToWidth = 62;
        item.Expand = 63;
        item.PressRight = 64;
        item.DropIfZero = 65;
        item.Brightness = 66;
        item.AlignInPole = 67;
        item.AlignOnTape = 68;
        item.TailChar = 69;
    } else {
        item.DropIfZero = 59;
        item.PressRight = 60;
        item.Expand = 61;
        item.CutToWidth = 62;
        item.MaskMode = 63;
        item.FractFormat = 64;
        item.Brightness = 65;
        item.AlignInPole = 66;
        item.AlignOnTape = 67;
        item.TailChar = 68;
    }
    item.Desc = kDesc;
    item.DescView = "С.: текст";
    return item;
}

inline QMap<int, Item> read(const QStringList& lines, bool old)
{
    BD_T20Items bd = recordtools::emptyStore();
    bd.LoadFromListV01(lines, old);
    return bd.items;
}

/// One row for each format, with the values that `add` appends.
template <typename Add>
void forBoth(const QString& name, Add add)
{
    add(QTest::newRow(qPrintable("old: " + name)) << true);
    add(QTest::newRow(qPrintable("new: " + name)) << false);
}

inline void bothFormats()
{
    QTest::addColumn<bool>("old");
    forBoth("", [](QTestData&) {});
}

} // namespace oldrecords
