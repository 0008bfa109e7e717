#pragma once

#include <QStringList>

namespace emulator {

/// Names of the fields that the cash register prints, in the order of the rows of table 20.
QStringList fieldNames();

} // namespace emulator
