#pragma once

namespace LUM::Fpax {

/// Numeric model of a cash register, as the driver counts them.
enum class Model : int { Tavr22F = 63 };

/// The driver of the cash register: a binary contract with libraries that are built elsewhere. Function i of the
/// list stands in slot i of the virtual table; nothing virtual may come before, between or after.
///
/// Every function returns a status: a negative one means failure, and getResultCode() then tells more. A getter
/// of text takes a buffer and its capacity in characters and returns the length that the text needs; 0 or less
/// means nothing to read. A setter stores a value in a register of the driver for the next executing operation.
class IFpax
{
public:
    // About the driver and the port.
    virtual int getDriverVersion(wchar_t* buffer, int capacity) = 0;
    virtual int getDriverName(wchar_t* buffer, int capacity) = 0;
    /// 1 opens the port and connects, 0 releases the port.
    virtual int setDeviceEnabled(int enabled) = 0;

    // About the last operation.
    /// 0 for success, negative for errors.
    virtual int getResultCode(int* code) = 0;
    virtual int getResultDescription(wchar_t* buffer, int capacity) = 0;
    /// Nonzero when a parameter was at fault.
    virtual int getBadParam(int* param) = 0;
    virtual int getBadParamDescription(wchar_t* buffer, int capacity) = 0;

    // Settings.
    /// Shows the driver's own modal dialog.
    virtual int ShowProperties() = 0;
    virtual int getSingleSetting(const wchar_t* name, wchar_t* buffer, int capacity) = 0;
    virtual int setSingleSetting(const wchar_t* name, const wchar_t* value) = 0;
    virtual int getSingleMapping(const wchar_t* name, wchar_t* buffer, int capacity) = 0;
    /// Applies the stored settings to the port.
    virtual int applySingleSettings() = 0;

    // Text register of the table fields.
    virtual int getCaption(wchar_t* buffer, int capacity) = 0;
    virtual int setCaption(const wchar_t* text) = 0;

    // Status of the device.
    /// Refreshes the status registers from the device.
    virtual int readStatus() = 0;
    virtual int getSerialNumber(wchar_t* buffer, int capacity) = 0;
    /// Nonzero when the device is fiscalised.
    virtual int getFiscal(int* fiscal) = 0;

    // Modes.
    virtual int enterMode() = 0;
    virtual int resetMode() = 0;
    /// 1 registration, 3 reports with clearing, 4 programming.
    virtual int setMode(int mode) = 0;

    // Payments.
    virtual int makePayment() = 0;
    virtual int setPaymentType(int type) = 0;
    virtual int getSumm(double* sum) = 0;
    virtual int setSumm(double sum) = 0;

    // Receipt and shift.
    virtual int openCheck() = 0;
    virtual int closeCheck() = 0;
    virtual int cancelCheck() = 0;
    virtual int setCheckType(int type) = 0;
    /// 0 when no receipt is open.
    virtual int getCheckState(int* state) = 0;
    /// Nonzero when the shift is open.
    virtual int getSessionOpened(int* opened) = 0;

    // The next position of the receipt.
    virtual int setPositionName(const wchar_t* name) = 0;
    virtual int setPrice(double price) = 0;
    virtual int setQuantity(double quantity) = 0;
    virtual int setPositionGroup(int group) = 0;
    virtual int setRoundTarget(int target) = 0;
    virtual int registerPosition() = 0;

    // Reports.
    virtual int makeReport() = 0;
    /// 1 is the closing report.
    virtual int setReportType(int type) = 0;

    virtual int getModelId(int* model) = 0;
    virtual int setPositionTax(int tax) = 0;
    virtual int applyRounding() = 0;

    // Fields of the device's tables.
    virtual int setTableNumber(int table) = 0;
    virtual int setRowNumber(int row) = 0;
    virtual int setFieldNumber(int field) = 0;
    /// 1 text, 2 hexadecimal text.
    virtual int setFieldType(int type) = 0;
    virtual int writeTableField() = 0;
    virtual int readTableField() = 0;

    // Raw commands: hexadecimal byte pairs separated by blanks.
    virtual int setCommandBuffer(const wchar_t* command) = 0;
    virtual int getAnswerBuffer(wchar_t* buffer, int capacity) = 0;
    virtual int execCommandBuffer() = 0;

    // Versions of the device's units.
    /// 145 firmware, 160 templates.
    virtual int setUnitType(int type) = 0;
    virtual int getCharLineLength(int* length) = 0;
    virtual int getUnitVersionMajor(wchar_t* buffer, int capacity) = 0;
    virtual int getUnitVersionMinor(wchar_t* buffer, int capacity) = 0;
    virtual int getUnitVersionBuild(wchar_t* buffer, int capacity) = 0;

    virtual int setRoundMode(int mode) = 0;
    virtual int makePaymentVariant() = 0;
    virtual int getDeviceDescription(wchar_t* buffer, int capacity) = 0;

    // Attributes of the open receipt.
    virtual int setTagNumber(int number) = 0;
    virtual int setTagValue(const wchar_t* value) = 0;
    /// 5 is text.
    virtual int setTagType(int type) = 0;
    virtual int setTagPrint(int print) = 0;
    virtual int writeTag() = 0;

    /// Fills the three version parts for the set unit.
    virtual int readUnitVersion() = 0;
    virtual int setPositionSum(double sum) = 0;

protected:
    ~IFpax() = default;
};

/// What a driver library exports: `CreateFpaxInterface` gives the interface of this version, or null.
constexpr int kInterfaceVersion = 13;

using CreateFunction = IFpax*(int version);
using ReleaseFunction = void(IFpax** instance);

} // namespace LUM::Fpax
