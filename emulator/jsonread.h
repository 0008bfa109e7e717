#pragma once

#include <QJsonObject>
#include <QString>

namespace emulator {

/// The greatest number that is read where nothing else limits it.
constexpr int kMaxNumber = 0x7FFFFFFF;

/// Lenient readers of one member: `target` changes only if the member is there, of the right type and in range.
void readInt(const QJsonObject& object, const QString& key, int least, int greatest, int& target);
void readBool(const QJsonObject& object, const QString& key, bool& target);
void readText(const QJsonObject& object, const QString& key, QString& target);

} // namespace emulator
