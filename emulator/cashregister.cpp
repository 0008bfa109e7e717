#include "emulator/cashregister.h"

#include <utility>

namespace emulator {

namespace {

constexpr int kFirmwareUnit = 145;
constexpr int kTemplateUnit = 160;
/// The last firmware that holds no templates as a unit of its own.
constexpr int kLastBuildWithoutTemplateUnit = 3128;
constexpr int kClosingReport = 1;

bool isKnownMode(int number)
{
    return number == mode::kRegistration || number == mode::kClosingReports || number == mode::kProgramming;
}

} // namespace

void CashRegister::setState(const DeviceState& state)
{
    m_state = state;
    m_changed = true;
}

bool CashRegister::takeChanged()
{
    return std::exchange(m_changed, false);
}

Outcome CashRegister::link() const
{
    return m_state.connected ? Outcome::ok() : Outcome::refused(code::kLinkLost);
}

Outcome CashRegister::unitVersion(int unit, UnitVersion& version) const
{
    switch (unit) {
    case kFirmwareUnit:
        version = m_state.firmwareVersion();
        return Outcome::ok();
    case kTemplateUnit:
        if (m_state.firmwareBuild <= kLastBuildWithoutTemplateUnit)
            return Outcome::refused(code::kNoSuchUnit);
        version = m_state.templateVersion;
        return Outcome::ok();
    default:
        return Outcome::badParameter(1, QString("Узел %1").arg(unit));
    }
}

Outcome CashRegister::enterMode(int number)
{
    if (!isKnownMode(number))
        return Outcome::badParameter(1, QString("Режим %1").arg(number));
    if (m_state.receiptState != 0 && number != mode::kRegistration)
        return Outcome::refused(code::kReceiptOpen);
    m_changed = m_changed || m_state.mode != number;
    m_state.mode = number;
    return Outcome::ok();
}

Outcome CashRegister::resetMode()
{
    m_changed = m_changed || m_state.mode != mode::kNone;
    m_state.mode = mode::kNone;
    return Outcome::ok();
}

Outcome CashRegister::openReceipt(int type)
{
    if (m_state.mode != mode::kRegistration)
        return Outcome::refused(code::kWrongMode);
    if (m_state.receiptState != 0)
        return Outcome::refused(code::kReceiptOpen);
    if (type != 1)
        return Outcome::badParameter(1, QString("Тип чека %1").arg(type));
    if (m_state.shiftOpen && m_state.shiftExpired)
        return Outcome::refused(code::kShiftTooLong);
    if (!m_state.shiftOpen) {
        m_state.shiftOpen = true;
        m_state.shiftExpired = false;
        ++m_state.counters.shifts;
    }
    m_state.receiptState = type;
    m_changed = true;
    return Outcome::ok();
}

Outcome CashRegister::receiptStep() const
{
    if (m_state.mode != mode::kRegistration)
        return Outcome::refused(code::kWrongMode);
    return m_state.receiptState == 0 ? Outcome::refused(code::kNoReceipt) : Outcome::ok();
}

Outcome CashRegister::closeReceipt()
{
    const Outcome step = receiptStep();
    if (!step.isOk())
        return step;
    m_state.receiptState = 0;
    ++m_state.counters.receipts;
    ++m_state.counters.documents;
    m_changed = true;
    return Outcome::ok();
}

// A receipt left open, by a power cut for one, can be annulled whatever the mode.
Outcome CashRegister::cancelReceipt()
{
    if (m_state.receiptState == 0)
        return Outcome::refused(m_state.mode == mode::kClosingReports || m_state.mode == mode::kProgramming
                                    ? code::kWrongMode
                                    : code::kNoReceipt);
    m_state.receiptState = 0;
    ++m_state.counters.annulled;
    m_changed = true;
    return Outcome::ok();
}

Outcome CashRegister::makeReport(int type)
{
    if (m_state.mode != mode::kClosingReports)
        return Outcome::refused(code::kWrongMode);
    if (type != kClosingReport)
        return Outcome::badParameter(1, QString("Тип отчёта %1").arg(type));
    if (!m_state.shiftOpen)
        return Outcome::refused(code::kShiftClosed);
    m_state.shiftOpen = false;
    m_state.shiftExpired = false;
    ++m_state.counters.documents;
    m_changed = true;
    return Outcome::ok();
}

void CashRegister::applySettings(const QMap<QString, QString>& settings)
{
    m_changed = m_changed || m_state.settings != settings;
    m_state.settings = settings;
}

} // namespace emulator
