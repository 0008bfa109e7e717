#include "bench/measure.h"
#include "bench/processmemory.h"
#include "bench/tabledriver.h"
#include "device/clkrd9io.h"
#include "device/tlvrecord.h"
#include "device/utiljson.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <json/reader.h>

#include <cstdio>
#include <sstream>

using LUM::Fpax::IFpax;

namespace {

constexpr int kTemplateRows = 160;
constexpr int kRecordsOfRow = 5;
constexpr int kMostRows = 65280;
constexpr int kSubTable = 1;

/// The exchange without the program: the same calls in the same order, the commands made beforehand, the answers not
/// looked at.
class DirectExchange
{
public:
    DirectExchange(IFpax& driver, std::vector<std::wstring> commands)
        : m_driver(driver)
        , m_commands(std::move(commands))
        , m_buffer(4096)
    {
    }

    double operator()()
    {
        return secondsOf([this] {
            for (const auto& command : m_commands) {
                m_driver.setCommandBuffer(command.c_str());
                m_driver.execCommandBuffer();
                m_driver.getAnswerBuffer(m_buffer.data(), static_cast<int>(m_buffer.size()));
                int code = 0;
                m_driver.getResultCode(&code);
            }
        });
    }

    double commandCount() const { return static_cast<double>(m_commands.size()); }

private:
    IFpax& m_driver;
    std::vector<std::wstring> m_commands;
    std::vector<wchar_t> m_buffer;
};

double readTable(clKRD9IO& session)
{
    session.tlvTable = Json::Value();
    int n = kSubTable;
    return secondsOf([&] { session.readTableTLV(n); });
}

std::vector<std::wstring> writeCommands(const Json::Value& rows)
{
    std::vector<std::wstring> commands;
    for (const auto& value : rows) {
        const auto record = TlvRecord::fromJson(value);
        if (record && record->first != 0)
            commands.push_back(commandText(record->writeCommand()));
    }
    return commands;
}

/// Reads and writes the whole table of the session's device in both ways.
void compareTransfers(MeasureTable& measures, clKRD9IO& session, int rows, int rounds, double bound,
                      const std::string& suffix)
{
    IFpax& driver = *session.fpaxWrapper->driver();
    DirectExchange directRead(driver, readCommands(rows, kSubTable));
    measures.compare(
        "reading a command" + suffix, rounds, bound, [&] { return readTable(session); },
        directRead.commandCount(), [&] { return directRead(); }, directRead.commandCount());

    Json::Value table = session.tlvTable;
    DirectExchange directWrite(driver, writeCommands(table));
    const auto write = [&] { return secondsOf([&] { session.writeTableTLV(table); }); };
    measures.compare(
        "writing a command" + suffix, rounds, bound, write, directWrite.commandCount(),
        [&] { return directWrite(); }, directWrite.commandCount());
}

/// A session with a device in the process.
class TableSession
{
public:
    explicit TableSession(int rows)
        : m_rows(rows)
        , m_driver(rows)
    {
        m_session.fpaxWrapper.reset(new QLumFpax(&m_driver));
    }

    TableDriver& driver() { return m_driver; }
    clKRD9IO& session() { return m_session; }
    double read() { return readTable(m_session); }
    /// What one reading and one writing send is what the direct exchange sends.
    bool isAlike()
    {
        read();
        Json::Value table = m_session.tlvTable;
        const int readCount = m_driver.commandCount();
        m_session.writeTableTLV(table);
        const int writeCount = m_driver.commandCount() - readCount;
        return m_session.tlvTable.size() == static_cast<unsigned>(m_rows * kRecordsOfRow) &&
               readCommands(m_rows, kSubTable).size() == static_cast<std::size_t>(readCount) &&
               writeCommands(table).size() == static_cast<std::size_t>(writeCount);
    }

private:
    int m_rows;
    TableDriver m_driver;
    clKRD9IO m_session;
};

void reportMemory()
{
    const double before = peakMemoryKib();
    TableSession longest(kMostRows);
    longest.read();
    const double after = peakMemoryKib();
    const double records = longest.session().tlvTable.size();
    std::printf("reading %d rows: peak memory %.0f MiB, %.0f MiB before it; %.0f records, %.0f bytes each\n",
                kMostRows, after / 1024, before / 1024, records, (after - before) * 1024 / records);
}

void compareGrowth(MeasureTable& measures)
{
    constexpr double bound = 1.2;
    TableSession usual(kTemplateRows);
    for (const int rows : {16, 1600, 16000, kMostRows}) {
        TableSession other(rows);
        const int rounds = rows > 10000 ? 5 : 51;
        measures.compare(
            "reading a row of " + std::to_string(rows) + " / of 160", rounds, bound,
            [&] { return other.read(); }, rows, [&] { return usual.read(); }, kTemplateRows);
    }
}

/// The same against the cash register in software; false if it cannot be reached or keeps no table.
bool compareWithEmulator(MeasureTable& measures)
{
    const QTemporaryDir folder;
    qputenv("FPAX_HOME", folder.path().toUtf8());
    clKRD9IO session;
    QString failure;
    Json::Value settings;
    std::istringstream text(UtilJson::SetSettingsJson().toStdString());
    Json::parseFromStream(Json::CharReaderBuilder(), text, &settings, nullptr);
    if (session.initDriver(QStringLiteral(FPAX_PATH), folder.path(), failure) != clKRD9IO::kDone ||
        session.setIOSettings(settings, LUM::Fpax::Model::Tavr22F, folder.path() + '/') != clKRD9IO::kDone ||
        session.getStatus() != 1) {
        std::fprintf(stderr, "no connection with the emulator: %s\n", qPrintable(failure));
        return false;
    }
    readTable(session);
    const int rows = static_cast<int>(session.tlvTable.size()) / kRecordsOfRow;
    if (rows == 0) {
        std::fprintf(stderr, "the emulator has no template table\n");
        return false;
    }
    compareTransfers(measures, session, rows, 15, 1.3, ", emulator");
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    reportMemory();

    TableSession usual(kTemplateRows);
    if (!usual.isAlike()) {
        std::fprintf(stderr, "the session and the direct exchange send different commands\n");
        return 2;
    }
    MeasureTable measures;
    compareTransfers(measures, usual.session(), kTemplateRows, 51, MeasureTable::kNoBound,
                     ", prepared answers");
    if (!compareWithEmulator(measures))
        return 2;

    constexpr int fewRows = 8;
    TableSession slow(fewRows);
    slow.driver().setLatency(std::chrono::milliseconds(5));
    compareTransfers(measures, slow.session(), fewRows, 11, 1.01, ", 5 ms a command");
    compareGrowth(measures);
    return measures.exitCode();
}
