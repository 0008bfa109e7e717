#include "model/bd_t20items.h"

BD_T20Items::BD_T20Items()
{
    InitPolesLabelsV03();
}

QStringList& BD_T20Items::getPolesLabels()
{
    return PolesLabels;
}

QStringList& BD_T20Items::getPolesLabelsView()
{
    return PolesLabelsView;
}

bool BD_T20Items::getFA_NEED(int key)
{
    const auto within = [key](int first, int last) { return key >= first && key <= last; };
    return key == 12 || key == 16 || key == 19 || within(33, 70) || within(75, 78) || within(81, 82) ||
           within(85, 126) || within(129, 134);
}

BD_T20Items::T20Item& BD_T20Items::getPoleByKey(int key)
{
    return items[key];
}

int BD_T20Items::getPoleKeyByDesc(const QString& desc)
{
    const auto count = items.size();
    for (int key = 1; key <= count; ++key) {
        if (items[key].Desc == desc)
            return key;
    }
    return 0;
}

void BD_T20Items::Clear()
{
    items.clear();
    blocks.clear();
}

void BD_T20Items::AddPoleToBD(int key, const T20Item& item)
{
    // Records mostly come in ascending order: the hint makes appending cheap.
    items.insert(items.constEnd(), key, item);
}

bool BD_T20Items::isItemNEED(int key)
{
    return items[key].FA_NEED;
}

bool BD_T20Items::isItemVisibled(int key)
{
    return items[key].Size > 0;
}
