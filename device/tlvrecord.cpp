#include "device/tlvrecord.h"

#include "device/jsonmember.h"

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
    const auto table = JsonMember::integer(value["t"]);
    const auto subTable = JsonMember::integer(value["s"]);
    const auto row = JsonMember::integer(value["r"]);
    const auto first = JsonMember::integer(value["p1"]);
    const auto last = JsonMember::integer(value["p2"]);
    auto bytes = JsonMember::text(value["v"]);
    if (!table || !subTable || !row || !first || !last || !bytes)
        return std::nullopt;
    return TlvRecord{*table, *subTable, *row, *first, *last, *std::move(bytes)};
}

std::string TlvRecord::writeCommand() const
{
    return "5101" + hexText(table) + hexText(subTable) + "0000" + bytes.toStdString();
}
