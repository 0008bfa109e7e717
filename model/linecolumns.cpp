#include "model/linecolumns.h"

#include <QString>

int LineColumns::number(int index) const
{
    const QStringView column = (*this)[index];
    // Nearly every column is a few plain digits: the general conversion costs several times as much.
    constexpr qsizetype kSafeDigits = 9;
    if (column.isEmpty() || column.size() > kSafeDigits)
        return column.toInt();
    int value = 0;
    for (const QChar digit : column) {
        if (digit < u'0' || digit > u'9')
            return column.toInt();
        value = value * 10 + (digit.unicode() - u'0');
    }
    return value;
}

void LineColumns::split(QStringView line, char16_t separator)
{
    m_count = 0;
    const QChar* start = line.cbegin();
    const QChar* const end = line.cend();
    for (const QChar* at = start; at != end; ++at) {
        if (*at == separator) {
            m_columns[static_cast<std::size_t>(m_count)] = QStringView(start, at);
            start = at + 1;
            if (++m_count == kMost)
                return;
        }
    }
    m_columns[static_cast<std::size_t>(m_count)] = QStringView(start, end);
    ++m_count;
}
