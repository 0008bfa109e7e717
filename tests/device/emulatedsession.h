#pragma once

#include "device/clkrd9io.h"
#include "support/emulateddevice.h"

#include <QTemporaryDir>

/// A session of its own before the emulator, which it has loaded from a file as the program does.
struct EmulatedSession
{
    EmulatedSession()
    {
        QString message;
        if (session.initDriver(device.driverPath(), folder.path(), message) != 0)
            qFatal("%s", qPrintable(message));
        device.watch();
    }

    QTemporaryDir folder;
    EmulatedDevice device{folder.path()};
    clKRD9IO session;
};
