#pragma once

#include "emulator/resultcodes.h"
#include "emulator/templatetable.h"

#include <QByteArray>

namespace emulator {

/// What the device answers to a raw command.
struct CommandResult
{
    Outcome outcome;
    QByteArray answer;
    /// The command has changed the table.
    bool written = false;
};

/// Carries out the raw command that reads and writes table 20. An answer to a read of parameters holds at most
/// `groupSize` of them, whatever was asked for.
CommandResult executeTableCommand(const QByteArray& command, TemplateTable& table, int groupSize);

} // namespace emulator
