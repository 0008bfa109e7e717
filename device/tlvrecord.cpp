#include "device/tlvrecord.h"

namespace {

// Keys that are not copied into each record.
const Json::StaticString kTableKey("t");
const Json::StaticString kSubTableKey("s");
const Json::StaticString kRowKey("r");
const Json::StaticString kFirstKey("p1");
const Json::StaticString kLastKey("p2");
const Json::StaticString kBytesKey("v");

/// Two hexadecimal digits at least, in lower case.
std::string hexText(int number)
{
    return QString::number(number, 16).rightJustified(2, u'0').toStdString();
}

} // namespace

Json::Value TlvRecord::toJson() const
{
    Json::Value value(Json::objectValue);
    value[kTableKey] = table;
    value[kSubTableKey] = subTable;
    value[kRowKey] = row;
    value[kFirstKey] = first;
    value[kLastKey] = last;
    value[kBytesKey] = bytes.toStdString();
    return value;
}

std::optional<TlvRecord> TlvRecord::fromJson(const Json::Value& value)
{
    if (!value.isObject())
        return std::nullopt;
    try {
        TlvRecord record;
        record.table = value["t"].asInt();
        record.subTable = value["s"].asInt();
        record.row = value["r"].asInt();
        record.first = value["p1"].asInt();
        record.last = value["p2"].asInt();
        record.bytes = QString::fromStdString(value["v"].asString());
        return record;
    } catch (const Json::Exception&) {
        return std::nullopt;
    }
}

std::string TlvRecord::writeCommand() const
{
    return "5101" + hexText(table) + hexText(subTable) + "0000" + bytes.toStdString();
}
