#include "device/tlvrecord.h"

Json::Value TlvRecord::toJson() const
{
    Json::Value value(Json::objectValue);
    value["t"] = table;
    value["s"] = subTable;
    value["r"] = row;
    value["p1"] = first;
    value["p2"] = last;
    value["v"] = bytes.toStdString();
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
    const auto byte = [](int number) { return QStringLiteral("%1").arg(number, 2, 16, QLatin1Char('0')); };
    const QString text =
        QStringLiteral("5101%1%2%3").arg(byte(table), byte(subTable), QStringLiteral("0000"));
    return text.toStdString() + bytes.toStdString();
}
