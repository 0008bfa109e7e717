#include "emulator/fpaxdriver.h"

#include "emulator/emulator.h"
#include "emulator/widetext.h"

namespace emulator {

int FpaxDriver::getCaption(wchar_t* buffer, int capacity)
{
    return readText("getCaption", m_registers.caption, buffer, capacity);
}

int FpaxDriver::setCaption(const wchar_t* text)
{
    return setTextRegister("setCaption", m_registers.caption, text);
}

int FpaxDriver::setTableNumber(int table)
{
    return setRegister("setTableNumber", m_registers.table, table);
}

int FpaxDriver::setRowNumber(int row)
{
    return setRegister("setRowNumber", m_registers.row, row);
}

int FpaxDriver::setFieldNumber(int field)
{
    return setRegister("setFieldNumber", m_registers.field, field);
}

int FpaxDriver::setFieldType(int type)
{
    return setRegister("setFieldType", m_registers.fieldType, type);
}

int FpaxDriver::writeTableField()
{
    return executeOnDevice("writeTableField", [this] {
        return m_emulator.device().writeField(fieldAddress(), m_registers.caption);
    });
}

int FpaxDriver::readTableField()
{
    return executeOnDevice("readTableField", [this] {
        return m_emulator.device().readField(fieldAddress(), m_registers.caption);
    });
}

FieldAddress FpaxDriver::fieldAddress() const
{
    return {m_registers.table, m_registers.row, m_registers.field, m_registers.fieldType};
}

int FpaxDriver::setCommandBuffer(const wchar_t* command)
{
    return setTextRegister("setCommandBuffer", m_registers.command, command);
}

int FpaxDriver::execCommandBuffer()
{
    return executeOnDevice("execCommandBuffer", [this] {
        return m_emulator.device().execute(m_registers.command, m_registers.answer);
    });
}

int FpaxDriver::getAnswerBuffer(wchar_t* buffer, int capacity)
{
    return run("getAnswerBuffer", Reach::Driver, true, {capacity}, [&](const Call& call) {
        const QString& answer = m_registers.answer;
        return copyText(call.fault ? spoiledAnswer(*call.fault, answer) : answer, buffer, capacity);
    });
}

} // namespace emulator
