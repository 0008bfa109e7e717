#pragma once

#include "bench/idledriver.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Bytes of a fuzz input that are taken from the front; behind the last one there are zeros.
class InputBytes
{
public:
    InputBytes(const std::uint8_t* data, std::size_t size)
        : m_data(data)
        , m_left(size)
    {
    }

    bool isEmpty() const { return m_left == 0; }
    int takeByte();
    /// A number of bytes, then so many.
    std::vector<int> takeBytes();

private:
    const std::uint8_t* m_data;
    std::size_t m_left;
};

/// A device whose answers to raw commands, failures and lies are cut from a fuzz input. When the input is used up, it
/// refuses reads and takes writes, so that every transfer ends.
///
/// Each command takes an order byte. Its low three bits choose: a good answer of raw bytes, one of raw text, a
/// well-formed row head, the well-formed group that was asked for, a refusal with a code, a refusal without one, an
/// exception, an answer that lies about its length. With bit 7 the same is answered again as often as the next byte
/// says.
class AnsweringDriver final : public IdleDriver
{
public:
    explicit AnsweringDriver(InputBytes& input)
        : m_input(input)
    {
    }

    /// The commands since the last call, as the driver got them.
    std::vector<std::wstring> takeCommands();
    /// True if the driver has thrown, or could not exchange anything, since the last call.
    bool takeFailure();

    int setCommandBuffer(const wchar_t* command) override;
    int execCommandBuffer() override;
    int getAnswerBuffer(wchar_t* buffer, int capacity) override;
    int getResultCode(int* code) override;

private:
    int answer(int order);
    int refuse(int code);
    int giveHead();
    int giveGroup();
    int giveBytes(const std::vector<int>& bytes);
    int commandByte(std::size_t index) const;

    InputBytes& m_input;
    std::vector<std::wstring> m_commands;
    std::wstring m_answer;
    int m_code = 0;
    int m_status = 0;
    int m_claimedLength = 0; ///< 0: the true one
    int m_repeats = 0;
    int m_exchanges = 0;
    bool m_hasFailed = false;
};
