#include "device/regularfile.h"

#include <QFileInfo>

bool openRegularFile(QFile& file, QIODevice::OpenMode mode)
{
    const QFileInfo info(file.fileName());
    const bool isSpecial = info.exists() && !info.isFile() && !info.isDir();
    const bool isTooLong = (mode & QIODevice::ReadOnly) != 0 && info.isFile() && info.size() > kLongestFile;
    return !isSpecial && !isTooLong &&
           file.open(mode); // a folder is left to the toolkit, which has words for it
}
