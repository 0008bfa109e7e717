#pragma once

#include "model/templatetext.h"
#include "records.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QTest>

/// What the tests of template files share: records that can be told apart field by field.
namespace recordtools {

using Item = BD_T20Items::T20Item;
using records::kParams;

/// The fields of `actual` that are not as in `expected`, each as "name=value", of all twenty-four.
inline QStringList differences(const Item& actual, const Item& expected)
{
    QStringList found;
    const auto report = [&found](const char* name, const QString& value) {
        found.append(QStringLiteral("%1=%2").arg(QString::fromLatin1(name), value));
    };
    if (actual.FA_NEED != expected.FA_NEED)
        report("FA_NEED", actual.FA_NEED ? QStringLiteral("1") : QStringLiteral("0"));
    if (actual.BL_MASK != expected.BL_MASK)
        report("BL_MASK", QString::number(actual.BL_MASK, 16));
    if (actual.Type != expected.Type)
        report("Type", QString::number(actual.Type));
    for (const auto& [name, param] : kParams) {
        if (actual.*param != expected.*param)
            report(name, QString::number(actual.*param));
    }
    if (actual.Desc != expected.Desc)
        report("Desc", actual.Desc);
    if (actual.DescView != expected.DescView)
        report("DescView", actual.DescView);
    return found;
}

/// The same of whole stores, with the key before each difference; a key of one store alone is named too.
inline QStringList differences(const QMap<int, Item>& actual, const QMap<int, Item>& expected)
{
    QStringList found;
    for (auto it = actual.cbegin(); it != actual.cend(); ++it) {
        if (!expected.contains(it.key())) {
            found.append(QStringLiteral("%1: not expected").arg(it.key()));
            continue;
        }
        for (const auto& difference : differences(it.value(), expected[it.key()]))
            found.append(QStringLiteral("%1: %2").arg(QString::number(it.key()), difference));
    }
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        if (!actual.contains(it.key()))
            found.append(QStringLiteral("%1: missing").arg(it.key()));
    }
    return found;
}

/// A record whose fields all differ from those of a blank one, and but for FA_NEED from those of every other key
/// below 100.
inline Item markedItem(int key)
{
    Item item;
    item.FA_NEED = true;
    item.BL_MASK = 0x3000U + static_cast<quint32>(key);
    item.Type = 5000 + key;
    int base = 0;
    for (const auto& [name, param] : kParams)
        item.*param = (base += 100) + key;
    item.Desc = QStringLiteral("Прежнее: поле %1").arg(key);
    item.DescView = QStringLiteral("П. поле %1").arg(key);
    return item;
}

/// A store without fields; copied, because making the catalogue takes long.
inline BD_T20Items emptyStore()
{
    static const BD_T20Items empty;
    return empty;
}

/// How the lines of a file vote for the formats.
inline QList<int> votesFor(const QByteArray& data)
{
    const TemplateText text(data);
    QList<int> votes;
    emptyStore().LoadFrom_AnalizeType(text.lines(), votes);
    return votes;
}

/// True for the keys of the fields that every device wants.
inline bool isMandatory(int key)
{
    static constexpr struct
    {
        int first;
        int last;
    } kRanges[] = {{12, 12}, {16, 16}, {19, 19},  {33, 70},  {75, 78},
                   {81, 82}, {85, 94}, {95, 126}, {129, 134}};
    for (const auto& range : kRanges) {
        if (key >= range.first && key <= range.last)
            return true;
    }
    return false;
}

/// Columns "first", "first+1", …: `count` numbers that are all different.
inline QStringList countedColumns(int first, int count)
{
    QStringList columns;
    for (int i = 0; i < count; ++i)
        columns.append(QString::number(first + i));
    return columns;
}

/// Rows (text, value) of how a column is taken as a decimal number.
inline void addNumberRows()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    const auto row = [](const char* name, const char* text, int value) {
        QTest::newRow(name) << QString::fromUtf8(text) << value;
    };
    row("empty", "", 0);
    row("zero", "0", 0);
    row("digit", "7", 7);
    row("leading zeros are decimal", "010", 10);
    row("many leading zeros", "00000000000012", 12);
    row("blank before", "  7", 7);
    row("blank after", "7  ", 7);
    row("tabs around", "\t7\t", 7);
    row("carriage return after", "5\r", 5);
    row("plus", "+7", 7);
    row("minus", "-7", -7);
    row("blank and minus", " -7", -7);
    row("two minuses", "--7", 0);
    row("two signs", "+-7", 0);
    row("sign alone", "-", 0);
    row("blank after the sign", "- 7", 0);
    row("blank within", "7 7", 0);
    row("blanks alone", "   ", 0);
    row("letters", "abc", 0);
    row("letter after", "7a", 0);
    row("letter before", "a7", 0);
    row("hexadecimal", "0x10", 0);
    row("hexadecimal digits", "ff", 0);
    row("fraction", "1.5", 0);
    row("exponent", "1e2", 0);
    row("quoted", "\"7\"", 0);
    row("colon, the sign after nine", ":", 0);
    row("slash, the sign before zero", "/", 0);
    row("nine digits", "987654321", 987654321);
    row("ten digits", "1234567890", 1234567890);
    row("highest", "2147483647", 2147483647);
    row("beyond the highest", "2147483648", 0);
    row("lowest", "-2147483648", -2147483647 - 1);
    row("beyond the lowest", "-2147483649", 0);
    row("beyond 32 bits", "4294967297", 0);
    row("beyond 64 bits", "18446744073709551617", 0);
    row("Cyrillic", "семь", 0);
}

} // namespace recordtools
