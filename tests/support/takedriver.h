#pragma once

#include "device/clkrd9io.h"

/// Puts `driver` into a session without a driver, as if it came from a library.
inline void takeDriver(clKRD9IO& session, LUM::Fpax::IFpax& driver)
{
    session.driverIface = &driver;
    session.fpaxWrapper.reset(new QLumFpax(&driver));
    session.driverLoaded = true;
}
