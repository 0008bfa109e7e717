#pragma once

#include <QString>

namespace emulator {

/// Codes that the cash register and its driver report. Negative ones are failures.
namespace code {
constexpr int kOk = 0;
constexpr int kPortUnavailable = -1;
constexpr int kPortClosed = -2;
constexpr int kNoDisplay = -3;
constexpr int kInternal = -4;
constexpr int kLinkLost = -6;
constexpr int kBadParameter = -11;
constexpr int kNoReceipt = -16;
constexpr int kInjected = -1000;
constexpr int kWrongMode = -3801;
constexpr int kReceiptOpen = -3803;
constexpr int kShiftClosed = -3806;
constexpr int kShiftTooLong = -3822;
constexpr int kNotSupported = -3830;
constexpr int kNoSuchUnit = -3831;
constexpr int kNoSuchTable = -3840;
constexpr int kNoSuchRow = -3841;
constexpr int kNoSuchField = -3842;
constexpr int kBadCommand = -3843;
constexpr int kNotPaid = -3850;
constexpr int kPaymentBegun = -3851;
constexpr int kPaymentTooLarge = -3852;
constexpr int kNoSuchPayment = -3853;
} // namespace code

/// What is said of a code in the driver's description register.
QString resultText(int code);

/// How an operation of the device or of the driver ended.
struct Outcome
{
    int code = code::kOk;
    int badParam = 0;
    QString badParamText;

    bool isOk() const { return code == code::kOk; }

    static Outcome ok() { return {}; }
    static Outcome refused(int code) { return {code, 0, QString()}; }
    /// `number` tells the parameters of an operation apart and is never 0.
    static Outcome badParameter(int number, const QString& text)
    {
        return {code::kBadParameter, number, text};
    }
};

} // namespace emulator
