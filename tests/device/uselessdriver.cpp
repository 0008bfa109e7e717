// A library that lacks something which the program needs of a driver. OFFERS_… and THROWS_… choose what.

#include <stdexcept>

#if defined(_WIN32)
#define DRIVER_EXPORT extern "C" __declspec(dllexport)
#else
#define DRIVER_EXPORT extern "C" __attribute__((visibility("default")))
#endif

#ifdef THROWS_OWN
namespace {
struct NoInterface
{
    int version = 0;
};
} // namespace
#endif

#ifdef OFFERS_CREATE
DRIVER_EXPORT void* CreateFpaxInterface([[maybe_unused]] int version)
{
#if defined(THROWS_STANDARD)
    throw std::runtime_error("no such interface");
#elif defined(THROWS_OWN)
    throw NoInterface{version};
#else
    return nullptr;
#endif
}
#endif

#ifdef OFFERS_RELEASE
DRIVER_EXPORT void ReleaseFpaxInterface(void** instance)
{
    *instance = nullptr;
}
#endif

/// What a library without a driver in it may have.
DRIVER_EXPORT int Sum(int left, int right)
{
    return left + right;
}
