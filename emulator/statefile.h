#pragma once

#include <QJsonObject>
#include <QString>

namespace emulator {

/// The folder of the emulator's files: FPAX_HOME if set, else the program's own. Empty if there is neither.
QString homeFolder();

/// The content of a JSON file with an object as its root; empty for a missing, unreadable or broken file.
QJsonObject readObject(const QString& path);

/// Whether a file can be written there: nothing is in its place, or a plain file. A pipe would keep the writer waiting.
bool isFreeForFile(const QString& path);

/// Replaces the file as a whole or not at all. False if that failed.
bool writeObject(const QString& path, const QJsonObject& object);

} // namespace emulator
