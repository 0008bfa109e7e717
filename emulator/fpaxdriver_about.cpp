#include "emulator/fpaxdriver.h"

#include "emulator/widetext.h"

namespace emulator {

namespace {

const char* const kDriverName = "Эмулятор кассы";
const char* const kDriverVersion = "1.0.0";

} // namespace

int FpaxDriver::getDriverVersion(wchar_t* buffer, int capacity)
{
    return readText("getDriverVersion", kDriverVersion, buffer, capacity);
}

int FpaxDriver::getDriverName(wchar_t* buffer, int capacity)
{
    return readText("getDriverName", kDriverName, buffer, capacity);
}

int FpaxDriver::getResultCode(int* code)
{
    return run("getResultCode", Reach::Diagnostic, true, {}, [&](Call&) {
        if (code == nullptr)
            return -1;
        *code = m_result.code;
        return 0;
    });
}

int FpaxDriver::getResultDescription(wchar_t* buffer, int capacity)
{
    return run("getResultDescription", Reach::Diagnostic, true, {capacity},
               [&](Call&) { return copyText(m_resultText, buffer, capacity); });
}

int FpaxDriver::getBadParam(int* param)
{
    return run("getBadParam", Reach::Diagnostic, true, {}, [&](Call&) {
        if (param == nullptr)
            return -1;
        *param = m_result.badParam;
        return 0;
    });
}

int FpaxDriver::getBadParamDescription(wchar_t* buffer, int capacity)
{
    return run("getBadParamDescription", Reach::Diagnostic, true, {capacity},
               [&](Call&) { return copyText(m_result.badParamText, buffer, capacity); });
}

} // namespace emulator
