#include "emulator/fieldtext.h"

#include <algorithm>

namespace emulator {

namespace {

constexpr int kMasked = 1;
constexpr int kZeroFilled = 2;
constexpr int kOneDecimal = 1;
constexpr int kShortest = 2;
constexpr int kPieces = 3;
constexpr int kOpenDigits = 4;

QString numberText(int format, const FieldValue& value)
{
    const double number = *value.number;
    if (format == kPieces)
        return QString::number(number, 'f', 0);
    if (format == kOneDecimal)
        return QString::number(number, 'f', std::min(1, value.decimals));
    QString text = QString::number(number, 'f', value.decimals);
    if (format == kShortest && text.contains('.')) {
        while (text.endsWith('0'))
            text.chop(1);
        if (text.endsWith('.'))
            text.chop(1);
    }
    return text;
}

QString aligned(const TemplateRow& row, const QString& text, int cells)
{
    const int align = row.value(Param::AlignInField);
    if (align == kRight || row.value(Param::PressRight) != 0)
        return text.rightJustified(cells);
    if (align == kCentre) {
        const qsizetype left = (cells - text.size()) / 2;
        return text.rightJustified(left + text.size()).leftJustified(cells);
    }
    return text.leftJustified(cells);
}

} // namespace

QString valueText(const TemplateRow& row, const FieldValue& value, int cells)
{
    QString text = value.number ? numberText(row.value(Param::FractFormat), value) : value.text;
    const int mask = row.value(Param::MaskMode);
    if (mask == kMasked && text.size() > kOpenDigits)
        text.replace(0, text.size() - kOpenDigits, QString(text.size() - kOpenDigits, '*'));
    if (mask == kZeroFilled && !text.isEmpty())
        text = text.rightJustified(cells, '0');
    return text;
}

QStringList fieldPieces(const TemplateRow& row, const FieldValue& value, int cells)
{
    QString text = valueText(row, value, cells);
    if (row.value(Param::CutToWidth) != 0 || value.number)
        text.truncate(cells);
    QStringList pieces;
    do {
        pieces.append(aligned(row, text.left(cells), cells));
        text.remove(0, cells);
    } while (!text.isEmpty());
    return pieces;
}

} // namespace emulator
