#pragma once

#include "device/receiptcommand.h"
#include "workflows/transferbench.h"

/// How the driver fails in one of its calls.
struct ReceiptFault
{
    Failure failure = Failure::Coded;
    int code = kFailureCode; ///< of a coded one
};

/// Template, receipt, shift and port.
constexpr ReceiptOrder kEverything{.number = 1};
/// None of the steps around the receipt.
constexpr ReceiptOrder kReceiptAlone{
    .number = 2, .isUpLoad = false, .isSessionClose = false, .isPortRelease = false};
/// The same on a shift that has to be closed first.
constexpr ReceiptOrder kReceiptOnAnOldShift{
    .number = 2, .isUpLoad = false, .isSessionClose = false, .isPortRelease = false, .isShiftTooOld = true};

/// After how many failures a good receipt has to follow where nothing is to be feared for it.
constexpr int kSeldom = 40;

/// The program with a template of two fields on the tape, and a device in its factory state to print test receipts on.
struct EmulatedReceipt : ConnectionBench
{
    EmulatedReceipt();

    /// Makes the device and the driver as they were, on a shift as `order` wants it, and empties the log.
    void prepare(const ReceiptOrder& order);
    /// The `k`-th call from now on fails.
    void failCall(int k, const ReceiptFault& fault);

    /// Chooses the command and answers its dialog as a person would; `calls` and `course` are those of this time.
    void print(const ReceiptOrder& order, int failing = 0, const ReceiptFault& fault = {});

    /// Prepares and prints a receipt that nothing disturbs; what of it is not as it has to be.
    QString harmOfGoodReceipt(const ReceiptOrder& order);
    /// What of the last receipt, of the window and of the device is not as `course` and `calls` have it.
    QString harmAfter();

    const QList<FieldRow> fields = manyFields(2);
    QStringList commands; ///< of the template, as a good receipt sends them
    DialogUser user{QStringLiteral("dlgPrintRcp")};
    QList<MadeCall> calls;
    ReceiptCourse course;

private:
    QList<MadeCall> takeCalls(int failing, const ReceiptFault& fault);
    bool isReceiptLeftOpen() const;
};

/// Which of the calls begins the receipt, counted from 1; 0 if none does.
int receiptStart(const QList<MadeCall>& calls);

/// Fails each call of the command in its turn, but for those that end the program; the first harm found, with its
/// place. After every `between` failures a good receipt has to follow, and at the end.
QString harmOfFaults(const ReceiptOrder& order, const ReceiptFault& fault, int between);
