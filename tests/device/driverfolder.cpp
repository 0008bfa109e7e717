#include "device/driverfolder.h"

#include <QDir>
#include <QFile>
#include <QLibrary>

namespace {

using ReadRecord = const wchar_t* (*)();
using ClearRecord = void (*)();
using UnloadNotice = void (*)(const wchar_t*);
using SetUnloadNotice = void (*)(UnloadNotice);

int unloadedCount = 0;
QStringList callsOfUnloaded;

QStringList lines(const wchar_t* record)
{
    return QString::fromWCharArray(record).split(u'\n', Qt::SkipEmptyParts);
}

void noteUnloading(const wchar_t* record)
{
    ++unloadedCount;
    callsOfUnloaded = lines(record);
}

QString fileName(const QString& library)
{
    return QStringLiteral(MODULE_PREFIX) + library + QStringLiteral(MODULE_SUFFIX);
}

template <typename Function>
Function function(QLibrary& library, const char* name)
{
    const auto found = reinterpret_cast<Function>(library.resolve(name));
    if (!found)
        qFatal("%s is no contract driver", qPrintable(library.fileName()));
    return found;
}

} // namespace

DriverFolder::DriverFolder(const QString& pattern)
    : folder(QDir::temp().filePath(pattern + QStringLiteral("-XXXXXX")))
{
    if (!folder.isValid())
        qFatal("no temporary folder: %s", qPrintable(folder.errorString()));
}

QString DriverFolder::driverFile() const
{
    return folder.filePath(fileName(QStringLiteral("fpax")));
}

bool DriverFolder::install(const QString& library) const
{
    return QFile::copy(QStringLiteral(DRIVER_FOLDER "/") + fileName(library), driverFile());
}

bool DriverFolder::installFile(const QByteArray& content) const
{
    QFile file(driverFile());
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

bool DriverFolder::installDirectory() const
{
    return QDir().mkdir(driverFile());
}

QStringList contractCalls(QLibrary& library)
{
    return lines(function<ReadRecord>(library, "ContractRecord")());
}

void forgetContractCalls(QLibrary& library)
{
    function<ClearRecord>(library, "ContractClearRecord")();
}

UnloadWatch::UnloadWatch()
{
    unloadedCount = 0;
    callsOfUnloaded.clear();
}

void UnloadWatch::watch(QLibrary& library) const
{
    function<SetUnloadNotice>(library, "ContractNoticeUnloading")(noteUnloading);
}

int UnloadWatch::unloaded()
{
    return unloadedCount;
}

QStringList UnloadWatch::lastCalls()
{
    return callsOfUnloaded;
}
