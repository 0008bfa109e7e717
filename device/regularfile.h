#pragma once

#include <QFile>

/// The longest file that the program reads, in bytes: many times what any device can hold.
constexpr qint64 kLongestFile = qint64{64} * 1024 * 1024;

/// Opens `file` unless a pipe, a device or the like stands in its place, which would keep the window waiting, or it is
/// to be read and longer than kLongestFile, which could fill the memory.
bool openRegularFile(QFile& file, QIODevice::OpenMode mode);
