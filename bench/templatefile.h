#pragma once

#include <QByteArray>

/// A valid file of the format "new, 26+str", as the program itself writes it: `count` visible fields of the
/// types 0 to `count` - 1, spread over all blocks and the lines 1 to 255.
QByteArray makeTemplateFile(int count);
