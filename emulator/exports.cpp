#include "emulator/exports.h"

#include "emulator/control.h"
#include "emulator/emulator.h"
#include "emulator/fpaxdriver.h"

using emulator::Emulator;

LUM::Fpax::IFpax* CreateFpaxInterface(int version)
{
    try {
        return version == LUM::Fpax::kInterfaceVersion ? Emulator::instance().create() : nullptr;
    } catch (...) {
        return nullptr;
    }
}

void ReleaseFpaxInterface(LUM::Fpax::IFpax** instance)
{
    if (instance == nullptr)
        return;
    Emulator::instance().release(*instance);
    *instance = nullptr;
}

const char* FpaxEmulatorControl(const char* commandJson)
{
    static QByteArray answer;
    answer = emulator::control(Emulator::instance(), QByteArray(commandJson));
    return answer.constData();
}
