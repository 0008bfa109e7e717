#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace emulator {

/// Bytes of hexadecimal pairs, with or without blanks between them; nothing if the text is something else.
std::optional<QByteArray> bytesFromHex(const QString& text);

/// Upper-case pairs with one blank between them and none behind.
QString spacedHex(const QByteArray& bytes);

} // namespace emulator
