#include "bench/measure.h"
#include "bench/tabledriver.h"
#include "device/qlumfpax.h"

#include <array>
#include <cstdio>

using LUM::Fpax::IFpax;

namespace {

constexpr int kCalls = 200;
constexpr int kRounds = 501;
constexpr double kNoBound = MeasureTable::kNoBound;
constexpr int kCapacity = 4096;

template <typename Call>
TimedWork manyCalls(Call call)
{
    return [call] {
        return secondsOf([&call] {
            for (int i = 0; i < kCalls; ++i)
                call();
        });
    };
}

} // namespace

int main()
{
    TableDriver table(1);
    // Nobody can know what the pointer points to, so each call goes through the virtual table.
    IFpax* volatile const source = &table;
    IFpax& driver = *source;
    QLumFpax wrapper(&driver);

    const QVector<unsigned char> command{0x51, 0x00, 0x14, 0x01, 0x01, 0x00, 0x01, 0x13};
    const std::wstring text = readCommands(1, 1).at(1);
    std::array<wchar_t, kCapacity> buffer{};
    volatile int number = 0;

    driver.setCommandBuffer(text.c_str());
    driver.execCommandBuffer();
    const int length = driver.getAnswerBuffer(buffer.data(), kCapacity);
    if (wrapper.runCommand(command).size() != (length + 1) / 3) {
        std::fprintf(stderr, "the wrapper has got another answer\n");
        return 2;
    }

    MeasureTable measures;
    const auto compare = [&measures](const std::string& name, const TimedWork& subject,
                                     const TimedWork& floor) {
        measures.compare(name, kRounds, kNoBound, subject, kCalls, floor, kCalls);
    };
    compare("setInt", manyCalls([&] { wrapper.setInt(&IFpax::setMode, 4); }),
            manyCalls([&] { number = driver.setMode(4); }));
    compare("execMethod", manyCalls([&] { wrapper.execMethod(&IFpax::enterMode); }),
            manyCalls([&] { number = driver.enterMode(); }));
    compare("getInt", manyCalls([&] { number = wrapper.getInt(&IFpax::getModelId); }), manyCalls([&] {
                int value = 0;
                driver.getModelId(&value);
                number = value;
            }));
    compare("getBuff, a text of 14 characters",
            manyCalls([&] { number = static_cast<int>(wrapper.getBuff(&IFpax::getSerialNumber).size()); }),
            manyCalls([&] { number = driver.getSerialNumber(buffer.data(), kCapacity); }));
    compare("runCommand, 8 bytes, answered by " + std::to_string((length + 1) / 3) + " bytes",
            manyCalls([&] { number = static_cast<int>(wrapper.runCommand(command).size()); }), manyCalls([&] {
                driver.setCommandBuffer(text.c_str());
                driver.execCommandBuffer();
                number = driver.getAnswerBuffer(buffer.data(), kCapacity);
            }));
    return measures.exitCode();
}
