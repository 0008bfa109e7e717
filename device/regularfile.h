#pragma once

#include <QFile>

/// Opens `file` unless a pipe, a device or the like stands in its place, which would keep the window waiting.
bool openRegularFile(QFile& file, QIODevice::OpenMode mode);
