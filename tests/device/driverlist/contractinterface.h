#pragma once

// The driver's interface as a maker of drivers types it from the list of operations. It is kept apart from the
// program's own declaration on purpose: the two meet in the binary only.

namespace LUM::Fpax {

/// A cash register behind numbered registers; operation i of the list stands in slot i.
class IFpax
{
public:
    virtual int getDriverVersion(wchar_t* buffer, int capacity) = 0;
    virtual int getDriverName(wchar_t* buffer, int capacity) = 0;
    virtual int setDeviceEnabled(int value) = 0;
    virtual int getResultCode(int* value) = 0;
    virtual int getResultDescription(wchar_t* buffer, int capacity) = 0;
    virtual int getBadParam(int* value) = 0;
    virtual int getBadParamDescription(wchar_t* buffer, int capacity) = 0;
    virtual int ShowProperties() = 0;
    virtual int getSingleSetting(const wchar_t* name, wchar_t* buffer, int capacity) = 0;
    virtual int setSingleSetting(const wchar_t* name, const wchar_t* value) = 0;
    virtual int getSingleMapping(const wchar_t* name, wchar_t* buffer, int capacity) = 0;
    virtual int applySingleSettings() = 0;
    virtual int getCaption(wchar_t* buffer, int capacity) = 0;
    virtual int setCaption(const wchar_t* text) = 0;
    virtual int readStatus() = 0;
    virtual int getSerialNumber(wchar_t* buffer, int capacity) = 0;
    virtual int getFiscal(int* value) = 0;
    virtual int enterMode() = 0;
    virtual int resetMode() = 0;
    virtual int setMode(int value) = 0;
    virtual int makePayment() = 0;
    virtual int setPaymentType(int value) = 0;
    virtual int getSumm(double* value) = 0;
    virtual int setSumm(double value) = 0;
    virtual int openCheck() = 0;
    virtual int closeCheck() = 0;
    virtual int cancelCheck() = 0;
    virtual int setCheckType(int value) = 0;
    virtual int getCheckState(int* value) = 0;
    virtual int getSessionOpened(int* value) = 0;
    virtual int setPositionName(const wchar_t* text) = 0;
    virtual int setPrice(double value) = 0;
    virtual int setQuantity(double value) = 0;
    virtual int setPositionGroup(int value) = 0;
    virtual int setRoundTarget(int value) = 0;
    virtual int registerPosition() = 0;
    virtual int makeReport() = 0;
    virtual int setReportType(int value) = 0;
    virtual int getModelId(int* value) = 0;
    virtual int setPositionTax(int value) = 0;
    virtual int applyRounding() = 0;
    virtual int setTableNumber(int value) = 0;
    virtual int setRowNumber(int value) = 0;
    virtual int setFieldNumber(int value) = 0;
    virtual int setFieldType(int value) = 0;
    virtual int writeTableField() = 0;
    virtual int readTableField() = 0;
    virtual int setCommandBuffer(const wchar_t* text) = 0;
    virtual int getAnswerBuffer(wchar_t* buffer, int capacity) = 0;
    virtual int execCommandBuffer() = 0;
    virtual int setUnitType(int value) = 0;
    virtual int getCharLineLength(int* value) = 0;
    virtual int getUnitVersionMajor(wchar_t* buffer, int capacity) = 0;
    virtual int getUnitVersionMinor(wchar_t* buffer, int capacity) = 0;
    virtual int getUnitVersionBuild(wchar_t* buffer, int capacity) = 0;
    virtual int setRoundMode(int value) = 0;
    virtual int makePaymentVariant() = 0;
    virtual int getDeviceDescription(wchar_t* buffer, int capacity) = 0;
    virtual int setTagNumber(int value) = 0;
    virtual int setTagValue(const wchar_t* text) = 0;
    virtual int setTagType(int value) = 0;
    virtual int setTagPrint(int value) = 0;
    virtual int writeTag() = 0;
    virtual int readUnitVersion() = 0;
    virtual int setPositionSum(double value) = 0;

protected:
    IFpax() = default;
    ~IFpax() = default;
    IFpax(const IFpax&) = default;
    IFpax& operator=(const IFpax&) = default;
};

} // namespace LUM::Fpax
