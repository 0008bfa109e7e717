#include "model/bd_t20items.h"

#include <algorithm>
#include <array>
#include <utility>

void BD_T20Items::T_Line::AddPole(int key)
{
    poles.append(key);
}

void BD_T20Items::T_Line::RemovePole(int key)
{
    if (!poles.removeOne(key))
        qFatal("T_Line::RemovePole: the line does not hold key %d", key);
}

void BD_T20Items::T_Line::FindIdxOfFirstPole(BD_T20Items* bd)
{
    firstIdx = -1;
    if (poles.isEmpty())
        return;
    firstIdx = 0;
    if (poles.size() == 1)
        return;
    int smallest = bd->items[poles.first()].X;
    for (int i = 1; i < poles.size(); ++i) {
        const int x = bd->items[poles.at(i)].X;
        if (x < smallest) {
            smallest = x;
            firstIdx = i;
        }
    }
}

void BD_T20Items::T_SHBlock::CreateBDLines(int count)
{
    lines.clear();
    if (count > 0)
        lines.resize(count);
}

void BD_T20Items::T_SHBlock::InsertPole(int line, int key)
{
    lines[line].AddPole(key);
}

void BD_T20Items::T_SHBlock::ComputeParamsForAllLines(BD_T20Items* bd)
{
    for (auto& line : lines)
        line.FindIdxOfFirstPole(bd);
}

/// True as soon as `holds` is true for a record of the keys 1 to `items.size()`, which are looked at in order, with a
/// blank one for each missing key.
template <typename Predicate>
bool BD_T20Items::anyItem(Predicate holds)
{
    const auto count = items.size();
    auto it = items.lowerBound(1);
    for (int key = 1; key <= count; ++key, ++it) {
        if (it == items.end() || it.key() != key)
            it = items.insert(it, key, T20Item());
        if (holds(key, it.value()))
            return true;
    }
    return false;
}

/// Visits all of these records.
template <typename Visit>
void BD_T20Items::forEachItem(Visit visit)
{
    anyItem([&visit](int key, T20Item& item) {
        visit(key, item);
        return false;
    });
}

QList<int> BD_T20Items::ComputeMaxRowInAllBlocks(int count)
{
    if (items.isEmpty())
        return {};
    QList<int> maxRows(std::max(count, 0), 0);
    forEachItem([&](int, const T20Item& item) {
        if (item.Size > 0 && item.Block >= 0 && item.Block < maxRows.size() && item.Line <= kLineLimit)
            maxRows[item.Block] = std::max(maxRows.at(item.Block), item.Line);
    });
    return maxRows;
}

void BD_T20Items::ReComputeBDBlocks()
{
    if (items.isEmpty())
        return;
    // The records of a large template lie scattered in memory: what follows keeps to what one walk over them
    // has gathered.
    struct Place
    {
        int key;
        int block;
        int line;
        int x;
    };
    QList<Place> places;
    const auto gather = [&] {
        places.clear();
        places.reserve(items.size());
        forEachItem([&places](int key, const T20Item& item) {
            if (item.Size > 0 && item.Block >= 0 && item.Block < kBlockCount && item.Line >= 0 &&
                item.Line <= kLineLimit)
                places.append({key, item.Block, item.Line, item.X});
        });
    };
    const auto count = items.size();
    gather();
    std::array<int, kBlockCount> maxRows{};
    for (const Place& place : std::as_const(places)) {
        int& maxRow = maxRows[static_cast<std::size_t>(place.block)];
        maxRow = std::max(maxRow, place.line);
    }
    // Records that were put in for missing keys have moved the last key on, but not the last lines.
    // cppcheck-suppress knownConditionTrueFalse ; forEachItem() has put them in
    if (items.size() != count)
        gather();

    blocks.clear();
    std::array<QList<int>, kBlockCount> smallestX; // of each line; of no meaning on an empty one
    for (std::size_t b = 0; b < maxRows.size(); ++b) {
        blocks.append(T_SHBlock());
        blocks.last().CreateBDLines(maxRows[b] + 1);
        smallestX[b].resize(maxRows[b] + 1);
    }
    for (const Place& place : std::as_const(places)) {
        if (place.line >= blocks.at(place.block).lines.size())
            continue;
        T_Line& line = blocks[place.block].lines[place.line];
        int& smallest = smallestX[static_cast<std::size_t>(place.block)][place.line];
        if (line.firstIdx < 0 || place.x < smallest) {
            line.firstIdx = static_cast<int>(line.poles.size());
            smallest = place.x;
        }
        line.AddPole(place.key);
    }
}

bool BD_T20Items::isCellBLXTaken(int block, int line, int x)
{
    if (items.isEmpty())
        return true;
    return anyItem([=](int, const T20Item& item) {
        return item.Size > 0 && item.Block == block && item.Line == line && item.X == x;
    });
}

const BD_T20Items::T_Line* BD_T20Items::lineAt(int block, int line) const
{
    if (block < 0 || block >= blocks.size() || line < 0 || line >= blocks.at(block).lines.size())
        return nullptr;
    return &blocks.at(block).lines.at(line);
}

bool BD_T20Items::isLineHavePoles(int block, int line) const
{
    const T_Line* const found = lineAt(block, line);
    return found != nullptr && found->firstIdx != -1;
}

int BD_T20Items::getLineKolPoley(int block, int line) const
{
    const T_Line* const found = lineAt(block, line);
    return found == nullptr ? 0 : static_cast<int>(found->poles.size());
}

BD_T20Items::T20Item BD_T20Items::getLineFirstPole(int block, int line) const
{
    if (!isLineHavePoles(block, line))
        return {};
    const T_Line* const found = lineAt(block, line);
    return items.value(found->poles.at(found->firstIdx));
}

int BD_T20Items::getLineX2Y(int block, int line) const
{
    return getLineFirstPole(block, line).X2Y;
}

int BD_T20Items::getLineX2X(int block, int line) const
{
    return getLineFirstPole(block, line).X2X;
}

int BD_T20Items::getLineFont(int block, int line) const
{
    return getLineFirstPole(block, line).Font;
}

void BD_T20Items::AddLineInBlock(int block, int line)
{
    if (items.isEmpty() || lineAt(block, line) == nullptr)
        return;
    forEachItem([=](int, T20Item& item) {
        if (item.Size > 0 && item.Block == block && item.Line >= line && item.Line <= kLineLimit)
            ++item.Line;
    });
}

void BD_T20Items::DelLineInBlock(int block, int line)
{
    if (items.isEmpty() || lineAt(block, line) == nullptr)
        return;
    forEachItem([=](int, T20Item& item) {
        if (item.Size > 0 && item.Block == block && item.Line > line)
            --item.Line;
    });
}
