#include "model/bd_t20items.h"

#include <QObject>

#include <algorithm>

namespace {

using T20Item = BD_T20Items::T20Item;

/// A negative number is beyond every limit.
bool isAbove(int value, unsigned int limit)
{
    return static_cast<unsigned int>(value) > limit;
}

struct ParamLimit
{
    int T20Item::*param;
    unsigned int highest;
};

constexpr ParamLimit kValueLimits[] = {
    {&T20Item::Font, 7},        {&T20Item::X2X, 1},         {&T20Item::X2Y, 1},
    {&T20Item::PoleFlags, 3},   {&T20Item::LineGap, 255},   {&T20Item::DropIfZero, 1},
    {&T20Item::PressRight, 1},  {&T20Item::Expand, 1},      {&T20Item::CutToWidth, 1},
    {&T20Item::MaskMode, 3},    {&T20Item::FractFormat, 3}, {&T20Item::Brightness, 15},
    {&T20Item::AlignInPole, 3}, {&T20Item::AlignOnTape, 3}, {&T20Item::TailChar, 255},
};

/// The name of the last placement of `item` that is out of range; empty if all are good.
QString findMisplacement(const T20Item& item, int blockCount)
{
    QString error;
    if (item.Block < 0 || item.Block >= blockCount)
        error = QObject::tr("раздел");
    if (item.Line < 1 || item.Line > 255)
        error = QObject::tr("строка");
    if (isAbove(item.X, 255))
        error = QObject::tr("позиция");
    if (isAbove(item.Size, 255))
        error = QObject::tr("размер поля");
    return error;
}

void reportCorrections(const T20Item& item, int key, int blockCount, QStringList& messages)
{
    if (item.Block < 0 || item.Block >= blockCount)
        messages.append(QObject::tr("В поле №%1 скорректирован раздел!").arg(key));
    if (item.Line < 1 || item.Line > 255)
        messages.append(QObject::tr("В поле №%1 скорректирована строка!").arg(key));
    if (isAbove(item.X, 255))
        messages.append(QObject::tr("В поле №%1 скорректирована позиция!").arg(key));
    if (isAbove(item.Size, 255))
        messages.append(QObject::tr("В поле №%1 скорректирован размер!").arg(key));
}

} // namespace

int BD_T20Items::CheckBDCorrect(int blockCount, QStringList& messages, bool fix) const
{
    messages.clear();
    if (items.isEmpty())
        return -1;
    int errors = 0;
    auto it = items.lowerBound(1);
    for (int key = 1; key <= items.size(); ++key) {
        if (it == items.constEnd() || it.key() != key) {
            messages.append(QObject::tr("Пропущено поле №%1").arg(key));
            ++errors;
            continue;
        }
        const T20Item& item = it.value();
        ++it;
        if (fix) {
            reportCorrections(item, key, blockCount, messages);
        } else if (const QString error = findMisplacement(item, blockCount); !error.isEmpty()) {
            messages.append(QObject::tr("В поле №%1 ошибка (%2)!").arg(QString::number(key), error));
            ++errors;
            continue;
        }
        const bool isBadValue =
            std::any_of(std::begin(kValueLimits), std::end(kValueLimits),
                        [&](const auto& limit) { return isAbove(item.*(limit.param), limit.highest); });
        if (isBadValue) {
            messages.append(QObject::tr("У поля №%1 недопустимое значение(я)!").arg(key));
            ++errors;
        }
    }
    return errors;
}
