#include "bench/tabledriver.h"

#include <algorithm>
#include <cstdio>
#include <thread>
#include <utility>

namespace {

constexpr int kRefused = -3;
constexpr int kParameters = 19;
constexpr std::size_t kRowByte = 4; ///< in a read command and in the answer to it

constexpr std::array<std::pair<int, int>, 4> kGroups{{{1, 6}, {7, 12}, {13, 18}, {19, 19}}};

std::string hex(int value)
{
    std::array<char, 3> text{};
    std::snprintf(text.data(), text.size(), "%02X", static_cast<unsigned>(value) & 0xFFU);
    return text.data();
}

std::string hexWord(int value)
{
    return hex(value) + hex(value / 256);
}

std::wstring answerText(std::string_view digits)
{
    std::wstring text = commandText(digits);
    text.pop_back();
    return text;
}

std::wstring headAnswer()
{
    // The name of 24 bytes, and a mask of two.
    std::string name;
    for (int i = 0; i < 24; ++i)
        name += hex(0xE0 + i);
    return answerText("5100" + hexWord(0) + hexWord(0) + "000000000000" + "03000100" + hex(kParameters) +
                      "04001800" + name + "05000200" + "FF03");
}

std::wstring groupAnswer(std::pair<int, int> group)
{
    std::string entries;
    for (int param = group.first; param <= group.second; ++param)
        entries += hexWord(param) + "0A00" + "0100010008" + "02000100" + hex(param % 10);
    return answerText("5100" + hex(group.first) + hex(group.second) + hexWord(0) +
                      hexWord(static_cast<int>(entries.size() / 2)) + entries);
}

int digitAt(const std::wstring& text, std::size_t position)
{
    const wchar_t digit = text[position];
    return digit <= L'9' ? digit - L'0' : digit - L'A' + 10;
}

int byteAt(const std::wstring& command, std::size_t byte)
{
    return digitAt(command, 3 * byte) * 16 + digitAt(command, 3 * byte + 1);
}

void putByte(std::wstring& text, std::size_t byte, int value)
{
    constexpr wchar_t digits[] = L"0123456789ABCDEF";
    text[3 * byte] = digits[(value >> 4) & 0x0F];
    text[3 * byte + 1] = digits[value & 0x0F];
}

} // namespace

TableDriver::TableDriver(int rows)
    : m_rows(rows)
    , m_writeAnswer(L"51 00")
{
    m_readAnswers[0] = headAnswer();
    std::transform(kGroups.begin(), kGroups.end(), m_readAnswers.begin() + 1, groupAnswer);
}

int TableDriver::setCommandBuffer(const wchar_t* command)
{
    m_command = command;
    return 0;
}

int TableDriver::execCommandBuffer()
{
    constexpr std::size_t shortestCommand = 3 * 8;
    ++m_commandCount;
    if (m_latency.count() > 0)
        std::this_thread::sleep_for(m_latency);
    if (m_command.size() < shortestCommand)
        return refuse();
    m_code = 0;
    const bool isWrite = byteAt(m_command, 1) == 1;
    if (isWrite) {
        m_answer = &m_writeAnswer;
        return 0;
    }
    const int row = byteAt(m_command, kRowByte) + 256 * byteAt(m_command, kRowByte + 1);
    const int first = byteAt(m_command, 6);
    if (row < 1 || row > m_rows || first > kParameters)
        return refuse();
    auto& answer = m_readAnswers.at(first == 0 ? 0 : static_cast<std::size_t>((first - 1) / 6 + 1));
    putByte(answer, kRowByte, (row - 1) % 256);
    putByte(answer, kRowByte + 1, (row - 1) / 256);
    m_answer = &answer;
    return 0;
}

int TableDriver::refuse()
{
    m_code = kRefused;
    m_answer = nullptr;
    return -1;
}

int TableDriver::getAnswerBuffer(wchar_t* buffer, int capacity)
{
    return m_answer ? copyText(m_answer->c_str(), static_cast<int>(m_answer->size()), buffer, capacity) : 0;
}

int TableDriver::getResultCode(int* code)
{
    *code = m_code;
    return 0;
}

std::wstring commandText(std::string_view digits)
{
    std::wstring text;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        text += static_cast<wchar_t>(digits[i]);
        text += static_cast<wchar_t>(digits[i + 1]);
        text += L' ';
    }
    return text;
}

std::vector<std::wstring> readCommands(int rows, int subTable)
{
    std::vector<std::wstring> commands;
    for (int row = 1; row <= rows + 1; ++row) {
        const std::string start = "510014" + hex(subTable) + hexWord(row);
        commands.push_back(commandText(start + "0000"));
        if (row > rows)
            break;
        for (const auto& group : kGroups)
            commands.push_back(commandText(start + hex(group.first) + hex(kParameters)));
    }
    return commands;
}
