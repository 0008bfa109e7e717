#pragma once

#include <QStringView>

#include <array>

/// The columns of one line of a template file, as views into the line.
///
/// No format tells apart more than 26 columns, so splitting ends at kMost: a line with more columns has
/// kMost of them here, the last one being of no use to any reader.
class LineColumns
{
public:
    static constexpr int kMost = 27;

    /// Takes the columns of `line` between semicolons, or between commas if `enough(count)` does not hold for
    /// the number of columns that semicolons give. Empty columns count.
    template <typename Enough>
    LineColumns(QStringView line, Enough enough)
    {
        split(line, u';');
        if (!enough(m_count))
            split(line, u',');
    }

    int count() const { return m_count; }

    /// Column `index`, which must be below count().
    QStringView operator[](int index) const { return m_columns[static_cast<std::size_t>(index)]; }

    /// Column `index` as a decimal number; 0 if it is none.
    int number(int index) const;

private:
    void split(QStringView line, char16_t separator);

    std::array<QStringView, kMost> m_columns;
    int m_count = 0;
};
