#include "device/receiptcalls.h"

#include "support/drivercalls.h"

#include <algorithm>

namespace {

const QString kAddress = QStringLiteral("setTagValue(address)");

QStringList addressCalls(const QString& tag)
{
    return {QStringLiteral("setTagNumber(%1)").arg(tag), QStringLiteral("setTagType(5)"), kAddress,
            QStringLiteral("setTagPrint(1)"), QStringLiteral("writeTag()")};
}

struct Position
{
    const char* name;
    const char* price;
    const char* sum;
    const char* group;
    const char* tax;
};

constexpr Position kPositions[] = {
    {"Позиция 0", "0.5", "0.5", "2", "2"}, {"Позиция 1", "1", "1", "1", "1"},
    {"Позиция 2", "2", "2", "2", "2"},     {"Позиция 3", "4", "5", "3", "3"},
    {"Позиция 4", "8", "7", "4", "4"},     {"Позиция 5", "16", "17", "5", "5"},
};

QStringList positionCalls()
{
    QStringList calls;
    for (const auto& position : kPositions) {
        calls += {QStringLiteral("setPositionName(\"%1\")").arg(position.name),
                  QStringLiteral("setQuantity(1)"),
                  QStringLiteral("setPrice(%1)").arg(position.price),
                  QStringLiteral("setPositionSum(%1)").arg(position.sum),
                  QStringLiteral("setPositionGroup(%1)").arg(position.group),
                  QStringLiteral("setPositionTax(%1)").arg(position.tax),
                  QStringLiteral("registerPosition()")};
    }
    return calls;
}

QStringList paymentCalls(int type, const QString& sum, const QString& operation)
{
    return {QStringLiteral("setPaymentType(%1)").arg(type), QStringLiteral("setSumm(%1)").arg(sum),
            operation + QStringLiteral("()")};
}

} // namespace

QStringList receiptCalls(const QStringList& calls)
{
    QStringList found;
    for (const auto& call : calls)
        if (!isDiagnosis(call))
            found.append(call.startsWith(QLatin1String("setTagValue(\"")) ? kAddress : call);
    return found;
}

QStringList goodReceiptCalls(const QString& field, const QString& digits, const QStringList& sums)
{
    const QString& quarter = sums.at(0);
    const QString& whole = sums.at(1);
    return QStringList{"setDeviceEnabled(1)",
                       "cancelCheck()",
                       "setMode(4)",
                       "enterMode()",
                       "setTableNumber(2)",
                       "setRowNumber(1)",
                       QStringLiteral("setFieldNumber(%1)").arg(field),
                       "setFieldType(2)",
                       QStringLiteral("setCaption(\"%1\")").arg(digits),
                       "writeTableField()",
                       "resetMode()",
                       "setMode(1)",
                       "enterMode()",
                       "setCheckType(1)",
                       "openCheck()"} +
           addressCalls("1117") + addressCalls("1008") + positionCalls() +
           QStringList{"readStatus()",    "getSumm()",  "setRoundTarget(0)",
                       "setRoundMode(0)", "setSumm(0)", "applyRounding()"} +
           paymentCalls(1, quarter, "makePayment") + paymentCalls(1, quarter, "makePaymentVariant") +
           paymentCalls(1, quarter, "makePayment") + paymentCalls(2, quarter, "makePayment") +
           paymentCalls(3, quarter, "makePayment") + paymentCalls(0, whole, "makePayment") +
           QStringList{"closeCheck()"};
}

QStringList receiptSums()
{
    return {QStringLiteral("8.125"), QStringLiteral("32.5")};
}

QStringList sessionCloseCalls()
{
    return {"setMode(3)", "enterMode()", "setReportType(1)", "makeReport()"};
}

QStringList recoveryCalls()
{
    return sessionCloseCalls() + QStringList{"setMode(1)", "enterMode()", "setCheckType(1)", "openCheck()"};
}

QStringList receiptLog()
{
    return {"Подключение к устройству...",
            "Отменяем предыдущий чек...",
            "Вход в режим программирования...",
            "Переключение шаблона...",
            "Вход в режим регистрации...",
            "Открытие чека...",
            "Запись адреса отправителя...",
            "Запись адреса получателя...",
            "Печать чека...",
            "Округление...",
            "Оплата...",
            "Закрытие чека..."};
}

QStringList recoveryLog()
{
    return {"Вход в режим отчетов с гашением...", "Печать Z-отчета...", "Вход в режим регистрации...",
            "Открытие чека..."};
}

int receiptLineOf(int k)
{
    // The last call behind each line.
    static constexpr int lastCalls[] = {1, 2, 4, 11, 13, 15, 20, 25, 69, 73, 91, 92};
    return static_cast<int>(std::lower_bound(std::begin(lastCalls), std::end(lastCalls), k) -
                            std::begin(lastCalls)) +
           1;
}
