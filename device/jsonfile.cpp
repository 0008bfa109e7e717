#include "device/jsonfile.h"

#include "device/regularfile.h"

#include <json/json.h>

namespace {

/// The reader that the library calls deprecated has the messages that the log shows.
bool parse(const QByteArray& bytes, Json::Value& root, QString& errors)
{
    Json::Features features = Json::Features::all();
    features.strictRoot_ = true;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    Json::Reader reader(features);
#pragma GCC diagnostic pop
    try {
        if (reader.parse(bytes.constData(), bytes.constData() + bytes.size(), root, true))
            return true;
        errors = QString::fromStdString(reader.getFormattedErrorMessages());
    } catch (const Json::Exception& error) { // too deeply nested
        errors = QString::fromUtf8(error.what());
    }
    return false;
}

} // namespace

int JsonFile::read(const QString& name, Json::Value& root, QString& errors)
{
    QFile file(name);
    if (!openRegularFile(file, QIODevice::ReadOnly))
        return NotOpened;
    return parse(file.readAll(), root, errors) ? Read : NotParsed;
}

bool JsonFile::write(const QString& name, const Json::Value& root)
{
    QFile file(name);
    if (!openRegularFile(file, QIODevice::WriteOnly))
        return false;
    file.write(root.toStyledString().c_str());
    file.flush();
    file.close();
    return true;
}
