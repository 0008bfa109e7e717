#include "model/bd_t20items.h"

#include "device/hexdigit.h"
#include "model/linecolumns.h"

#include <QObject>

#include <algorithm>
#include <limits>

namespace {

using T20Item = BD_T20Items::T20Item;

constexpr int kShortestRecord = 39; // a line of fewer characters is no record
constexpr int kOldColumns = 20;
constexpr int kDumpColumns = 9;
constexpr int kMaskColumns = 26;
constexpr int kShortestDesc = 4;
constexpr quint32 kAllBlocks = 0xffff;
constexpr quint32 kUnreadableMask = 0xfff;

bool isComment(const QString& line)
{
    return line.startsWith(u'#');
}

bool isTooShort(const QString& line)
{
    return line.size() < kShortestRecord;
}

/// True for a number other than 0, and for the plain text "0".
bool isBlockNumber(const LineColumns& columns)
{
    return columns.number(0) != 0 || columns[0] == u"0";
}

/// Columns 0 to 18 are the device's parameters in their order.
void readParams(T20Item& item, const LineColumns& columns)
{
    int column = 0;
    for (const auto param : T20Item::kDeviceParams)
        item.*param = columns.number(column++);
}

/// The oldest order of columns, in which each bit of MaskMode has a column of its own.
void readOldParams(T20Item& item, const LineColumns& columns)
{
    int column = 0;
    for (const auto param :
         {&T20Item::Block, &T20Item::Font, &T20Item::X2X, &T20Item::X2Y, &T20Item::PoleFlags,
          &T20Item::LineGap, &T20Item::Line, &T20Item::X, &T20Item::Size, &T20Item::FractFormat})
        item.*param = columns.number(column++);

    // Clamped, so that a number out of range stays one and is found by the check.
    const qint64 mask = qint64{columns.number(10)} * 2 + (columns.number(11) & 1);
    item.MaskMode = static_cast<int>(
        std::clamp<qint64>(mask, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
    column = 12;
    for (const auto param :
         {&T20Item::CutToWidth, &T20Item::Expand, &T20Item::PressRight, &T20Item::DropIfZero,
          &T20Item::Brightness, &T20Item::AlignInPole, &T20Item::AlignOnTape, &T20Item::TailChar})
        item.*param = columns.number(column++);
}

/// The byte of two hexadecimal digits; 0 if one of them is none.
int hexByte(QStringView text)
{
    const int high = hexDigitValue(text[0]);
    const int low = hexDigitValue(text[1]);
    return high < 0 || low < 0 ? 0 : high * 16 + low;
}

/// Unpacks the byte `value` of table field `tableField` (1 to 9) of the device's table 20 into `item`.
void unpackTableField(T20Item& item, int tableField, int value)
{
    const auto bits = [value](int shift, int mask) { return (value >> shift) & mask; };
    switch (tableField) {
    case 1:
        item.Block = value;
        break;
    case 2:
        item.Font = bits(4, 15);
        item.X2X = bits(3, 1);
        item.X2Y = bits(2, 1);
        item.PoleFlags = bits(0, 3);
        break;
    case 3:
        item.LineGap = value;
        break;
    case 4:
        item.Line = value;
        break;
    case 5:
        item.X = value;
        break;
    case 6:
        item.Size = value;
        break;
    case 7:
        item.DropIfZero = bits(7, 1);
        item.PressRight = bits(6, 1);
        item.Expand = bits(5, 1);
        item.CutToWidth = bits(4, 1);
        item.MaskMode = bits(2, 3);
        item.FractFormat = bits(0, 3);
        break;
    case 8:
        item.Brightness = bits(4, 15);
        item.AlignInPole = bits(2, 3);
        item.AlignOnTape = bits(0, 3);
        break;
    default:
        item.TailChar = value;
        break;
    }
}

/// The key of row `type`, which is counted from 0; the highest number wraps round.
int keyOfType(int type)
{
    return static_cast<int>(static_cast<unsigned int>(type) + 1U);
}

} // namespace

void BD_T20Items::setCatalogueDesc(T20Item& item, int key) const
{
    if (key <= PolesLabels.size()) {
        item.Desc = PolesLabels.at(key - 1);
        item.DescView = PolesLabelsView.at(key - 1);
    } else {
        item.Desc = QObject::tr("unknow:%1").arg(key);
        item.DescView = QObject::tr("unk.:%1").arg(key);
    }
}

void BD_T20Items::setFileOrCatalogueDesc(T20Item& item, int key, QStringView column) const
{
    if (column.size() < kShortestDesc) {
        setCatalogueDesc(item, key);
        return;
    }
    item.Desc = column.toString();
    item.makeDescViewFromDesc();
}

int BD_T20Items::LoadFrom_AnalizeType(const QStringList& lines, QList<int>& votes) const
{
    votes = QList<int>(5, 0);
    if (lines.isEmpty())
        return 1;
    for (const auto& line : lines) {
        if (line.isEmpty())
            continue;
        const LineColumns columns(line, [](int count) { return count >= 2; });
        const auto hasCode = [&columns] { return !columns[19].isEmpty() && columns[19].size() <= 3; };
        if (columns.count() == 21) {
            if (hasCode() && (columns[20].isEmpty() || columns[20].size() >= kShortestDesc))
                ++votes[1];
        } else if (columns.count() == kDumpColumns) {
            ++votes[2];
        } else if (columns.count() == kOldColumns) {
            if (columns[19].size() >= kShortestDesc)
                ++votes[3];
            else if (hasCode())
                ++votes[1];
        } else if (columns.count() >= kMaskColumns) {
            if ((columns[0] == u"0" || columns[0] == u"1") && columns[1].size() == 4 &&
                !columns[2].isEmpty() && columns[2].size() <= 3 && columns[25].size() >= kShortestDesc)
                ++votes[4];
        }
    }
    return 0;
}

int BD_T20Items::LoadFromListV01(const QStringList& lines, bool old)
{
    if (lines.isEmpty())
        return 1;
    int key = 0;
    for (const auto& line : lines) {
        if (isTooShort(line) || isComment(line))
            continue;
        const LineColumns columns(line, [](int count) { return count >= kOldColumns; });
        if (columns.count() < kOldColumns || !isBlockNumber(columns))
            continue;
        ++key;
        T20Item item;
        const int descColumn = old ? 20 : 19;
        if (old)
            readOldParams(item, columns);
        else
            readParams(item, columns);
        setFileOrCatalogueDesc(item, key, columns.count() > descColumn ? columns[descColumn] : QStringView());
        item.FA_NEED = getFA_NEED(key);
        item.BL_MASK = kAllBlocks;
        item.Type = key;
        AddPoleToBD(key, item);
    }
    return 0;
}

int BD_T20Items::LoadFromListV02(const QStringList& lines)
{
    if (lines.isEmpty())
        return 1;
    int row = 1;
    T20Item item; // goes from row to row: a row that lacks a table field keeps the value before it
    for (const auto& line : lines) {
        if (line.size() <= 8 || isComment(line))
            continue;
        const LineColumns columns(line, [](int count) { return count == kDumpColumns; });
        if (columns.count() != kDumpColumns || columns.number(0) != 20)
            continue;
        const int lineRow = columns.number(1);
        if (lineRow == row + 1)
            row = lineRow;
        else if (lineRow != row)
            continue;
        const int tableField = columns.number(2);
        if (columns[8].size() != 2 || tableField < 1 || tableField > 9)
            continue;
        unpackTableField(item, tableField, hexByte(columns[8]));
        if (tableField == 1)
            item.Type = row;
        if (tableField == 9) {
            item.FA_NEED = getFA_NEED(row);
            setCatalogueDesc(item, row);
            item.BL_MASK = kAllBlocks;
            AddPoleToBD(row, item);
        }
    }
    return 0;
}

int BD_T20Items::LoadFromListV04(const QStringList& lines)
{
    if (lines.isEmpty())
        return 1;
    for (const auto& line : lines) {
        if (isTooShort(line) || isComment(line))
            continue;
        const LineColumns columns(line, [](int count) { return count >= kMaskColumns; });
        if (columns.count() < kMaskColumns)
            continue;
        const int need = columns.number(0);
        if (need != 1 && columns[0] != u"0")
            continue;
        T20Item item;
        item.FA_NEED = need == 1;
        bool isMask = false;
        item.BL_MASK = columns[1].toUInt(&isMask, 16);
        if (!isMask)
            item.BL_MASK = kUnreadableMask;
        item.Type = columns.number(2);
        int column = 3;
        for (const auto param : T20Item::kDeviceParams) {
            if (column == 12)
                ++column; // a filler that keeps the columns of a file aligned
            item.*param = columns.number(column++);
        }
        item.Desc = columns[25].toString();
        item.makeDescViewFromDesc();
        AddPoleToBD(keyOfType(item.Type), item);
    }
    return 0;
}
