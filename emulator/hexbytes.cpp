#include "emulator/hexbytes.h"

#include <algorithm>

namespace emulator {

namespace {

bool isHexDigit(QChar c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

} // namespace

std::optional<QByteArray> bytesFromHex(const QString& text)
{
    QString digits = text;
    digits.remove(' ');
    if (digits.size() % 2 != 0 || !std::all_of(digits.begin(), digits.end(), isHexDigit))
        return std::nullopt;
    return QByteArray::fromHex(digits.toLatin1());
}

QString spacedHex(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

} // namespace emulator
