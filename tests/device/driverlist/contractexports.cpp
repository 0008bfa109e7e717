#include "contractdriver.h"
#include "contractrecord.h"

#include <algorithm>
#include <cwchar>
#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>

#if defined(_WIN32)
#define CONTRACT_EXPORT extern "C" __declspec(dllexport)
#else
#define CONTRACT_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

using UnloadNotice = void (*)(const wchar_t* calls);

ContractDriver driver;
std::wstring calls; // one a line

// Its destructor runs when the library leaves the process, before that of the record.
struct Unloading
{
    UnloadNotice notice = nullptr;
    ~Unloading()
    {
        if (notice != nullptr)
            notice(calls.c_str());
    }
};
Unloading unloading;

} // namespace

std::wstring shown(int value)
{
    return std::to_wstring(value);
}

std::wstring shown(double value)
{
    std::wostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::setprecision(std::numeric_limits<double>::max_digits10) << value;
    return stream.str();
}

std::wstring shown(const wchar_t* text)
{
    return text == nullptr ? L"null" : L'"' + std::wstring(text) + L'"';
}

void recordCall(const wchar_t* name, const std::vector<std::wstring>& arguments)
{
    calls += name;
    calls += L'(';
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        calls += i > 0 ? L", " : L"";
        calls += arguments[i];
    }
    calls += L")\n";
}

int answer(const std::wstring& text, wchar_t* buffer, int capacity)
{
#ifdef CONTRACT_TEXTS_THROW
    throw std::runtime_error("no text today");
#endif
    const int length = static_cast<int>(text.size());
    if (buffer != nullptr && capacity > 0) {
        const int copied = std::min(length, capacity - 1);
        std::wmemcpy(buffer, text.c_str(), static_cast<std::size_t>(copied));
        buffer[copied] = L'\0';
    }
    return length;
}

CONTRACT_EXPORT LUM::Fpax::IFpax* CreateFpaxInterface(int version)
{
    record(L"CreateFpaxInterface", version);
    return &driver;
}

CONTRACT_EXPORT void ReleaseFpaxInterface(LUM::Fpax::IFpax** instance)
{
    const bool own = instance != nullptr && *instance == &driver;
    record(L"ReleaseFpaxInterface", own ? L"own instance" : L"something else");
    if (instance != nullptr)
        *instance = nullptr;
}

/// The record so far; it stays valid until the next call of anything here.
CONTRACT_EXPORT const wchar_t* ContractRecord()
{
    return calls.c_str();
}

CONTRACT_EXPORT void ContractClearRecord()
{
    calls.clear();
}

/// The function is called with the whole record when the library is unloaded.
CONTRACT_EXPORT void ContractNoticeUnloading(UnloadNotice notice)
{
    unloading.notice = notice;
}
