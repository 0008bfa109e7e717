#pragma once

#include "device/ifpax.h"

#include <cwchar>
#include <iterator>

/// A driver that does next to nothing: every operation succeeds at once, numbers are 1, texts are short. What a raw
/// command does is left to others.
class IdleDriver : public LUM::Fpax::IFpax
{
public:
    IdleDriver() = default;
    IdleDriver(const IdleDriver&) = delete;
    IdleDriver& operator=(const IdleDriver&) = delete;

    int getResultCode(int* code) override { return giveNumber(code, 0); }
    int getDriverVersion(wchar_t* buffer, int capacity) override { return giveText(buffer, capacity); }
    int getDriverName(wchar_t* buffer, int capacity) override { return giveText(buffer, capacity); }
    int setDeviceEnabled(int) override { return 0; }
    int getResultDescription(wchar_t* buffer, int capacity) override { return giveText(buffer, capacity); }
    int getBadParam(int* param) override { return giveNumber(param, 0); }
    int getBadParamDescription(wchar_t* buffer, int capacity) override { return giveText(buffer, capacity); }
    int ShowProperties() override { return 0; }
    int getSingleSetting(const wchar_t*, wchar_t* buffer, int capacity) override
    {
        return giveText(buffer, capacity);
    }
    int setSingleSetting(const wchar_t*, const wchar_t*) override { return 0; }
    int getSingleMapping(const wchar_t*, wchar_t* buffer, int capacity) override
    {
        return giveText(buffer, capacity);
    }
    int applySingleSettings() override { return 0; }
    int getCaption(wchar_t* buffer, int capacity) override { return giveText(buffer, capacity); }
    int setCaption(const wchar_t*) override { return 0; }
    int readStatus() override { return 0; }
    int getSerialNumber(wchar_t* buffer, int capacity) override { return giveText(buffer, capacity); }
    int getFiscal(int* fiscal) override { return giveNumber(fiscal, 1); }
    int enterMode() override { return 0; }
    int resetMode() override { return 0; }
    int setMode(int) override { return 0; }
    int makePayment() override { return 0; }
    int setPaymentType(int) override { return 0; }
    int getSumm(double* sum) override
    {
        *sum = 1;
        return 0;
    }
    int setSumm(double) override { return 0; }
    int openCheck() override { return 0; }
    int closeCheck() override { return 0; }
    int cancelCheck() override { return 0; }
    int setCheckType(int) override { return 0; }
    int getCheckState(int* state) override { return giveNumber(state, 1); }
    int getSessionOpened(int* opened) override { return giveNumber(opened, 1); }
    int setPositionName(const wchar_t*) override { return 0; }
    int setPrice(double) override { return 0; }
    int setQuantity(double) override { return 0; }
    int setPositionGroup(int) override { return 0; }
    int setRoundTarget(int) override { return 0; }
    int registerPosition() override { return 0; }
    int makeReport() override { return 0; }
    int setReportType(int) override { return 0; }
    int getModelId(int* model) override { return giveNumber(model, 1); }
    int setPositionTax(int) override { return 0; }
    int applyRounding() override { return 0; }
    int setTableNumber(int) override { return 0; }
    int setRowNumber(int) override { return 0; }
    int setFieldNumber(int) override { return 0; }
    int setFieldType(int) override { return 0; }
    int writeTableField() override { return 0; }
    int readTableField() override { return 0; }
    int setUnitType(int) override { return 0; }
    int getCharLineLength(int* length) override { return giveNumber(length, 1); }
    int getUnitVersionMajor(wchar_t* buffer, int capacity) override { return giveText(buffer, capacity); }
    int getUnitVersionMinor(wchar_t* buffer, int capacity) override { return giveText(buffer, capacity); }
    int getUnitVersionBuild(wchar_t* buffer, int capacity) override { return giveText(buffer, capacity); }
    int setRoundMode(int) override { return 0; }
    int makePaymentVariant() override { return 0; }
    int getDeviceDescription(wchar_t* buffer, int capacity) override { return giveText(buffer, capacity); }
    int setTagNumber(int) override { return 0; }
    int setTagValue(const wchar_t*) override { return 0; }
    int setTagType(int) override { return 0; }
    int setTagPrint(int) override { return 0; }
    int writeTag() override { return 0; }
    int readUnitVersion() override { return 0; }
    int setPositionSum(double) override { return 0; }

protected:
    ~IdleDriver() = default;

    /// The text and its zero if they fit the buffer, else nothing; the status is the length.
    static int copyText(const wchar_t* text, int length, wchar_t* buffer, int capacity)
    {
        if (length < capacity)
            std::wmemcpy(buffer, text, static_cast<std::size_t>(length) + 1);
        return length;
    }

private:
    static int giveNumber(int* target, int number)
    {
        *target = number;
        return 0;
    }

    static int giveText(wchar_t* buffer, int capacity)
    {
        static constexpr wchar_t text[] = L"00106301480042";
        return copyText(text, static_cast<int>(std::size(text)) - 1, buffer, capacity);
    }
};
