#pragma once

#include "emulator/paper.h"

#include <QImage>
#include <QString>

namespace emulator {

/// A finished print, waiting for the printer.
struct Print
{
    /// Name of the files without their suffix.
    QString name;
    Paper paper;
    int lineLength = 0;
};

/// A picture of the paper, one pixel for each dot. Null without a graphical application, which owns the fonts.
QImage paperImage(const Paper& paper, int lineLength);

/// Writes the print as a text and, where that can be drawn, as a picture. The folder is made if need be; a
/// printer that cannot write loses the paper and nothing else.
void writePrint(const Print& print, const QString& folder);

} // namespace emulator
