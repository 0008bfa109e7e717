#pragma once

#include <QString>

#include <json/value.h>

#include <optional>

/// Members of the JSON objects that the program exchanges: nothing is made of a value of another type, and one that
/// is missing or null counts as 0 or as empty.
namespace JsonMember {

inline std::optional<int> integer(const Json::Value& value)
{
    if (value.isNull())
        return 0;
    return value.isInt() ? std::optional(value.asInt()) : std::nullopt;
}

inline std::optional<QString> text(const Json::Value& value)
{
    if (value.isNull())
        return QString();
    return value.isString() ? std::optional(QString::fromStdString(value.asString())) : std::nullopt;
}

} // namespace JsonMember
