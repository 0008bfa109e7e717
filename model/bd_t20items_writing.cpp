#include "model/bd_t20items.h"

#include <algorithm>

namespace {

using T20Item = BD_T20Items::T20Item;

QString number(int value)
{
    return QString::number(value);
}

QString flag(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

QString maskText(quint32 mask)
{
    return QStringLiteral("%1").arg(mask, 4, 16, QLatin1Char('0'));
}

QString typeText(int type)
{
    if (type <= 9)
        return QLatin1String("00") + number(type);
    if (type <= 99)
        return QLatin1String("0") + number(type);
    return number(type);
}

QString zeroFiller(int tailChar)
{
    if (tailChar >= 100)
        return QStringLiteral("0");
    return tailChar >= 10 ? QStringLiteral("00") : QStringLiteral("000");
}

/// One row of the format "new, 26+str".
QString maskRow(const T20Item& item)
{
    constexpr qsizetype kHeadWidth = 32; // of the first two pieces and the dashes
    const QString head = QStringLiteral("%1;%2;%3;%4;%5")
                             .arg(flag(item.FA_NEED), maskText(item.BL_MASK), typeText(item.Type),
                                  number(item.Block), number(item.Font)) +
                         QStringLiteral(";%1;%2;%3;%4;%5;%6;%7")
                             .arg(number(item.X2X), number(item.X2Y), number(item.PoleFlags),
                                  number(item.LineGap), number(item.Line), number(item.X), number(item.Size));
    const QString dashes(std::max<qsizetype>(kHeadWidth - head.size(), 0), u'-');
    return head +
           QStringLiteral(";%1;%2;%3;%4;%5;%6;%7;%8;%9;%10;%11")
               .arg(dashes, number(item.DropIfZero), number(item.PressRight), number(item.Expand),
                    number(item.CutToWidth), number(item.MaskMode), number(item.FractFormat),
                    number(item.Brightness), number(item.AlignInPole), number(item.AlignOnTape),
                    number(item.TailChar)) +
           QStringLiteral(";%1;%2;%3").arg(zeroFiller(item.TailChar), QStringLiteral("0"), item.Desc);
}

} // namespace

int BD_T20Items::SaveToListWMask(QStringList& rows) const
{
    rows.clear();
    if (items.isEmpty())
        return -1;
    rows.reserve(items.size());
    for (const auto& item : items)
        rows.append(maskRow(item));
    return 0;
}

int BD_T20Items::SaveToList(QStringList& rows) const
{
    rows.clear();
    if (items.isEmpty())
        return -1;
    rows.reserve(items.size());
    for (const auto& item : items) {
        QStringList columns;
        for (const auto param : T20Item::kDeviceParams)
            columns.append(number(item.*param));
        columns.append(item.Desc);
        rows.append(columns.join(u';'));
    }
    return 0;
}

int BD_T20Items::ExportNameList(QStringList& rows) const
{
    rows.clear();
    if (items.isEmpty())
        return 1;
    rows.append(QStringLiteral("idx;Type;Desc"));
    int index = 0;
    for (const auto& item : items)
        rows.append(QStringLiteral("%1;%2;%3").arg(number(++index), number(item.Type), item.Desc));
    return 0;
}

int BD_T20Items::ExportMaskList(QStringList& rows) const
{
    rows.clear();
    if (items.isEmpty())
        return 1;
    rows.append(QStringLiteral("idx;Type;FA_NEED;BL_MASK"));
    int index = 0;
    for (const auto& item : items)
        rows.append(
            QStringLiteral("%1;%2;%3;%4")
                .arg(number(++index), number(item.Type), flag(item.FA_NEED), QString::number(item.BL_MASK)));
    return 0;
}
