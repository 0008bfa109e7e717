#pragma once

#include "device/ifpax.h"
#include "emulator/calltrace.h"
#include "emulator/cashregister.h"
#include "emulator/faultplan.h"

#include <QString>

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace emulator {

class FpaxDriver;

/// Everything that the library holds: one cash register, the fault rules, the trace, and the driver objects that
/// nobody has released. It is destroyed when the library is unloaded, which may be after the application object
/// is gone, so nothing in here belongs to a window, a thread or an event loop.
class Emulator
{
public:
    Emulator();
    ~Emulator();
    Emulator(const Emulator&) = delete;
    Emulator& operator=(const Emulator&) = delete;

    /// The one object of the library.
    static Emulator& instance();

    FpaxDriver* create();
    /// Destroys a driver object; one that is not ours is left alone.
    void release(const LUM::Fpax::IFpax* driver);

    /// What awaits an operation that begins now.
    struct Entry
    {
        std::optional<Fault> fault;
        int delayMs = 0;
    };
    /// Counts the call, looks for a rule that hits it, and adds the device's latency if it is reached.
    Entry enter(const QString& operation, bool diagnostic, bool reachesDevice);

    /// All that follows wants this lock to be held.
    std::unique_lock<std::mutex> lock();

    CashRegister& device();
    FaultPlan& faults() { return m_faults; }
    CallTrace& trace() { return m_trace; }

    /// Writes the state file if the device has changed, and what it has printed. In the middle of a transfer of
    /// table 20 its rows can wait.
    enum class SaveTime { Now, Transfer };
    void save(SaveTime time);
    /// Back to a new device; the files stay untouched until reload().
    void reset();
    /// Looks for the folder again and takes what its files hold.
    void reload();

    /// Takes the rules of the fault file if it has changed.
    void watchFaults();

private:
    QString filePath(const QString& name) const;

    std::mutex m_mutex;
    CashRegister m_device;
    FaultPlan m_faults;
    CallTrace m_trace;
    std::vector<std::unique_ptr<FpaxDriver>> m_drivers;
    QString m_folder;
    bool m_loaded = false;
};

} // namespace emulator
