#pragma once

#include "device/ifpax.h"

#include <QtGlobal>

extern "C" {

/// The interface of version 13, or null for any other version. The library owns the object.
Q_DECL_EXPORT LUM::Fpax::IFpax* CreateFpaxInterface(int version);

/// Destroys the object and nulls the pointer.
Q_DECL_EXPORT void ReleaseFpaxInterface(LUM::Fpax::IFpax** instance);

/// Steers the emulator from inside the process. Takes and gives JSON in UTF-8; the answer is good until the next
/// call. README.md beside this file lists the commands.
Q_DECL_EXPORT const char* FpaxEmulatorControl(const char* commandJson);
}
