#include "emulator/cashregister.h"

#include <utility>

namespace emulator {

namespace {

constexpr int kFirmwareUnit = 145;
constexpr int kTemplateUnit = 160;
/// The last firmware that holds no templates as a unit of its own.
constexpr int kLastBuildWithoutTemplateUnit = 3128;

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

bool CashRegister::takeChanged(bool withTemplates)
{
    if (!m_changed && !(withTemplates && m_templatesChanged))
        return false;
    m_changed = false;
    m_templatesChanged = false;
    return true;
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

QList<Print> CashRegister::takePrints()
{
    return std::exchange(m_prints, {});
}

void CashRegister::applySettings(const QMap<QString, QString>& settings)
{
    m_changed = m_changed || m_state.settings != settings;
    m_state.settings = settings;
}

} // namespace emulator
