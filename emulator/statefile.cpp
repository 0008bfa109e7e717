#include "emulator/statefile.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

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
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

bool writeObject(const QString& path, const QJsonObject& object)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(QJsonDocument(object).toJson());
    return file.commit();
}

} // namespace emulator
