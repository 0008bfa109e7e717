#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

class QLibrary;

/// The program's directory as the loader sees it: a folder of its own for each test, with a driver file or without.
class DriverFolder
{
public:
    /// `pattern` is the last part of the folder's name.
    explicit DriverFolder(const QString& pattern = QStringLiteral("driver"));

    QString path() const { return folder.path(); }
    /// What the program asks for: no prefix, no suffix.
    QString driverPath() const { return folder.filePath(QStringLiteral("fpax")); }
    /// The file that the platform makes of it.
    QString driverFile() const;

    /// Puts a library that was built for the tests in the driver's place.
    bool install(const QString& library) const;
    /// Puts a file with this content there.
    bool installFile(const QByteArray& content) const;
    /// Puts a directory there.
    bool installDirectory() const;

private:
    QTemporaryDir folder;
};

/// What has reached the contract driver in this library, one call a line.
QStringList contractCalls(QLibrary& library);
void forgetContractCalls(QLibrary& library);

/// Tells whether contract drivers that it watches leave the process, and with which calls.
class UnloadWatch
{
public:
    UnloadWatch();
    void watch(QLibrary& library) const;

    static int unloaded();
    /// The calls of the last one that left.
    static QStringList lastCalls();
};
