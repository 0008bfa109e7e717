#pragma once

#include "device/receiptcommand.h"
#include "workflows/transferbench.h"

/// How the driver fails in one of its calls.
struct ReceiptFault
{
    enum class Kind {
        Code,      ///< refused with `code`
        NoCode,    ///< refused without a code
        Pretended, ///< done only in its answer
        Standard,  ///< a standard exception
        Number     ///< a number is thrown
    };

    Kind kind = Kind::Code;
    int code = kFailureCode;
};

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

    /// The template of the window in the form of its file.
    QByteArray heldTemplate() const;

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
