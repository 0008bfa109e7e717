#pragma once

#include "emulator/devicestate.h"
#include "emulator/resultcodes.h"

namespace emulator {

/// The device itself, as it stands at the other end of the cable. One for all driver objects of the process; the
/// owner guards it by a lock. Each change is marked, so that the owner knows when to save.
class CashRegister
{
public:
    const DeviceState& state() const { return m_state; }
    /// Replaces everything, as another device at the same cable would.
    void setState(const DeviceState& state);

    /// True once after any change since the last call.
    bool takeChanged();

    /// Whether the device answers at all.
    Outcome link() const;

    /// Version of a unit: 145 firmware, 160 templates.
    Outcome unitVersion(int unit, UnitVersion& version) const;

    Outcome enterMode(int mode);
    Outcome resetMode();

    Outcome openReceipt(int type);
    Outcome closeReceipt();
    Outcome cancelReceipt();
    /// Whether a receipt is open in registration mode, as every step inside a receipt wants it.
    Outcome receiptStep() const;

    /// Report 1 closes the shift.
    Outcome makeReport(int type);

    void applySettings(const QMap<QString, QString>& settings);

private:
    DeviceState m_state;
    bool m_changed = false;
};

} // namespace emulator
