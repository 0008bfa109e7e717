#pragma once

#include <QString>

namespace emulator {

/// Copies `text` to a caller's buffer, always with its terminating zero and never beyond `capacity`, and returns
/// the length that the text needs. A text that lacks room for the zero alone asks for one character more than it
/// has, so that a caller who compares the result with the capacity sees that the text was cut.
int copyText(const QString& text, wchar_t* buffer, int capacity);

/// The text that ends at the first zero; a null pointer is an empty text.
QString fromWide(const wchar_t* text);

} // namespace emulator
