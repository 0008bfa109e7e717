#pragma once

#include <QChar>

/// The value of a hexadecimal digit of either case, -1 for any other character.
constexpr int hexDigitValue(QChar digit)
{
    const char16_t code = digit.unicode();
    if (code >= u'0' && code <= u'9')
        return code - u'0';
    if (code >= u'A' && code <= u'F')
        return code - u'A' + 10;
    if (code >= u'a' && code <= u'f')
        return code - u'a' + 10;
    return -1;
}
