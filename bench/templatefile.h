#pragma once

#include <QByteArray>

/// A valid file of the format "new, 26+str", as the program itself writes it: `count` fields of the types 0 to
/// `count` - 1, which repeat the 160 fields of the 80 mm sample over and over. An empty array if the sample
/// cannot be read.
QByteArray makeTemplateFile(int count);
