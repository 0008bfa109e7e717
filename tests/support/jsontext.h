#pragma once

#include <QByteArray>

#include <json/json.h>

#include <memory>
#include <string>

/// What `text` holds.
inline Json::Value jsonOf(const QByteArray& text)
{
    Json::Value value;
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    std::string errors;
    if (!reader->parse(text.constData(), text.constData() + text.size(), &value, &errors))
        qFatal("%s: %s", text.constData(), errors.c_str());
    return value;
}
