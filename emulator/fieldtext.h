#pragma once

#include "emulator/receiptdata.h"
#include "emulator/templatetable.h"

#include <QStringList>

namespace emulator {

/// The value as the field's number format and masking want it, of any length.
QString valueText(const TemplateRow& row, const FieldValue& value, int cells);

/// The text in pieces of exactly `cells` characters, aligned as the field wants it. Only a text that is too long
/// and not to be cut has more than one piece.
QStringList fieldPieces(const TemplateRow& row, const FieldValue& value, int cells);

} // namespace emulator
