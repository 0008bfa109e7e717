#pragma once

#include "model/bd_t20items.h"
#include "tests/support/namedparams.h"

#include <QList>
#include <QMap>
#include <QString>

/// Records for the tests of the template model.
namespace records {

/// A field that validation accepts, and that stands on the receipt if `size` is above 0.
inline T20Item fieldAt(int block, int line, int x, int size = 5)
{
    T20Item item;
    item.Block = block;
    item.Line = line;
    item.X = x;
    item.Size = size;
    return item;
}

/// A record whose members are all set and all different: 100 and up in the order of the members.
inline T20Item distinctRecord()
{
    T20Item item;
    item.FA_NEED = true;
    item.BL_MASK = 101;
    item.Type = 102;
    int value = 103;
    for (const auto& [name, param] : kParams)
        item.*param = value++;
    item.Desc = QStringLiteral("Класс: полное");
    item.DescView = QStringLiteral("краткое");
    return item;
}

/// True if all 24 members are equal; a null text equals only a null text.
inline bool isSame(const T20Item& a, const T20Item& b)
{
    for (const auto& [name, param] : kParams) {
        if (a.*param != b.*param)
            return false;
    }
    return a.FA_NEED == b.FA_NEED && a.BL_MASK == b.BL_MASK && a.Type == b.Type && a.Desc == b.Desc &&
           a.Desc.isNull() == b.Desc.isNull() && a.DescView == b.DescView &&
           a.DescView.isNull() == b.DescView.isNull();
}

/// True if the record is as the map inserts it.
inline bool isBlank(const T20Item& item)
{
    for (const auto& [name, param] : kParams) {
        if (item.*param != 0)
            return false;
    }
    return !item.FA_NEED && item.BL_MASK == 0 && item.Type == 0 && item.Desc.isNull() &&
           item.DescView.isNull();
}

/// True if both stores hold the same keys with the same records.
inline bool isSame(const QMap<int, T20Item>& a, const QMap<int, T20Item>& b)
{
    if (a.keys() != b.keys())
        return false;
    for (auto it = a.cbegin(); it != a.cend(); ++it) {
        if (!isSame(it.value(), b.value(it.key())))
            return false;
    }
    return true;
}

/// A store with the given fields under the keys 1, 2, …
inline BD_T20Items storeOf(const QList<T20Item>& fields)
{
    BD_T20Items bd;
    for (int i = 0; i < fields.size(); ++i)
        bd.AddPoleToBD(i + 1, fields.at(i));
    return bd;
}

/// The same, with its blocks computed.
inline BD_T20Items computedStoreOf(const QList<T20Item>& fields)
{
    BD_T20Items bd = storeOf(fields);
    bd.ReComputeBDBlocks();
    return bd;
}

/// The lines of all fields in key order.
inline QList<int> linesOf(const BD_T20Items& bd)
{
    QList<int> lines;
    for (const auto& item : bd.items)
        lines.append(item.Line);
    return lines;
}

} // namespace records
