#pragma once

#include <string>
#include <vector>

/// One argument of a call as the record shows it.
std::wstring shown(int value);
std::wstring shown(double value);
std::wstring shown(const wchar_t* text);

/// Writes down a call: "name(argument, argument)".
void recordCall(const wchar_t* name, const std::vector<std::wstring>& arguments);

template <typename... Arguments>
void record(const wchar_t* name, Arguments... arguments)
{
    recordCall(name, {shown(arguments)...});
}

/// Puts as much of the text into the buffer as fits with its zero; the length that the text needs.
int answer(const std::wstring& text, wchar_t* buffer, int capacity);
