#pragma once

#include "console/consolesession.h"
#include "support/recordingdriver.h"

#include <QLibrary>

/// A console session that a library may be given to.
struct LibrarySession : ConsoleSession
{
    /// The file in the program's directory that is taken for the driver's library.
    QString libraryFile() const;
};

/// How a library behaves that is told to throw.
enum class Thrown { Nothing, Standard, Own };

/// The same when a library has come whose driver is a recording one. The test has the library loaded, too.
struct OfferedSession : LibrarySession
{
    explicit OfferedSession(bool isOffered = true);
    ~OfferedSession() { library.unload(); }
    Q_DISABLE_COPY_MOVE(OfferedSession)

    /// How often the driver was given back.
    int releases();
    /// From now on the library throws when the driver is given back.
    void throwOnRelease(Thrown thrown);

    RecordingDriver driver;
    QLibrary library;
};

/// What the check says of the driver of an OfferedSession before it changes its settings.
QStringList offeredLines();
