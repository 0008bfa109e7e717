#pragma once

#include <QByteArray>

namespace emulator {

class Emulator;

/// Carries out one command given as a JSON object and returns its answer as JSON.
QByteArray control(Emulator& emulator, const QByteArray& command);

} // namespace emulator
