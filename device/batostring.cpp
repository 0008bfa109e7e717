#include "device/batostring.h"

#include <algorithm>

QString baToString(const QVector<unsigned char>& bytes, const QString& separator)
{
    constexpr char16_t digits[] = u"0123456789ABCDEF";
    if (bytes.isEmpty())
        return {};
    const QString upperSeparator = separator.toUpper();
    QString text(bytes.size() * (2 + upperSeparator.size()), Qt::Uninitialized);
    QChar* next = text.data();
    for (const unsigned char byte : bytes) {
        *next++ = digits[byte >> 4];
        *next++ = digits[byte & 0x0F];
        next = std::copy(upperSeparator.cbegin(), upperSeparator.cend(), next);
    }
    text.chop(upperSeparator.size());
    return text;
}
