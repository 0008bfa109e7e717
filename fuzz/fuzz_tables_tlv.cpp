#include "device/jsonfile.h"
#include "device/tlvrecord.h"
#include "fuzz/answeringdriver.h"
#include "fuzz/fuzzwindow.h"
#include "fuzz/templatechecks.h"
#include "tests/support/takedriver.h"

#include <QFileInfo>

#include <algorithm>
#include <cstdint>

// The file of template rows: read, taken for a template, checked, laid out, and sent to a device. The two low bits
// of the first byte choose the sub-table, bit 6 whether the file is to be kept, and with bit 7 the window runs its
// own command, with boxes and a new scene; the other bytes are the file.

namespace {

using T20Item = BD_T20Items::T20Item;

const QString kFile = QStringLiteral("tablestlv.json");

/// No field comes out of nothing.
void checkFields(const BD_T20Items& bd, const Json::Value& rows, int subTable)
{
    const auto isComplete = [subTable](const Json::Value& value) {
        const auto record = TlvRecord::fromJson(value);
        return record && record->subTable == subTable && record->first == 19 && record->last == 19;
    };
    require(bd.items.size() <= std::count_if(rows.begin(), rows.end(), isComplete),
            "a field needs a record of its last parameter");
    for (auto it = bd.items.cbegin(); it != bd.items.cend(); ++it) {
        require(it.key() >= 1 && it->Type == it.key() - 1, "a field stands under the key of its row");
        require(!it->Desc.isEmpty(), "a field has a name");
        require(std::none_of(it->Desc.cbegin(), it->Desc.cend(), [](QChar c) { return c < u' '; }),
                "a name has no control characters");
    }
}

/// The records made of a template give the same parameters again.
void checkRecordRoundTrip(WindowProbe& probe, int subTable)
{
    constexpr int mostRows = 256;
    BD_T20Items bd = probe.bd();
    Json::Value rows(Json::arrayValue);
    const int result = bd.SaveAsJsonV01(rows, subTable);
    require(result == (probe.bd().items.isEmpty() ? 1 : 0), "an empty template has no records");
    const auto sent = static_cast<int>(rows.size() / 4);
    if (sent > mostRows)
        return;
    probe.loadRecords(rows, subTable);
    const auto& again = probe.bd().items;
    require(again.size() == sent, "each field that was sent comes back");
    for (int key = 1; key <= sent; ++key)
        require(std::all_of(T20Item::kDeviceParams.begin(), T20Item::kDeviceParams.end(),
                            [&](auto param) {
                                return (again.value(key).*param & 0xFF) ==
                                       (bd.items.value(key).*param & 0xFF);
                            }),
                "a field comes back as it was sent");
}

/// The device takes the records of the file, however they look.
void checkSending(Json::Value& rows)
{
    InputBytes nothing(nullptr, 0);
    AnsweringDriver driver(nothing);
    clKRD9IO session;
    takeDriver(session, driver);
    QObject::connect(&session, &clKRD9IO::updateProgressValue,
                     [](int value) { require(value >= 0 && value <= 100, "the progress is a percentage"); });
    require(session.writeTableTLV(rows) == clKRD9IO::kDone, "a device that takes all ends well");
    const auto isSent = [](const Json::Value& value) {
        const auto record = TlvRecord::fromJson(value);
        return record && record->first != 0;
    };
    require(static_cast<std::ptrdiff_t>(driver.takeCommands().size()) ==
                std::count_if(rows.begin(), rows.end(), isSent),
            "each record but the heads is sent");
}

/// The window's own command does what its parts do, and tells in one box what it does not take.
void checkCommand(FuzzWindow& window, bool isList, bool keep, int subTable)
{
    WindowProbe& probe = window.probe();
    window.reset();
    probe.setKeepTempFiles(keep);
    probe.bd().AddPoleToBD(1, T20Item());
    probe.loadRecordsFile(subTable);
    require(QFileInfo::exists(window.filePath(kFile)) == (keep || !isList), "what was taken goes");
    if (!isList) {
        require(window.boxCount() == 1 && probe.bd().items.size() == 1,
                "a bad file is told and leaves the template");
        return;
    }
    const bool isShown = probe.maket().getShablonLoaded();
    require(window.boxCount() == (isShown ? 0 : 1), "a bad template is told");
    require(isShown == !probe.bd().items.isEmpty(), "a bad template is dropped as a whole");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr int keepBit = 0x40;
    constexpr int commandBit = 0x80;
    if (size == 0)
        return 0;
    FuzzWindow& window = FuzzWindow::instance();
    window.reset();
    const int subTable = data[0] & 3;
    window.putFile(kFile,
                   QByteArray(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size) - 1));

    Json::Value rows;
    QString errors;
    const int result = JsonFile::read(window.filePath(kFile), rows, errors);
    require(result == JsonFile::Read || result == JsonFile::NotParsed, "the file is there");
    require((result == JsonFile::NotParsed) == !errors.isEmpty(), "a file that cannot be parsed has errors");
    const bool isList = result == JsonFile::Read && rows.isArray();
    if (isList) {
        window.probe().loadRecords(rows, subTable);
        const BD_T20Items& bd = window.probe().bd();
        checkFields(bd, rows, subTable);
        checkFileRoundTrip(bd);
        BD_T20Items copy = bd;
        checkLayoutOfTemplate(copy);
        checkRecordRoundTrip(window.probe(), subTable);
        checkSending(rows);
    }
    if ((data[0] & commandBit) != 0)
        checkCommand(window, isList, (data[0] & keepBit) != 0, subTable);
    return 0;
}
