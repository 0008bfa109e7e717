#include "device/clkrd9io.h"

#include "device/devicecodes.h"

#include <cmath>
#include <cstdlib>
#include <exception>

using LUM::Fpax::IFpax;

namespace {

constexpr int kSale = 1;

// Result codes of the driver that a receipt expects.
constexpr int kNoOpenReceipt = -16;
constexpr int kNoReceiptInMode = -3801;
constexpr int kShiftMustBeClosed = -3822;

// Attributes of a receipt.
constexpr int kSenderAddress = 1117;
constexpr int kBuyerAddress = 1008;
constexpr int kTextTag = 5;

/// The field of table 2 that chooses the template.
constexpr int kSettingsTable = 2;
constexpr int kTemplateField = 111;
constexpr int kOldTemplateField = 19;
constexpr int kHexadecimalType = 2;

struct Payment
{
    int type;
    double part; // of the sum of the receipt
    int (IFpax::*pay)();
};

constexpr Payment kPayments[] = {
    {1, 0.25, &IFpax::makePayment}, {1, 0.25, &IFpax::makePaymentVariant}, {1, 0.25, &IFpax::makePayment},
    {2, 0.25, &IFpax::makePayment}, {3, 0.25, &IFpax::makePayment},        {0, 1.0, &IFpax::makePayment},
};

} // namespace

int clKRD9IO::printReceipt(int templateNumber, bool fieldNineteen, QStringList& log)
{
    try {
        pulse(log, tr("Подключение к устройству..."));
        fpax().setInt(&IFpax::setDeviceEnabled, 1);
        cancelOpenReceipt(log);

        pulse(log, tr("Вход в режим программирования..."));
        if (enterModeProgram() != kDone)
            std::terminate(); // the template cannot be switched, and what the device would print is unknown
        pulse(log, tr("Переключение шаблона..."));
        switchTemplate(templateNumber, fieldNineteen);

        openReceipt(log);
        pulse(log, tr("Запись адреса отправителя..."));
        writeReceiptTag(kSenderAddress, tr("check@shablonist.local"));
        pulse(log, tr("Запись адреса получателя..."));
        writeReceiptTag(kBuyerAddress, tr("buyer@shablonist.local"));

        pulse(log, tr("Печать чека..."));
        registerPositions();
        fpax().execMethod(&IFpax::readStatus);
        double sum = 0.0;
        fpax().driver()->getSumm(&sum);

        pulse(log, tr("Округление..."));
        fpax().setInt(&IFpax::setRoundTarget, 0);
        fpax().setInt(&IFpax::setRoundMode, 0);
        fpax().setDouble(&IFpax::setSumm, 0.0);
        fpax().execMethod(&IFpax::applyRounding);

        pulse(log, tr("Оплата..."));
        for (const auto& payment : kPayments) {
            fpax().setInt(&IFpax::setPaymentType, payment.type);
            fpax().setDouble(&IFpax::setSumm, sum * payment.part);
            fpax().execMethod(payment.pay);
        }

        pulse(log, tr("Закрытие чека..."));
        fpax().execMethod(&IFpax::closeCheck);
    } catch (...) {
        return kDriverError;
    }
    return kDone;
}

/// Annuls a receipt that was left open; that there is none is no failure.
void clKRD9IO::cancelOpenReceipt(QStringList& log)
{
    pulse(log, tr("Отменяем предыдущий чек..."));
    try {
        fpax().execMethod(&IFpax::cancelCheck);
    } catch (const Exception&) {
        const int code = fpax().getInt(&IFpax::getResultCode);
        if (code != kNoOpenReceipt && code != kNoReceiptInMode)
            throw;
    }
}

void clKRD9IO::switchTemplate(int templateNumber, bool fieldNineteen)
{
    constexpr int numberBits = 0x3F;
    fpax().setInt(&IFpax::setTableNumber, kSettingsTable);
    fpax().setInt(&IFpax::setRowNumber, 1);
    fpax().setInt(&IFpax::setFieldNumber, fieldNineteen ? kOldTemplateField : kTemplateField);
    fpax().setInt(&IFpax::setFieldType, kHexadecimalType);
    const QString number = QStringLiteral("%1").arg(templateNumber & numberBits, 2, 16, QLatin1Char('0'));
    fpax().setText(&IFpax::setCaption, number);
    fpax().execMethod(&IFpax::writeTableField);
    fpax().execMethod(&IFpax::resetMode);
}

/// Opens a receipt, after the closing report if the shift has lasted too long. Any other refusal is left to the
/// steps that follow.
void clKRD9IO::openReceipt(QStringList& log)
{
    const auto open = [this, &log] {
        pulse(log, tr("Вход в режим регистрации..."));
        enterDeviceMode(DeviceCode::kModeRegistration);
        pulse(log, tr("Открытие чека..."));
        fpax().setInt(&IFpax::setCheckType, kSale);
        fpax().execMethod(&IFpax::openCheck);
    };
    try {
        open();
    } catch (const Exception&) {
        if (fpax().getInt(&IFpax::getResultCode) != kShiftMustBeClosed)
            return;
        pulse(log, tr("Вход в режим отчетов с гашением..."));
        enterDeviceMode(DeviceCode::kModeReports);
        pulse(log, tr("Печать Z-отчета..."));
        fpax().setInt(&IFpax::setReportType, DeviceCode::kClosingReport);
        fpax().execMethod(&IFpax::makeReport);
        open();
    }
}

/// An attribute of the receipt that a device may well refuse.
void clKRD9IO::writeReceiptTag(int number, const QString& value)
{
    try {
        fpax().setInt(&IFpax::setTagNumber, number);
        fpax().setInt(&IFpax::setTagType, kTextTag);
        fpax().setText(&IFpax::setTagValue, value);
        fpax().setInt(&IFpax::setTagPrint, 1);
        fpax().execMethod(&IFpax::writeTag);
    } catch (...) {
    }
}

/// Six positions with prices from 0.5 to 16; the sums of the last three are off by one on purpose.
void clKRD9IO::registerPositions()
{
    constexpr int groups = 16;
    constexpr int taxes = 6;
    for (int i = -1; i <= 4; ++i) {
        const double price = std::ldexp(1.0, i);
        double sum = price;
        if (i > 1)
            sum = i % 2 == 0 ? price + 1 : price - 1;
        fpax().setText(&IFpax::setPositionName, tr("Позиция %1").arg(i + 1));
        fpax().setDouble(&IFpax::setQuantity, 1.0);
        fpax().setDouble(&IFpax::setPrice, price);
        fpax().setDouble(&IFpax::setPositionSum, sum);
        fpax().setInt(&IFpax::setPositionGroup, std::abs(i % groups) + 1);
        fpax().setInt(&IFpax::setPositionTax, std::abs(i % taxes) + 1);
        fpax().execMethod(&IFpax::registerPosition);
    }
}
