#include "device/batostring.h"

QString baToString(const QVector<unsigned char>& bytes, const QString& separator)
{
    constexpr char digits[] = "0123456789abcdef";
    QString text;
    text.reserve(bytes.size() * (2 + separator.size()));
    for (const unsigned char byte : bytes) {
        text += QLatin1Char(digits[byte >> 4]);
        text += QLatin1Char(digits[byte & 0x0F]);
        text += separator;
    }
    if (!bytes.isEmpty())
        text.chop(separator.size());
    return text.toUpper();
}
