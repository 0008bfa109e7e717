#include "emulator/emulator.h"

#include "emulator/fpaxdriver.h"
#include "emulator/statefile.h"

#include <algorithm>

namespace emulator {

namespace {

const char* const kStateFile = "fpax_state.json";
const char* const kPaperFolder = "fpax_paper";
const char* const kFaultFile = "fpax_faults.json";

} // namespace

Emulator::Emulator() = default;

Emulator::~Emulator()
{
    save(SaveTime::Now);
}

Emulator& Emulator::instance()
{
    static Emulator emulator;
    return emulator;
}

std::unique_lock<std::mutex> Emulator::lock()
{
    return std::unique_lock(m_mutex);
}

FpaxDriver* Emulator::create()
{
    const auto guard = lock();
    return m_drivers.emplace_back(std::make_unique<FpaxDriver>(*this, device().state().settings)).get();
}

void Emulator::release(const LUM::Fpax::IFpax* driver)
{
    const auto guard = lock();
    std::erase_if(m_drivers, [driver](const auto& owned) { return owned.get() == driver; });
}

Emulator::Entry Emulator::enter(const QString& operation, bool diagnostic, bool reachesDevice)
{
    const auto guard = lock();
    const int latency = reachesDevice ? device().state().latencyMs : 0;
    watchFaults();
    Entry entry{m_faults.next(operation, diagnostic), latency};
    if (entry.fault)
        entry.delayMs += entry.fault->delayMs;
    return entry;
}

CashRegister& Emulator::device()
{
    if (!m_loaded)
        reload();
    return m_device;
}

void Emulator::save(SaveTime time)
{
    const bool changed = m_device.takeChanged(time == SaveTime::Now);
    const QList<Print> prints = m_device.takePrints();
    if (m_folder.isEmpty())
        return;
    if (changed)
        writeObject(filePath(kStateFile), m_device.state().toJson());
    for (const Print& print : prints)
        writePrint(print, filePath(kPaperFolder));
}

void Emulator::reset()
{
    m_loaded = true;
    m_folder.clear();
    m_device.setState({});
    m_faults.clear();
    m_faults.forgetFile();
    m_trace.setOn(false);
    m_device.takeChanged(true);
}

void Emulator::reload()
{
    m_loaded = true;
    m_folder = homeFolder();
    DeviceState state;
    if (!m_folder.isEmpty())
        state.apply(readObject(filePath(kStateFile)));
    m_device.setState(state);
    m_device.takeChanged(true);
    m_faults.clear();
    m_faults.forgetFile();
    watchFaults();
}

void Emulator::watchFaults()
{
    if (!m_loaded)
        reload();
    if (!m_folder.isEmpty())
        m_faults.watch(filePath(kFaultFile));
}

QString Emulator::filePath(const QString& name) const
{
    return m_folder + '/' + name;
}

} // namespace emulator
