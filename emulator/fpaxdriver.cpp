#include "emulator/fpaxdriver.h"

#include "emulator/emulator.h"
#include "emulator/widetext.h"

#include <chrono>
#include <stdexcept>
#include <thread>

namespace emulator {

namespace {

constexpr int kFailed = -1;

bool belongsToTransfer(const QString& operation)
{
    return operation == "setCommandBuffer" || operation == "execCommandBuffer" ||
           operation == "getAnswerBuffer" || operation == "getResultCode";
}

[[noreturn]] void throwForeign(const QString& kind)
{
    if (kind == "std")
        throw std::runtime_error("foreign exception on demand");
    throw 42;
}

} // namespace

FpaxDriver::FpaxDriver(Emulator& emulator, const QMap<QString, QString>& appliedSettings)
    : m_emulator(emulator)
    , m_settings(appliedSettings)
    , m_resultText(resultText(code::kOk))
{
}

int FpaxDriver::run(const QString& name, Reach reach, bool getter, const QJsonArray& arguments,
                    const Body& body)
{
    CallRecord record{name, arguments, 0, CallTrace::currentThread(), CallTrace::now(), 0};
    const auto [fault, delayMs] = m_emulator.enter(name, reach == Reach::Diagnostic, reach == Reach::Device);
    if (delayMs > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(delayMs));
    {
        auto lock = m_emulator.lock();
        Call call{lock, fault};
        record.status = fault && fault->status ? failAsTold(*fault, getter) : guardedBody(body, call, getter);
        m_emulator.save(belongsToTransfer(name) ? Emulator::SaveTime::Transfer : Emulator::SaveTime::Now);
        record.endNs = CallTrace::now();
        m_emulator.trace().add(record);
    }
    if (fault && !fault->exception.isEmpty())
        throwForeign(fault->exception);
    return record.status;
}

int FpaxDriver::guardedBody(const Body& body, Call& call, bool getter)
{
    try {
        return body(call);
    } catch (...) {
        // The body may have given the lock back for a while.
        if (!call.lock.owns_lock())
            call.lock.lock();
        return getter ? kFailed : finish(Outcome::refused(code::kInternal));
    }
}

// A getter leaves the result of the last operation alone unless the rule names a code.
int FpaxDriver::failAsTold(const Fault& fault, bool getter)
{
    if (!getter || fault.codeNamed) {
        m_result = {fault.code, fault.badParam, fault.badParamText};
        m_resultText = fault.description;
    }
    return *fault.status;
}

int FpaxDriver::finish(const Outcome& outcome)
{
    m_result = outcome;
    m_resultText = resultText(outcome.code);
    return outcome.isOk() ? 0 : kFailed;
}

int FpaxDriver::setTextRegister(const QString& name, QString& target, const wchar_t* text)
{
    const QString value = fromWide(text);
    return setRegister(name, target, value);
}

int FpaxDriver::readText(const QString& name, const QString& text, wchar_t* buffer, int capacity)
{
    return run(name, Reach::Driver, true, {capacity},
               [&](Call&) { return copyText(text, buffer, capacity); });
}

int FpaxDriver::readNumber(const QString& name, const int& number, int* target)
{
    return run(name, Reach::Driver, true, {}, [&](Call&) {
        if (target == nullptr)
            return kFailed;
        *target = number;
        return 0;
    });
}

int FpaxDriver::execute(const QString& name, const std::function<Outcome()>& body)
{
    return run(name, Reach::Driver, false, {}, [&](Call&) { return finish(body()); });
}

int FpaxDriver::executeOnDevice(const QString& name, const std::function<Outcome()>& body)
{
    return run(name, Reach::Device, false, {}, [&](Call&) {
        if (!m_enabled)
            return finish(Outcome::refused(code::kPortClosed));
        const Outcome link = m_emulator.device().link();
        return finish(link.isOk() ? body() : link);
    });
}

} // namespace emulator
