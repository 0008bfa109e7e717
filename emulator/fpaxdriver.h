#pragma once

#include "device/ifpax.h"
#include "emulator/cashregister.h"
#include "emulator/faultrule.h"
#include "emulator/portsettings.h"
#include "emulator/resultcodes.h"

#include <QJsonArray>
#include <QString>

#include <functional>
#include <mutex>
#include <optional>

namespace emulator {

class Emulator;

/// One driver object: the registers that the operations of the interface fill and use. The device behind it is
/// shared by all objects. Operations may come from any thread, one at a time for a sensible result.
class FpaxDriver final : public LUM::Fpax::IFpax
{
public:
    FpaxDriver(Emulator& emulator, const QMap<QString, QString>& appliedSettings);
    ~FpaxDriver() = default;
    FpaxDriver(const FpaxDriver&) = delete;
    FpaxDriver& operator=(const FpaxDriver&) = delete;

    int getDriverVersion(wchar_t* buffer, int capacity) override;
    int getDriverName(wchar_t* buffer, int capacity) override;
    int setDeviceEnabled(int enabled) override;
    int getResultCode(int* code) override;
    int getResultDescription(wchar_t* buffer, int capacity) override;
    int getBadParam(int* param) override;
    int getBadParamDescription(wchar_t* buffer, int capacity) override;
    int ShowProperties() override;
    int getSingleSetting(const wchar_t* name, wchar_t* buffer, int capacity) override;
    int setSingleSetting(const wchar_t* name, const wchar_t* value) override;
    int getSingleMapping(const wchar_t* name, wchar_t* buffer, int capacity) override;
    int applySingleSettings() override;
    int getCaption(wchar_t* buffer, int capacity) override;
    int setCaption(const wchar_t* text) override;
    int readStatus() override;
    int getSerialNumber(wchar_t* buffer, int capacity) override;
    int getFiscal(int* fiscal) override;
    int enterMode() override;
    int resetMode() override;
    int setMode(int mode) override;
    int makePayment() override;
    int setPaymentType(int type) override;
    int getSumm(double* sum) override;
    int setSumm(double sum) override;
    int openCheck() override;
    int closeCheck() override;
    int cancelCheck() override;
    int setCheckType(int type) override;
    int getCheckState(int* state) override;
    int getSessionOpened(int* opened) override;
    int setPositionName(const wchar_t* name) override;
    int setPrice(double price) override;
    int setQuantity(double quantity) override;
    int setPositionGroup(int group) override;
    int setRoundTarget(int target) override;
    int registerPosition() override;
    int makeReport() override;
    int setReportType(int type) override;
    int getModelId(int* model) override;
    int setPositionTax(int tax) override;
    int applyRounding() override;
    int setTableNumber(int table) override;
    int setRowNumber(int row) override;
    int setFieldNumber(int field) override;
    int setFieldType(int type) override;
    int writeTableField() override;
    int readTableField() override;
    int setCommandBuffer(const wchar_t* command) override;
    int getAnswerBuffer(wchar_t* buffer, int capacity) override;
    int execCommandBuffer() override;
    int setUnitType(int type) override;
    int getCharLineLength(int* length) override;
    int getUnitVersionMajor(wchar_t* buffer, int capacity) override;
    int getUnitVersionMinor(wchar_t* buffer, int capacity) override;
    int getUnitVersionBuild(wchar_t* buffer, int capacity) override;
    int setRoundMode(int mode) override;
    int makePaymentVariant() override;
    int getDeviceDescription(wchar_t* buffer, int capacity) override;
    int setTagNumber(int number) override;
    int setTagValue(const wchar_t* value) override;
    int setTagType(int type) override;
    int setTagPrint(int print) override;
    int writeTag() override;
    int readUnitVersion() override;
    int setPositionSum(double sum) override;

private:
    /// How far an operation goes. Diagnostic ones tell about the last operation.
    enum class Reach { Driver, Diagnostic, Device };

    /// What a body gets: the lock that is held while it runs, and the rule that hit the operation, if any.
    struct Call
    {
        std::unique_lock<std::mutex>& lock;
        const std::optional<Fault>& fault;
    };
    using Body = std::function<int(Call&)>;

    struct Registers
    {
        QString caption;
        int mode = 0;
        int paymentType = 0;
        double sum = 0;
        int checkType = 0;
        QString positionName;
        double price = 0;
        double quantity = 0;
        std::optional<double> positionSum;
        int positionGroup = 0;
        int positionTax = 0;
        int roundTarget = 0;
        int roundMode = 0;
        int reportType = 0;
        int table = 0;
        int row = 0;
        int field = 0;
        int fieldType = 0;
        QString command;
        QString answer;
        int unit = 0;
        int tagNumber = 0;
        QString tagValue;
        int tagType = 0;
        int tagPrint = 0;
    };

    struct Status
    {
        QString serial;
        QString description;
        UnitVersion version;
        int fiscal = 0;
        int sessionOpened = 0;
        int checkState = 0;
        int model = 0;
        int lineLength = 0;
    };

    /// Every operation passes through here: it is counted, delayed, failed by a rule, traced and saved.
    int run(const QString& name, Reach reach, bool getter, const QJsonArray& arguments, const Body& body);
    int guardedBody(const Body& body, Call& call, bool getter);
    int failAsTold(const Fault& fault, bool getter);
    int finish(const Outcome& outcome);

    template <class Value, class Argument>
    int setRegister(const QString& name, Value& target, const Argument& value);
    int setTextRegister(const QString& name, QString& target, const wchar_t* text);
    int readText(const QString& name, const QString& text, wchar_t* buffer, int capacity);
    int readNumber(const QString& name, const int& number, int* target);
    /// An operation of the driver alone.
    int execute(const QString& name, const std::function<Outcome()>& body);
    /// One that needs the port and an answering device.
    int executeOnDevice(const QString& name, const std::function<Outcome()>& body);

    Outcome setEnabled(int enabled);
    void refreshStatus();
    FieldAddress fieldAddress() const;
    Outcome showProperties(std::unique_lock<std::mutex>& lock);

    Emulator& m_emulator;
    PortSettings m_settings;
    Registers m_registers;
    Status m_status;
    Outcome m_result;
    QString m_resultText;
    bool m_enabled = false;
};

template <class Value, class Argument>
int FpaxDriver::setRegister(const QString& name, Value& target, const Argument& value)
{
    return run(name, Reach::Driver, false, {value}, [&](Call&) {
        target = value;
        return finish(Outcome::ok());
    });
}

} // namespace emulator
