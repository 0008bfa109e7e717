#include "fuzz/templatechecks.h"

#include "model/templatetext.h"
#include "view/guimaket.h"

#include <QSet>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

using T20Item = BD_T20Items::T20Item;

constexpr int kMaskColumns = 26;

/// Everything that a written row keeps.
bool isSameRecord(const T20Item& written, const T20Item& read)
{
    return written.FA_NEED == read.FA_NEED && written.BL_MASK == read.BL_MASK && written.Type == read.Type &&
           std::all_of(T20Item::kDeviceParams.begin(), T20Item::kDeviceParams.end(),
                       [&](auto param) { return written.*param == read.*param; }) &&
           written.Desc.left(written.Desc.indexOf(u';')) == read.Desc;
}

/// The template file that saving the store makes.
QByteArray writeFile(const BD_T20Items& bd)
{
    QStringList rows;
    const int result = bd.SaveToListWMask(rows);
    require(result == (bd.items.isEmpty() ? -1 : 0) && rows.size() == bd.items.size(),
            "each record has its row");
    QByteArray bytes;
    for (const auto& row : rows) {
        require(row.count(u';') >= kMaskColumns - 1, "a row has 26 columns at least");
        require(!row.contains(u'\n'), "a row is one line");
        bytes += row.toUtf8() + '\n';
    }
    return bytes;
}

/// The index of a valid store holds each visible field once, where the field says.
void checkBlocks(const BD_T20Items& bd)
{
    require(bd.blocks.size() == BD_T20Items::kBlockCount, "a receipt has ten blocks");
    QSet<int> found;
    for (int b = 0; b < bd.blocks.size(); ++b) {
        const auto& lines = bd.blocks.at(b).lines;
        require(!lines.isEmpty() && lines.first().poles.isEmpty(), "line 0 is the heading's");
        for (int l = 0; l < lines.size(); ++l) {
            const auto& poles = lines.at(l).poles;
            require(poles.isEmpty() == (lines.at(l).firstIdx == -1), "a line with fields has a first one");
            require(std::is_sorted(poles.cbegin(), poles.cend()), "keys ascend");
            require(l == 0 || l + 1 < lines.size() || !poles.isEmpty(), "the last line has a field");
            for (int i = 0; i < poles.size(); ++i) {
                const T20Item item = bd.items.value(poles.at(i));
                require(item.Size > 0 && item.Block == b && item.Line == l, "a field stands where it says");
                require(!found.contains(poles.at(i)), "a field stands once");
                found.insert(poles.at(i));
                const int firstIdx = lines.at(l).firstIdx;
                const int firstX = bd.items.value(poles.at(firstIdx)).X;
                require(i < firstIdx ? item.X > firstX : item.X >= firstX, "the first field is leftmost");
            }
        }
    }
    const auto visible =
        std::count_if(bd.items.cbegin(), bd.items.cend(), [](const T20Item& item) { return item.Size > 0; });
    require(visible == found.size(), "no visible field is left out");
}

/// The layout has the lines of the index, each with a height, one block under the other.
void checkLayout(const BD_T20Items& bd, const GUIMaket& maket)
{
    require(maket.blocks.size() == maket.blockCount, "each block has a place");
    int y = 0;
    for (int b = 0; b < maket.blockCount; ++b) {
        require(maket.getBlockKolLines(b) == bd.blocks.at(b).lines.size(), "layout and index agree");
        require(maket.getLineHeight(b, 0) == maket.headerDY, "a heading has its height");
        for (int l = 0; l < maket.getBlockKolLines(b); ++l) {
            require(maket.getLineBaseY(b, l) == y, "lines follow each other without gaps");
            require(maket.getLineHeight(b, l) > 0, "a line has a height");
            require(l == 0 || bd.isLineHavePoles(b, l) == (maket.getLineCharDX(b, l) > 0),
                    "a line with fields has cells");
            y += maket.getLineHeight(b, l);
        }
    }
}

} // namespace

void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

const BD_T20Items& emptyStore()
{
    static const BD_T20Items store;
    return store;
}

void checkFileRoundTrip(const BD_T20Items& bd)
{
    const QByteArray bytes = writeFile(bd);
    BD_T20Items again = emptyStore();
    again.LoadFromListV04(TemplateText(bytes).lines());

    // A later row of a type replaces an earlier one. The row of a negative type cannot be read back as such:
    // zeros stand before its sign.
    QMap<int, const T20Item*> lastOfKey;
    for (const auto& item : bd.items) {
        const int type = std::max(item.Type, 0);
        lastOfKey.insert(static_cast<int>(static_cast<unsigned int>(type) + 1U), &item);
    }
    require(lastOfKey.size() == again.items.size(), "each type that was written is read");
    for (auto it = lastOfKey.cbegin(); it != lastOfKey.cend(); ++it) {
        require(again.items.contains(it.key()), "a record is read under the key of its type");
        require(it.value()->Type < 0 || isSameRecord(*it.value(), again.items.value(it.key())),
                "a record is read as it was written");
    }

    const QByteArray bytesAgain = writeFile(again);
    BD_T20Items third = emptyStore();
    third.LoadFromListV04(TemplateText(bytesAgain).lines());
    require(writeFile(third) == bytesAgain, "what was read once is written the same for ever");
}

void checkLayoutOfTemplate(BD_T20Items& bd)
{
    GUIMaket maket;
    maket.pBD = &bd;
    maket.setBlockTitleEnabled(true);
    QStringList messages;
    const int corrected = bd.CheckBDCorrect(maket.blockCount, messages, true);
    const int errors = bd.CheckBDCorrect(maket.blockCount, messages, false);
    require((errors == -1) == bd.items.isEmpty(), "only an empty store has no result");
    require(messages.size() == std::max(errors, 0), "each bad key has its message");
    // A key whose placement is corrected is checked for its values too, but then counts no more than before.
    require(corrected <= errors, "corrections add no errors");
    if (errors != 0)
        return;

    const auto count = bd.items.size();
    bd.ReComputeBDBlocks();
    require(maket.ReComputeBDBlocks(true) == 0, "a valid template has a layout");
    require(bd.items.size() == count && bd.items.firstKey() == 1 && bd.items.lastKey() == count,
            "a valid template has no holes, and laying it out makes no records");
    checkBlocks(bd);
    checkLayout(bd, maket);
}
