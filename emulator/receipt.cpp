#include "emulator/receipt.h"

#include "emulator/jsonread.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace emulator {

namespace {

constexpr double kMaxRoubles = 1e10;
constexpr qint64 kMaxKopecks = 1'000'000'000'000;

qint64 readKopecks(const QJsonObject& object, const QString& key)
{
    return std::clamp<qint64>(object.value(key).toInteger(), 0, kMaxKopecks);
}

QJsonObject toJson(const Position& position)
{
    return {{"name", position.name}, {"price", position.price}, {"quantity", position.quantity},
            {"sum", position.sum},   {"group", position.group}, {"tax", position.tax}};
}

Position positionFromJson(const QJsonObject& object)
{
    Position position;
    position.name = object.value("name").toString();
    position.price = readKopecks(object, "price");
    position.quantity = object.value("quantity").toDouble();
    position.sum = readKopecks(object, "sum");
    readInt(object, "group", 0, kMaxNumber, position.group);
    readInt(object, "tax", 0, kMaxNumber, position.tax);
    return position;
}

QJsonObject toJson(const Payment& payment)
{
    return {{"type", payment.type}, {"sum", payment.sum}, {"reversed", payment.reversed}};
}

Payment paymentFromJson(const QJsonObject& object)
{
    Payment payment;
    readInt(object, "type", 0, kMaxNumber, payment.type);
    payment.sum = readKopecks(object, "sum");
    readBool(object, "reversed", payment.reversed);
    return payment;
}

QJsonObject toJson(const Attribute& attribute)
{
    return {{"number", attribute.number}, {"text", attribute.text}, {"printed", attribute.printed}};
}

Attribute attributeFromJson(const QJsonObject& object)
{
    Attribute attribute;
    readInt(object, "number", 0, kMaxNumber, attribute.number);
    readText(object, "text", attribute.text);
    readBool(object, "printed", attribute.printed);
    return attribute;
}

template <class List>
QJsonArray arrayOf(const List& list)
{
    QJsonArray array;
    for (const auto& element : list)
        array.append(toJson(element));
    return array;
}

template <class Element>
QList<Element> listOf(const QJsonValue& value, Element (*convert)(const QJsonObject&))
{
    QList<Element> list;
    const QJsonArray array = value.toArray();
    for (const QJsonValue element : array)
        if (element.isObject())
            list.append(convert(element.toObject()));
    return list;
}

} // namespace

std::optional<qint64> kopecks(double roubles)
{
    if (!std::isfinite(roubles) || std::abs(roubles) > kMaxRoubles)
        return std::nullopt;
    return std::llround(roubles * 100);
}

qint64 Receipt::subtotal() const
{
    return std::accumulate(positions.begin(), positions.end(), qint64{0},
                           [](qint64 sum, const Position& position) { return sum + position.sum; });
}

qint64 Receipt::paidBy(int type) const
{
    return std::accumulate(payments.begin(), payments.end(), qint64{0},
                           [type](qint64 sum, const Payment& payment) {
                               if (payment.type != type)
                                   return sum;
                               return payment.reversed ? sum - payment.sum : sum + payment.sum;
                           });
}

qint64 Receipt::paid() const
{
    return std::accumulate(payments.begin(), payments.end(), qint64{0},
                           [](qint64 sum, const Payment& payment) {
                               return payment.reversed ? sum - payment.sum : sum + payment.sum;
                           });
}

qint64 Receipt::paidByCard() const
{
    return paid() - paidBy(kCash);
}

qint64 Receipt::change() const
{
    return std::max<qint64>(0, paid() - total());
}

QString Receipt::attribute(int number) const
{
    const auto found = std::find_if(attributes.rbegin(), attributes.rend(),
                                    [number](const Attribute& a) { return a.number == number && a.printed; });
    return found == attributes.rend() ? QString() : found->text;
}

QJsonObject Receipt::toJson() const
{
    return {{"positions", arrayOf(positions)},
            {"payments", arrayOf(payments)},
            {"attributes", arrayOf(attributes)},
            {"rounding", rounding}};
}

Receipt Receipt::fromJson(const QJsonObject& object)
{
    Receipt receipt;
    receipt.positions = listOf(object.value("positions"), positionFromJson);
    receipt.payments = listOf(object.value("payments"), paymentFromJson);
    receipt.attributes = listOf(object.value("attributes"), attributeFromJson);
    receipt.rounding = readKopecks(object, "rounding");
    return receipt;
}

} // namespace emulator
