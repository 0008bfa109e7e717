#include "device/jsonfile.h"

#include <QFile>
#include <QFileInfo>

#include <json/json.h>

namespace {

/// Where the toolkit of JSON marks its reader as deprecated, the program still wants that one: its messages are the
/// ones that the log shows.
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
    // A pipe or a device would keep the window waiting.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return NotOpened;
    return parse(file.readAll(), root, errors) ? Read : NotParsed;
}

bool JsonFile::write(const QString& name, const Json::Value& root)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(root.toStyledString().c_str());
    file.flush();
    file.close();
    return true;
}
