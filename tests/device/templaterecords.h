#pragma once

#include <QList>
#include <QString>

#include <json/json.h>

// Records of the template table as a device or a file gives them.

/// A record of sub-table `subTable`; no one looks at its row.
inline Json::Value record(int subTable, int first, int last, const QString& v)
{
    Json::Value value(Json::objectValue);
    value["t"] = 20;
    value["s"] = subTable;
    value["r"] = 1;
    value["p1"] = first;
    value["p2"] = last;
    value["v"] = v.toStdString();
    return value;
}

/// A list of these records.
inline Json::Value listOf(const QList<Json::Value>& records)
{
    Json::Value list(Json::arrayValue);
    for (const auto& value : records)
        list.append(value);
    return list;
}

inline QString twoDigits(int number)
{
    return QString::number(number, 16).rightJustified(2, u'0').toUpper();
}

/// The digits of a group of row `row`, counted from 0, whose parameters from `first` on have these values.
inline QString groupDigits(int row, int first, const QList<int>& values)
{
    const int last = first + static_cast<int>(values.size()) - 1;
    QString digits = twoDigits(first) + twoDigits(last) + twoDigits(row % 256) + twoDigits(row / 256) +
                     twoDigits(static_cast<int>(values.size()) * 14) + "00";
    for (int i = 0; i < values.size(); ++i)
        digits += twoDigits(first + i) + "000A00010001000802000100" + twoDigits(values.at(i));
    return digits;
}

/// The four records of a field that passes every check.
inline QList<Json::Value> field(int row, int subTable = 1)
{
    return {record(subTable, 1, 6, groupDigits(row, 1, {3, 1, 0, 0, 0, 2})),
            record(subTable, 7, 12, groupDigits(row, 7, {row % 200 + 1, 0, 10, 0, 0, 0})),
            record(subTable, 13, 18, groupDigits(row, 13, {0, 0, 0, 7, 1, 1})),
            record(subTable, 19, 19, groupDigits(row, 19, {32}))};
}

/// The records of good fields in these rows.
inline QList<Json::Value> fields(const QList<int>& rows)
{
    QList<Json::Value> records;
    for (const int row : rows)
        records += field(row);
    return records;
}
