#pragma once

#include <QString>

#include <json/value.h>

/// Reading and writing of the JSON files of the program.
namespace JsonFile {

enum Result { Read = 0, NotOpened = 11, NotParsed = 12 };

/// Reads the file `name` into `root`, which must turn out to be an array with nothing behind it, or an object. `root`
/// stays as it is if the file cannot be opened, and becomes null if it cannot be parsed; `errors` then tells why.
int read(const QString& name, Json::Value& root, QString& errors);

/// Writes `root` over the file `name`; false if it cannot be opened.
bool write(const QString& name, const Json::Value& root);

} // namespace JsonFile
