#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace emulator {

/// Money in kopecks, rounded; nothing for a number that is no sum of money.
std::optional<qint64> kopecks(double roubles);

/// One goods line of a receipt.
struct Position
{
    QString name;
    qint64 price = 0;
    double quantity = 0;
    qint64 sum = 0;
    /// Department and tax group; 0 for none.
    int group = 0;
    int tax = 0;

    bool operator==(const Position&) const = default;
};

/// Type of a payment in cash.
constexpr int kCash = 0;

/// A reversed payment takes an earlier one back.
struct Payment
{
    int type = 0;
    qint64 sum = 0;
    bool reversed = false;

    bool operator==(const Payment&) const = default;
};

/// A numbered text that goes with the receipt.
struct Attribute
{
    int number = 0;
    QString text;
    bool printed = false;

    bool operator==(const Attribute&) const = default;
};

/// The receipt that is open. A plain value.
struct Receipt
{
    QList<Position> positions;
    QList<Payment> payments;
    QList<Attribute> attributes;
    qint64 rounding = 0;

    qint64 subtotal() const;
    qint64 total() const { return subtotal() - rounding; }
    qint64 paid() const;
    qint64 paidBy(int type) const;
    qint64 paidByCard() const;
    qint64 change() const;
    /// Text of an attribute that is to be printed, empty if there is none.
    QString attribute(int number) const;

    QJsonObject toJson() const;
    static Receipt fromJson(const QJsonObject& object);

    bool operator==(const Receipt&) const = default;
};

} // namespace emulator
