#include "emulator/statefile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <filesystem>

namespace emulator {

QString homeFolder()
{
    const QString set = qEnvironmentVariable("FPAX_HOME");
    if (!set.isEmpty())
        return set;
    return QCoreApplication::instance() == nullptr ? QString() : QCoreApplication::applicationDirPath();
}

QJsonObject readObject(const QString& path)
{
    QFile file(path);
    // A pipe in its place would keep the caller waiting.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

bool isFreeForFile(const QString& path)
{
    const QFileInfo info(path);
    return info.isFile() || !info.exists();
}

bool writeObject(const QString& path, const QJsonObject& object)
{
    const QString part = path + ".part";
    if (!isFreeForFile(part))
        return false;
    {
        QFile file(part);
        if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(object).toJson()) < 0 ||
            !file.flush())
            return false;
    }
    // Renaming replaces the old file in one step. Unlike QSaveFile this does not wait for the disk, which would
    // make hundreds of table writes slow.
    std::error_code error;
    std::filesystem::rename(QFileInfo(part).filesystemAbsoluteFilePath(),
                            QFileInfo(path).filesystemAbsoluteFilePath(), error);
    if (error)
        QFile::remove(part);
    return !error;
}

} // namespace emulator
