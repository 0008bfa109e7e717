#pragma once

#include <QString>

#include <json/value.h>

#include <optional>

/// One record of the device's template table, as the program, the device's side and the exchange file pass it on:
/// a JSON object with the keys "t", "s", "r", "p1", "p2" and "v".
struct TlvRecord
{
    static constexpr int kTemplateTable = 20;

    int table = kTemplateTable;
    int subTable = 0; ///< number of the template in the device
    int row = 0;      ///< counts from 1, the field key
    int first = 0;    ///< first parameter; 0 in the head of a row
    int last = 0;     ///< last parameter; 0 in the head of a row
    QString bytes;    ///< upper-case hexadecimal digits

    Json::Value toJson() const;

    /// A missing member counts as 0 or as empty; nothing if `value` is no such record.
    static std::optional<TlvRecord> fromJson(const Json::Value& value);

    /// The text form of the raw command that writes the record.
    std::string writeCommand() const;
};
