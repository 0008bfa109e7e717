#include "emulator/receiptdata.h"

#include <QDateTime>

#include <array>

namespace emulator {

namespace {

constexpr int kSenderAddress = 1117;
constexpr int kBuyerAddress = 1008;
constexpr int kFirstFreeLineKey = 2;
constexpr int kFreeLineKeys = 8;
constexpr int kFirstTaxKey = 44;
constexpr int kKeysOfATax = 4;

struct Tax
{
    const char* sign;
    const char* name;
    int percent;
};

constexpr std::array kTaxes{Tax{"A", "НДС 20%", 20}, Tax{"B", "НДС 10%", 10}, Tax{"C", "НДС 5%", 5},
                            Tax{"D", "НДС 7%", 7},   Tax{"E", "НДС 0%", 0},   Tax{"F", "БЕЗ НДС", 0}};

FieldValue label(const QString& text)
{
    return {text, std::nullopt, 0};
}

FieldValue money(qint64 kopecks)
{
    return {{}, static_cast<double>(kopecks) / 100.0, 2};
}

FieldValue amount(double number)
{
    return {{}, number, 3};
}

FieldValue count(int number)
{
    return {{}, number, 0};
}

qint64 taxOf(qint64 sum, const Tax& tax)
{
    return (sum * tax.percent + (100 + tax.percent) / 2) / (100 + tax.percent);
}

/// Label, sign and sum of one line of money.
void addSum(FieldValues& values, int firstKey, const QString& name, qint64 sum)
{
    values[firstKey] = label(name);
    values[firstKey + 1] = label("=");
    values[firstKey + 2] = money(sum);
}

/// Label and value of one line, if there is a value.
void addPair(FieldValues& values, int firstKey, const QString& name, const FieldValue& value)
{
    if (value.isEmpty())
        return;
    values[firstKey] = label(name);
    values[firstKey + 1] = value;
}

void addFreeLines(FieldValues& values, const DeviceState& state)
{
    for (int i = 0; i < kFreeLineKeys; ++i)
        values[kFirstFreeLineKey + i] = label(state.freeLines.value(i));
}

void addDevice(FieldValues& values, const DeviceState& state)
{
    const Counters& counters = state.counters;
    values[1] = label("КАССОВЫЙ ЧЕК");
    values[78] = label("ПРИХОД");
    addPair(values, 79, "КАССА", count(1));
    addPair(values, 81, "КАССИР", label("Оператор 1"));
    addPair(values, 83, "ДОКУМЕНТ", count(counters.documents));
    addPair(values, 85, "ПОЛЬЗОВАТЕЛЬ", label("ООО Пример"));
    addPair(values, 87, "АДРЕС РАСЧЕТА", label("г. Город, ул. Садовая, 1"));
    addPair(values, 89, "АДРЕС ПОКУПАТЕЛЯ", label(state.receipt.attribute(kBuyerAddress)));
    addPair(values, 91, "АДРЕС ОТПРАВИТЕЛЯ", label(state.receipt.attribute(kSenderAddress)));
    addPair(values, 95, "ЗН", label(state.serial));
    addPair(values, 97, "ИНН", label("0000000000"));
    addPair(values, 99, "СНО", label("ОСН"));
    addPair(values, 101, "МЕСТО РАСЧЕТОВ", label("Магазин"));
    addPair(values, 111, "СМЕНА", count(counters.shifts));
    addPair(values, 113, "ЧЕК", count(counters.shiftReceipts));
    addPair(values, 115, "САЙТ ФНС", label("www.example.org"));
    addPair(values, 117, "РНМ", label("0000000000000001"));
    addPair(values, 119, "ФН", label("0000000000000002"));
    addPair(values, 121, "ФД", count(counters.documents));
    addPair(values, 123, "ФПД", label("0000000000"));
    addPair(values, 125, "ДАТА", label(QDateTime::currentDateTime().toString("dd.MM.yyyy HH:mm")));
    values[159] = label("[QR-код]");
    values[160] = label("[картинка]");
}

void addTaxes(FieldValues& values, const Receipt& receipt)
{
    for (std::size_t i = 0; i < kTaxes.size(); ++i) {
        qint64 sum = 0;
        for (const Position& position : receipt.positions)
            if (position.tax == static_cast<int>(i) + 1)
                sum += position.sum;
        if (sum == 0)
            continue;
        const int key = kFirstTaxKey + kKeysOfATax * static_cast<int>(i);
        values[key] = label(kTaxes[i].sign);
        values[key + 1] = label(kTaxes[i].name);
        values[key + 2] = label("=");
        values[key + 3] = money(kTaxes[i].percent == 0 ? sum : taxOf(sum, kTaxes[i]));
    }
}

void addTotals(FieldValues& values, const Receipt& receipt)
{
    addSum(values, 35, "ПОДЫТОГ", receipt.subtotal());
    if (receipt.rounding != 0)
        addSum(values, 38, "ОКРУГЛЕНИЕ", receipt.rounding);
    addSum(values, 41, "ИТОГ", receipt.total());
    addSum(values, 68, "ОПЛАТА", receipt.paid());
    addSum(values, 75, "СДАЧА", receipt.change());
    addSum(values, 128, "НАЛИЧНЫМИ", receipt.paidBy(0));
    addSum(values, 131, "ЭЛЕКТРОННЫМИ", receipt.paidByCard());
}

FieldValues positionValues(const Position& position, int number)
{
    FieldValues values;
    values[10] = count(number);
    if (position.group != 0)
        values[11] = count(position.group);
    values[12] = label(position.name);
    values[13] = money(position.price);
    values[14] = money(position.price);
    values[15] = label("x");
    values[16] = amount(position.quantity);
    values[17] = label("шт");
    values[18] = label("=");
    values[19] = money(position.sum);
    values[33] = label("ТОВАР");
    values[34] = label("ПОЛНЫЙ РАСЧЕТ");
    if (position.tax >= 1 && position.tax <= static_cast<int>(kTaxes.size())) {
        const Tax& tax = kTaxes[static_cast<std::size_t>(position.tax - 1)];
        values[27] = label(tax.sign);
        values[28] = label(tax.name);
        values[29] = count(tax.percent);
        values[30] = label("%");
        values[31] = label("=");
        values[32] = money(taxOf(position.sum, tax));
    }
    return values;
}

FieldValues reversalValues(const Payment& payment)
{
    FieldValues values;
    values[71] = label("СТОРНО ОПЛАТЫ");
    values[72] = label(payment.type == 0 ? QString("НАЛ") : QString("ЭЛ%1").arg(payment.type));
    values[73] = label("=");
    values[74] = money(payment.sum);
    return values;
}

FieldValues joined(FieldValues values, const FieldValues& own)
{
    values.insert(own);
    return values;
}

} // namespace

QList<PaperPass> receiptPasses(const DeviceState& state, bool annulled)
{
    const Receipt& receipt = state.receipt;
    FieldValues common;
    addFreeLines(common, state);
    addDevice(common, state);
    addTotals(common, receipt);
    addTaxes(common, receipt);

    QList<PaperPass> passes{{0, common}};
    int number = 0;
    for (const Position& position : receipt.positions)
        passes.append({1, joined(common, positionValues(position, ++number))});
    if (annulled) {
        passes.append({8, joined(common, {{158, label("ЧЕК АННУЛИРОВАН")}})});
        passes.append({6, common});
        return passes;
    }
    for (const int block : {2, 3, 4, 5})
        passes.append({block, common});
    for (const Payment& payment : receipt.payments)
        if (payment.reversed)
            passes.append({9, joined(common, reversalValues(payment))});
    passes.append({6, common});
    passes.append({7, common});
    return passes;
}

} // namespace emulator
