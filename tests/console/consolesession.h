#pragma once

#include "console/consoleuser.h"
#include "support/session.h"

/// The program without a device and with its console on.
struct ConsoleSession : Session
{
    ConsoleSession();

    /// What the console's check of the driver logs.
    QStringList check();
    /// The same of its earlier form, which no button offers.
    QStringList loadFile();
};
