#include "emulator/fpaxdriver.h"

#include "emulator/emulator.h"

namespace emulator {

int FpaxDriver::setDeviceEnabled(int enabled)
{
    return run("setDeviceEnabled", Reach::Device, false, {enabled},
               [&](Call&) { return finish(setEnabled(enabled)); });
}

Outcome FpaxDriver::setEnabled(int enabled)
{
    if (enabled != 0 && enabled != 1)
        return Outcome::badParameter(1, QString("Состояние порта %1").arg(enabled));
    m_enabled = enabled == 1 && m_emulator.device().link().isOk();
    return m_enabled == (enabled == 1) ? Outcome::ok() : Outcome::refused(code::kPortUnavailable);
}

int FpaxDriver::readStatus()
{
    return executeOnDevice("readStatus", [this] {
        refreshStatus();
        return Outcome::ok();
    });
}

void FpaxDriver::refreshStatus()
{
    const DeviceState& state = m_emulator.device().state();
    m_status.serial = state.serial;
    m_status.description = state.description();
    m_status.version = state.firmwareVersion();
    m_status.fiscal = state.fiscal ? 1 : 0;
    m_status.sessionOpened = state.shiftOpen ? 1 : 0;
    m_status.checkState = state.receiptState;
    m_status.model = state.model;
    m_status.lineLength = state.lineLength;
    m_registers.sum = m_emulator.device().receiptTotal();
}

int FpaxDriver::getSerialNumber(wchar_t* buffer, int capacity)
{
    return readText("getSerialNumber", m_status.serial, buffer, capacity);
}

int FpaxDriver::getDeviceDescription(wchar_t* buffer, int capacity)
{
    return readText("getDeviceDescription", m_status.description, buffer, capacity);
}

int FpaxDriver::getFiscal(int* fiscal)
{
    return readNumber("getFiscal", m_status.fiscal, fiscal);
}

int FpaxDriver::getCheckState(int* state)
{
    return readNumber("getCheckState", m_status.checkState, state);
}

int FpaxDriver::getSessionOpened(int* opened)
{
    return readNumber("getSessionOpened", m_status.sessionOpened, opened);
}

int FpaxDriver::getModelId(int* model)
{
    return readNumber("getModelId", m_status.model, model);
}

int FpaxDriver::getCharLineLength(int* length)
{
    return readNumber("getCharLineLength", m_status.lineLength, length);
}

int FpaxDriver::setUnitType(int type)
{
    return setRegister("setUnitType", m_registers.unit, type);
}

int FpaxDriver::readUnitVersion()
{
    return executeOnDevice("readUnitVersion", [this] {
        return m_emulator.device().unitVersion(m_registers.unit, m_status.version);
    });
}

int FpaxDriver::getUnitVersionMajor(wchar_t* buffer, int capacity)
{
    return readText("getUnitVersionMajor", m_status.version.major, buffer, capacity);
}

int FpaxDriver::getUnitVersionMinor(wchar_t* buffer, int capacity)
{
    return readText("getUnitVersionMinor", m_status.version.minor, buffer, capacity);
}

int FpaxDriver::getUnitVersionBuild(wchar_t* buffer, int capacity)
{
    return readText("getUnitVersionBuild", m_status.version.build, buffer, capacity);
}

int FpaxDriver::setMode(int mode)
{
    return setRegister("setMode", m_registers.mode, mode);
}

int FpaxDriver::enterMode()
{
    return executeOnDevice("enterMode", [this] { return m_emulator.device().enterMode(m_registers.mode); });
}

int FpaxDriver::resetMode()
{
    return executeOnDevice("resetMode", [this] { return m_emulator.device().resetMode(); });
}

} // namespace emulator
