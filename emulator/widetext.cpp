#include "emulator/widetext.h"

#include <algorithm>
#include <limits>
#include <string>

namespace emulator {

int copyText(const QString& text, wchar_t* buffer, int capacity)
{
    const std::wstring wide = text.toStdWString();
    const auto limit = static_cast<std::size_t>(std::numeric_limits<int>::max() - 1);
    const auto needed = static_cast<int>(std::min(wide.size(), limit));
    if (buffer == nullptr || capacity <= 0)
        return needed;
    const int copied = std::min(needed, capacity - 1);
    std::copy_n(wide.begin(), copied, buffer);
    buffer[copied] = L'\0';
    return needed == capacity ? needed + 1 : needed;
}

QString fromWide(const wchar_t* text)
{
    return text == nullptr ? QString() : QString::fromWCharArray(text);
}

} // namespace emulator
