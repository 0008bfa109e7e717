#include "device/jsonfile.h"

#include "device/regularfile.h"

#include <json/json.h>

#include <memory>
#include <string>

namespace {

/// True if anything but blanks and comments stands behind the end of a document.
bool isFollowed(const std::string& rest)
{
    if (rest.find('\0') != std::string::npos) // the library would stop there
        return true;
    Json::CharReaderBuilder builder;
    builder["failIfExtra"] = true;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    const std::string document = "[]" + rest;
    Json::Value root;
    return !reader->parse(document.data(), document.data() + document.size(), &root, nullptr);
}

/// The reader that the library calls deprecated has the messages that the log shows. It does not look behind the end
/// of the document. A list must end there, as its file is removed when it has been taken; settings need not, as those
/// that cannot be parsed are lost.
bool parse(const QByteArray& bytes, Json::Value& root, QString& errors)
{
    Json::Features features = Json::Features::all();
    features.strictRoot_ = true;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    Json::Reader reader(features);
#pragma GCC diagnostic pop
    try {
        if (reader.parse(bytes.constData(), bytes.constData() + bytes.size(), root, true)) {
            if (!root.isArray() || !isFollowed(bytes.mid(root.getOffsetLimit()).toStdString()))
                return true;
            reader.pushError(root, "Extra non-whitespace after JSON value.");
        }
        errors = QString::fromStdString(reader.getFormattedErrorMessages());
    } catch (const Json::Exception& error) { // too deeply nested
        errors = QString::fromUtf8(error.what());
    }
    return false;
}

/// The bytes behind a byte order mark, which some editors put in front and the library does not know.
QByteArray withoutMark(QByteArray bytes)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    return bytes;
}

} // namespace

int JsonFile::read(const QString& name, Json::Value& root, QString& errors)
{
    QFile file(name);
    if (!openRegularFile(file, QIODevice::ReadOnly))
        return NotOpened;
    if (parse(withoutMark(file.readAll()), root, errors))
        return Read;
    root = Json::Value(); // what stood before the mistake is not the file
    return NotParsed;
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
