#include "bench/idledriver.h"
#include "device/jsonfile.h"
#include "fuzz/fuzzwindow.h"
#include "fuzz/templatechecks.h"
#include "tests/support/takedriver.h"

#include <cstdint>
#include <string>
#include <vector>

// The file of free lines: read by the window, written to a device and read from it, and written to the file again.

namespace {

const QString kFile = QStringLiteral("tables.json");
constexpr int kLastRowOfFile = 255;

/// A device with nothing but a table of lines.
class LinesDriver final : public IdleDriver
{
public:
    int setTableNumber(int table) override
    {
        require(table == 21, "free lines stand in their table");
        return 0;
    }
    int setRowNumber(int row) override
    {
        m_row = static_cast<std::size_t>(row);
        return 0;
    }
    int setCaption(const wchar_t* text) override
    {
        m_caption = text;
        return 0;
    }
    int writeTableField() override
    {
        require(m_row == m_lines.size() + 1, "rows are written one after the other");
        m_lines.push_back(m_caption);
        return 0;
    }
    int setCommandBuffer(const wchar_t*) override { return 0; }
    int execCommandBuffer() override { return 0; }
    int getAnswerBuffer(wchar_t*, int) override { return 0; }
    int readTableField() override
    {
        m_code = m_row > m_lines.size() ? -3 : 0;
        if (m_code == 0)
            m_caption = m_lines.at(m_row - 1);
        return m_code;
    }
    int getCaption(wchar_t* buffer, int capacity) override
    {
        return copyText(m_caption.c_str(), static_cast<int>(m_caption.size()), buffer, capacity);
    }
    int getResultCode(int* code) override
    {
        *code = m_code;
        return 0;
    }

private:
    std::vector<std::wstring> m_lines;
    std::wstring m_caption;
    std::size_t m_row = 0;
    int m_code = 0;
};

/// What the device is given comes back, each line up to its first zero.
void checkDevice(const QStringList& lines)
{
    LinesDriver driver;
    clKRD9IO session;
    takeDriver(session, driver);
    require(session.writeTable21(lines) == clKRD9IO::kDone, "a device that takes all ends well");
    QStringList read;
    require(session.readTable21(read) == clKRD9IO::kDone, "a row that the device refuses is the end");
    require(read.size() == lines.size(), "each line comes back");
    for (qsizetype i = 0; i < lines.size(); ++i)
        require(read.at(i) == lines.at(i).left(lines.at(i).indexOf(QChar())), "a line comes back as it was");
}

/// The file that the window writes gives the same lines, but for empty ones and those behind the last row.
void checkFile(FuzzWindow& window)
{
    WindowProbe& probe = window.probe();
    const QStringList lines = probe.freeStrings();
    QStringList kept = lines.first(std::min<qsizetype>(lines.size(), kLastRowOfFile));
    kept.removeAll(QString());
    probe.saveFreeLinesFile();
    probe.loadFreeLinesFile();
    require(probe.freeStrings() == kept, "what was saved is loaded");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzWindow& window = FuzzWindow::instance();
    window.reset();
    window.putFile(kFile, QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    Json::Value lines;
    QString errors;
    const bool isList =
        JsonFile::read(window.filePath(kFile), lines, errors) == JsonFile::Read && lines.isArray();

    window.probe().freeStrings().append(QStringLiteral("line of before"));
    window.probe().loadFreeLinesFile();
    require(window.boxCount() == (isList ? 0 : 1), "a bad file is told");
    const QStringList loaded = window.probe().freeStrings();
    require(isList ? loaded.size() <= lines.size() : loaded.isEmpty(), "lines come from the file alone");
    if (loaded.isEmpty())
        return 0;
    checkDevice(loaded);
    checkFile(window);
    return 0;
}
