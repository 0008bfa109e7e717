#include "device/ccommtlv.h"
#include "device/clkrd9io.h"
#include "device/tlvrecord.h"
#include "fuzz/answeringdriver.h"
#include "fuzz/fuzzwindow.h"
#include "fuzz/templatechecks.h"
#include "tests/support/takedriver.h"

#include <algorithm>
#include <cstdint>

// A device that answers whatever it likes: its template table is read, taken for a template, checked, and written
// back, the records that were read as well as those of the template. The first byte of an input is the sub-table,
// the others are the device's; AnsweringDriver tells how.

namespace {

constexpr int kMostRequestsOfRow = 256;

// Digits of a record: two bytes of the answer stand before it.
constexpr qsizetype kShortestRecord = 2 * (9 - 2);
constexpr qsizetype kShortestHead = 2 * (17 - 2);

/// What a session says during a transfer.
class Progress : public QObject
{
public:
    explicit Progress(const clKRD9IO& session)
    {
        connect(&session, &clKRD9IO::updateProgressValue, this, [this](int value) {
            require(ends == 0, "the end of a transfer is its last signal");
            values.append(value);
        });
        connect(&session, &clKRD9IO::progressEnd, this, [this] { ++ends; });
    }

    void reset()
    {
        values.clear();
        ends = 0;
    }

    QList<int> values;
    int ends = 0;
};

/// The text of a raw command as the driver must get it.
std::wstring commandText(const TlvRecord& record)
{
    const std::string digits = QString::fromStdString(record.writeCommand()).toUpper().toStdString();
    std::wstring text;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        text += static_cast<wchar_t>(digits[i]);
        text += static_cast<wchar_t>(digits[i + 1]);
        text += L' ';
    }
    return text;
}

/// The records follow the protocol, whatever the device has sent; gives the number of rows.
int checkRecords(const Json::Value& rows, int subTable)
{
    int row = 0;
    int requests = 0;
    for (const auto& value : rows) {
        const auto record = TlvRecord::fromJson(value);
        require(record.has_value(), "what was read are records");
        require(record->table == TlvRecord::kTemplateTable && record->subTable == subTable,
                "a record tells its table");
        const QString bytes = record->bytes;
        require(bytes.size() % 2 == 0 && bytes == bytes.toUpper(), "bytes are pairs of upper-case digits");
        require(bytes.left(4).toInt(nullptr, 16) == record->first * 256 + record->last,
                "the bytes begin with the parameters");
        require(bytes.size() >= kShortestRecord, "a short answer is no record");
        if (record->row != row) {
            require(bytes.size() >= kShortestHead, "a head tells its number of parameters");
            require(record->row == row + 1 && record->first == 0 && record->last == 0,
                    "rows follow each other, each with its head first");
            row = record->row;
            requests = 0;
        } else {
            ++requests;
            require(requests <= kMostRequestsOfRow, "a row does not go on for ever");
        }
    }
    return row;
}

void checkReading(clKRD9IO& session, AnsweringDriver& driver, Progress& progress, int subTable)
{
    int n = subTable;
    const int result = session.readTableTLV(n);
    const bool hasFailed = driver.takeFailure();
    require(result == (hasFailed ? clKRD9IO::kDriverError : clKRD9IO::kDone),
            "a reading fails exactly if the driver does");
    require(progress.ends == 1, "a reading ends once");
    const int rows = checkRecords(session.tlvTable, subTable);
    if (!hasFailed) {
        require(n == rows + 1, "the reading stops at the row behind the last one");
        require(progress.values.size() == rows, "each row tells its progress");
    }
    for (int i = 0; i < progress.values.size(); ++i)
        require(progress.values.at(i) == (i + 1) / 2, "the progress is half the row");
    for (const std::wstring& command : driver.takeCommands())
        require(command.size() == 24 && command.rfind(L"51 00 14 ", 0) == 0, "a read command has 8 bytes");
}

void checkWriting(clKRD9IO& session, AnsweringDriver& driver, Progress& progress, Json::Value rows)
{
    progress.reset();
    const int result = session.writeTableTLV(rows);
    require(progress.ends == 1, "a writing ends once");
    require(std::all_of(progress.values.cbegin(), progress.values.cend(),
                        [](int value) { return value >= 0 && value <= 100; }),
            "the progress is a percentage");

    std::vector<std::wstring> expected;
    for (const auto& value : std::as_const(rows)) {
        const auto record = TlvRecord::fromJson(value);
        if (record->first != 0)
            expected.push_back(commandText(*record));
    }
    const std::vector<std::wstring> commands = driver.takeCommands();
    require(commands.size() <= expected.size() &&
                std::equal(commands.begin(), commands.end(), expected.begin()),
            "a record is sent as it is, and heads are not sent");
    const bool isDone = result == clKRD9IO::kDone;
    require(isDone || driver.takeFailure(), "a writing fails only if the driver does");
    require(!isDone || (commands.size() == expected.size() &&
                        progress.values.size() == static_cast<qsizetype>(expected.size())),
            "what the device refuses does not end the writing");
    driver.takeFailure();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzWindow& window = FuzzWindow::instance();
    window.reset();
    InputBytes input(data, size);
    const int subTable = input.takeByte();
    AnsweringDriver driver(input);
    clKRD9IO session;
    takeDriver(session, driver);
    Progress progress(session);

    checkReading(session, driver, progress, subTable);
    Json::Value rows = session.tlvTable;
    window.probe().loadRecords(rows, subTable);
    BD_T20Items bd = window.probe().bd();
    checkFileRoundTrip(bd);
    checkLayoutOfTemplate(bd);

    checkWriting(session, driver, progress, rows);
    Json::Value ofTemplate(Json::arrayValue);
    const auto count = static_cast<Json::ArrayIndex>(bd.items.size());
    require(bd.SaveAsJsonV01(ofTemplate, subTable) == (count == 0 ? 1 : 0) && ofTemplate.size() == 4 * count,
            "each field has four records");
    checkWriting(session, driver, progress, ofTemplate);
    return 0;
}
