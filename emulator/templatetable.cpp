#include "emulator/templatetable.h"

#include <QJsonArray>

#include <array>

namespace emulator {

namespace {

constexpr std::array<int, kParamCount> kBits{8, 4, 1, 1, 2, 8, 8, 8, 8, 1, 1, 1, 1, 2, 2, 4, 2, 2, 8};
constexpr int kMaxRows = 0xFF00;
constexpr int kMaxNameLength = 200;
constexpr int kMaxMaskLength = 16;

QString hex(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex().toUpper());
}

QJsonObject toJson(const SubTable& rows)
{
    QJsonArray params;
    QJsonArray names;
    QJsonArray masks;
    for (const TemplateRow& row : rows) {
        params.append(hex(row.params));
        names.append(row.name);
        masks.append(hex(row.mask));
    }
    return {{"params", params}, {"names", names}, {"masks", masks}};
}

SubTable subTableFromJson(const QJsonObject& object)
{
    const QJsonArray params = object.value("params").toArray();
    const QJsonArray names = object.value("names").toArray();
    const QJsonArray masks = object.value("masks").toArray();
    SubTable rows;
    for (qsizetype i = 0; i < params.size() && i < kMaxRows; ++i) {
        TemplateRow row;
        row.params = QByteArray::fromHex(params[i].toString().toLatin1()).left(kParamCount);
        row.name = names.at(i).toString().left(kMaxNameLength);
        row.mask = QByteArray::fromHex(masks.at(i).toString().toLatin1()).left(kMaxMaskLength);
        rows.append(row);
    }
    return rows;
}

} // namespace

int paramBits(int param)
{
    return param >= 1 && param <= kParamCount ? kBits[static_cast<std::size_t>(param - 1)] : 0;
}

int TemplateRow::value(Param param) const
{
    const int index = static_cast<int>(param) - 1;
    return index < params.size() ? static_cast<unsigned char>(params[index]) : 0;
}

void TemplateRow::set(Param param, int value)
{
    const int index = static_cast<int>(param) - 1;
    if (index < params.size())
        params[index] = static_cast<char>(value);
}

QJsonObject templateTableToJson(const TemplateTable& table)
{
    QJsonObject object;
    for (auto it = table.begin(); it != table.end(); ++it)
        object.insert(QString::number(it.key()), toJson(it.value()));
    return object;
}

TemplateTable templateTableFromJson(const QJsonObject& object)
{
    TemplateTable table;
    for (auto it = object.begin(); it != object.end(); ++it) {
        const int number = it.key().toInt();
        if (number > 0 && number <= 0xFF && it.value().isObject())
            table.insert(number, subTableFromJson(it.value().toObject()));
    }
    return table;
}

} // namespace emulator
