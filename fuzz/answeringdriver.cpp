#include "fuzz/answeringdriver.h"

#include <algorithm>
#include <cwchar>
#include <stdexcept>
#include <utility>

namespace {

/// Where a single input has to come to its end.
constexpr int kMostExchanges = 1500;

constexpr int kNoExchange = -6;
constexpr int kRefused = -3;

enum Order { RawBytes, RawText, Head, Group, Refusal, CodelessRefusal, Thrown, LyingLength };
constexpr int kOrderMask = 7;
constexpr int kRepeatBit = 0x80;
constexpr int kHugeFrom = 221; ///< claimed lengths from here on are a hundred times as long

void append(std::vector<int>& bytes, std::initializer_list<int> more)
{
    bytes.insert(bytes.end(), more);
}

} // namespace

int InputBytes::takeByte()
{
    if (m_left == 0)
        return 0;
    --m_left;
    return *m_data++;
}

std::vector<int> InputBytes::takeBytes()
{
    std::vector<int> bytes(std::min<std::size_t>(static_cast<std::size_t>(takeByte()), m_left));
    std::generate(bytes.begin(), bytes.end(), [this] { return takeByte(); });
    return bytes;
}

std::vector<std::wstring> AnsweringDriver::takeCommands()
{
    return std::exchange(m_commands, {});
}

bool AnsweringDriver::takeFailure()
{
    return std::exchange(m_hasFailed, false);
}

int AnsweringDriver::setCommandBuffer(const wchar_t* command)
{
    m_commands.emplace_back(command);
    return 0;
}

int AnsweringDriver::execCommandBuffer()
{
    ++m_exchanges;
    if (m_repeats > 0 && m_exchanges < kMostExchanges) {
        --m_repeats;
        return m_status;
    }
    m_repeats = 0;
    m_claimedLength = 0;
    m_code = 0;
    if (m_input.isEmpty() || m_exchanges >= kMostExchanges) {
        const bool isWrite = commandByte(1) == 1;
        m_status = isWrite ? giveBytes({0x51, 0}) : refuse(kRefused);
        return m_status;
    }
    const int order = m_input.takeByte();
    m_status = answer(order);
    if ((order & kRepeatBit) != 0)
        m_repeats = m_input.takeByte();
    return m_status;
}

int AnsweringDriver::answer(int order)
{
    switch (order & kOrderMask) {
    case RawText: {
        const std::vector<int> characters = m_input.takeBytes();
        m_answer.assign(characters.begin(), characters.end());
        return 0;
    }
    case Head:
        return giveHead();
    case Group:
        return giveGroup();
    case Refusal: {
        const int status = refuse(static_cast<signed char>(m_input.takeByte()));
        m_hasFailed = m_hasFailed || m_code == kNoExchange;
        return status;
    }
    case CodelessRefusal:
        return refuse(0);
    case Thrown:
        m_hasFailed = true;
        if ((m_input.takeByte() & 1) != 0)
            throw std::runtime_error("the driver has failed");
        throw 1;
    case LyingLength:
        m_claimedLength = m_input.takeByte() - 2;
        if (m_claimedLength >= kHugeFrom)
            m_claimedLength *= 100;
        return giveBytes(m_input.takeBytes());
    default:
        return giveBytes(m_input.takeBytes());
    }
}

/// The answer stays as it was: a device that refuses need not empty its buffer.
int AnsweringDriver::refuse(int code)
{
    m_code = code;
    return -1;
}

/// A row head with a number of parameters, a name and a mask.
int AnsweringDriver::giveHead()
{
    std::vector<int> bytes = {0x51, 0, 0, 0, 0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7, 0xA8, 3, 0, 1, 0};
    bytes.push_back(m_input.takeByte());
    const std::vector<int> name = m_input.takeBytes();
    append(bytes, {4, 0, static_cast<int>(name.size()), 0});
    bytes.insert(bytes.end(), name.begin(), name.end());
    const std::vector<int> mask = m_input.takeBytes();
    append(bytes, {5, 0, static_cast<int>(mask.size()), 0});
    bytes.insert(bytes.end(), mask.begin(), mask.end());
    return giveBytes(bytes);
}

/// At most six of the parameters that the command asks for, as the program writes them.
int AnsweringDriver::giveGroup()
{
    constexpr int mostParameters = 6;
    const int first = commandByte(6);
    const int last = std::min(commandByte(7), first + mostParameters - 1);
    const int row = commandByte(4) + 256 * commandByte(5) - 1;
    std::vector<int> bytes = {0x51, 0, first, last, row & 0xFF, (row >> 8) & 0xFF};
    append(bytes, {std::max(last - first + 1, 0) * 14, 0});
    for (int param = first; param <= last; ++param)
        append(bytes, {param, 0, 10, 0, 1, 0, 1, 0, 8, 2, 0, 1, 0, m_input.takeByte()});
    return giveBytes(bytes);
}

int AnsweringDriver::giveBytes(const std::vector<int>& bytes)
{
    constexpr char digits[] = "0123456789ABCDEF";
    m_answer.clear();
    for (const int byte : bytes) {
        if (!m_answer.empty())
            m_answer += L' ';
        m_answer += static_cast<wchar_t>(digits[(byte >> 4) & 0x0F]);
        m_answer += static_cast<wchar_t>(digits[byte & 0x0F]);
    }
    return 0;
}

/// A byte of the command that was sent last; 0 if it has no such byte.
int AnsweringDriver::commandByte(std::size_t index) const
{
    if (m_commands.empty() || m_commands.back().size() < 3 * index + 2)
        return 0;
    return static_cast<int>(std::wcstol(m_commands.back().substr(3 * index, 2).c_str(), nullptr, 16));
}

int AnsweringDriver::getAnswerBuffer(wchar_t* buffer, int capacity)
{
    const auto length = static_cast<int>(m_answer.size());
    copyText(m_answer.c_str(), length, buffer, capacity);
    return m_claimedLength != 0 ? m_claimedLength : length;
}

int AnsweringDriver::getResultCode(int* code)
{
    *code = m_code;
    return 0;
}
