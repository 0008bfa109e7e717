#pragma once

#include "emulator/devicestate.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace emulator {

/// What a field prints: a text, or a number that the field's own format turns into one.
struct FieldValue
{
    QString text;
    std::optional<double> number;
    int decimals = 2;

    bool isEmpty() const { return text.isEmpty() && !number; }
    bool isZero() const { return number ? *number == 0 : text.isEmpty(); }
};

using FieldValues = QHash<int, FieldValue>;

/// One run through a block of the template: the block of positions runs once for each of them.
struct PaperPass
{
    int block = 0;
    FieldValues values;
};

/// What a receipt prints, block by block in the order of the paper.
QList<PaperPass> receiptPasses(const DeviceState& state, bool annulled);

} // namespace emulator
