#pragma once

#include <QString>
#include <QStringList>

/// How many calls a good receipt makes.
constexpr int kReceiptCallCount = 92;

// Result codes that mean something to the receipt.
constexpr int kNoExchange = -6;
constexpr int kNoReceipt = -16;
constexpr int kWrongMode = -3801;
constexpr int kShiftMustBeClosed = -3822; ///< it has lasted too long

/// `calls` of a driver without those that only ask why another one failed, and without the texts of addresses.
QStringList receiptCalls(const QStringList& calls);

/// The calls of a good receipt that switches the template by field `field` of the settings table to `digits`;
/// `sums` are the payment of a quarter and that of the whole.
QStringList goodReceiptCalls(const QString& field, const QString& digits, const QStringList& sums);

/// The whole sum of the test receipt, as payments of a quarter and of all.
QStringList receiptSums();

/// The calls that close the shift.
QStringList sessionCloseCalls();

/// The same, and those that open the receipt again.
QStringList recoveryCalls();

/// The log of a good receipt.
QStringList receiptLog();

/// What the recovery adds to it.
QStringList recoveryLog();

/// How many lines the log has when the `k`-th call of a good receipt is made, counted from 1.
int receiptLineOf(int k);
