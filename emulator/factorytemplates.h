#pragma once

#include "emulator/templatetable.h"

#include <QStringList>

namespace emulator {

/// The templates that a cash register leaves the factory with: 1 for a tape of 48 characters, 2 for one of 32.
TemplateTable factoryTemplates();

/// Free lines as the factory sets them, rows of table 21.
QStringList factoryFreeLines();

} // namespace emulator
