#pragma once

#include "bench/idledriver.h"

#include <array>
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

/// A driver whose device has a template table: each row has a head and the parameter groups 1-6, 7-12, 13-18 and
/// 19. It answers from prepared texts, in which it only puts the number of the row, and takes writes without keeping
/// them.
class TableDriver final : public IdleDriver
{
public:
    explicit TableDriver(int rows);

    /// How long the device takes for a command.
    void setLatency(std::chrono::milliseconds latency) { m_latency = latency; }
    int commandCount() const { return m_commandCount; }

    int setCommandBuffer(const wchar_t* command) override;
    int execCommandBuffer() override;
    int getAnswerBuffer(wchar_t* buffer, int capacity) override;
    int getResultCode(int* code) override;

private:
    int refuse();

    int m_rows;
    std::chrono::milliseconds m_latency{0};
    int m_commandCount = 0;
    int m_code = 0;
    std::wstring m_command;
    std::array<std::wstring, 5> m_readAnswers; ///< the head, then the groups
    std::wstring m_writeAnswer;
    const std::wstring* m_answer = nullptr;
};

/// The text of a raw command as a driver takes it: pairs of upper-case digits, a blank behind each.
std::wstring commandText(std::string_view digits);

/// The commands that read the table of a TableDriver with `rows` rows up to the row that it does not have.
std::vector<std::wstring> readCommands(int rows, int subTable);
