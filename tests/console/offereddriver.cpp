// A driver library without a driver of its own: it hands out the one that it was offered last.

#include "device/ifpax.h"

#include <stdexcept>

using LUM::Fpax::IFpax;

#if defined(_WIN32)
#define DRIVER_EXPORT extern "C" __declspec(dllexport)
#else
#define DRIVER_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

IFpax* offered = nullptr;
int releases = 0;
int thrown = 0;

struct Refusal
{
    int releases = 0;
};

} // namespace

DRIVER_EXPORT IFpax* CreateFpaxInterface(int version)
{
    return version == 13 ? offered : nullptr;
}

DRIVER_EXPORT void ReleaseFpaxInterface(IFpax** instance)
{
    if (instance == nullptr || *instance != offered)
        return;
    ++releases;
    if (thrown == 1)
        throw std::runtime_error("not given back");
    if (thrown == 2)
        throw Refusal{releases};
    *instance = nullptr;
}

DRIVER_EXPORT void OfferDriver(IFpax* driver)
{
    offered = driver;
    releases = 0;
    thrown = 0;
}

/// What leaves ReleaseFpaxInterface from now on: 0 nothing, 1 a standard exception, 2 one that nobody else knows.
DRIVER_EXPORT void ThrowOnRelease(int kind)
{
    thrown = kind;
}

/// How often the driver was given back since it was offered.
DRIVER_EXPORT int ReleaseCount()
{
    return releases;
}
