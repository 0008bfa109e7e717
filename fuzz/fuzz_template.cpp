#include "fuzz/templatechecks.h"
#include "model/templatetext.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

// The road of a template file without the window: decode, vote, read, check, write, lay out. The first byte of
// an input chooses what the store holds before, the others are the file.

namespace {

using T20Item = BD_T20Items::T20Item;

/// What was loaded before the file: nothing, a good template, a whole one, or one without its first field.
void fillStore(BD_T20Items& bd, unsigned char choice)
{
    constexpr int kFew = 10;
    int first = 1;
    int last = 0;
    switch (choice % 4) {
    case 1:
        last = kFew;
        break;
    case 2:
        last = static_cast<int>(bd.PolesLabels.size());
        break;
    case 3:
        first = 2;
        last = kFew + 1;
        break;
    default:
        break;
    }
    for (int key = first; key <= last; ++key) {
        T20Item item;
        item.BL_MASK = 0xffff;
        item.Type = key - 1;
        item.Block = key % BD_T20Items::kBlockCount;
        item.Line = 1 + key / kFew;
        item.X = key % 3;
        item.Size = key % 5;
        item.Desc = bd.PolesLabels.at(key - 1);
        item.makeDescViewFromDesc();
        bd.AddPoleToBD(key, item);
    }
}

/// Reads the file as the window does; false if its format is not recognised.
bool readFile(BD_T20Items& bd, const QByteArray& bytes)
{
    const TemplateText text(bytes);
    const auto& lines = text.lines();
    QList<int> votes;
    require(bd.LoadFrom_AnalizeType(lines, votes) == 0, "every file has a line");
    require(votes.size() == 5 && votes.at(0) == 0, "there are five counters, the first of them unused");
    require(std::all_of(votes.cbegin(), votes.cend(), [](int count) { return count >= 0; }),
            "no format has less than no votes");
    require(std::accumulate(votes.cbegin(), votes.cend(), qsizetype{0}) <= lines.size(),
            "a line has one vote");
    const int most = *std::max_element(votes.cbegin(), votes.cend());
    const auto wins = [&](int format) { return votes.at(format) > 0 && votes.at(format) == most; };
    if (wins(1))
        bd.LoadFromListV01(lines, true);
    else if (wins(2))
        bd.LoadFromListV02(lines);
    else if (wins(3))
        bd.LoadFromListV01(lines, false);
    else if (wins(4))
        bd.LoadFromListV04(lines);
    else
        return false;
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    BD_T20Items bd = emptyStore();
    fillStore(bd, data[0]);
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size) - 1);
    if (!readFile(bd, bytes))
        bd.Clear();
    checkFileRoundTrip(bd);
    checkLayoutOfTemplate(bd);
    return 0;
}
