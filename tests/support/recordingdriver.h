#pragma once

#include "device/ifpax.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>

/// A driver without a device: it writes down every call and answers what it was told to answer. Without orders
/// every operation succeeds, texts are empty and numbers stay as the caller has them.
///
/// Operations go by their names: "setMode", "getCaption". The n-th call of an operation counts from 1.
class RecordingDriver : public LUM::Fpax::IFpax
{
public:
    RecordingDriver() = default;
    virtual ~RecordingDriver() = default;
    RecordingDriver(const RecordingDriver&) = delete;
    RecordingDriver& operator=(const RecordingDriver&) = delete;

    // The record.
    /// Every call with its arguments: `setMode(4)`, `setCaption("text")`, `getCaption(4096)` with the capacity,
    /// `getSingleSetting("Port", 4096)`, `getFiscal()`.
    const QStringList& calls() const { return record; }
    /// The same without the arguments.
    QStringList operations() const;
    /// The calls of one operation.
    QStringList callsOf(const QString& operation) const;
    int count(const QString& operation) const { return counts.value(operation); }
    /// Starts an empty record; the calls of every operation count from 1 again. Orders stay.
    void forgetCalls();

    // The registers: what a setter was given last.
    double lastNumber(const QString& setter) const { return numbersGiven.value(setter); }
    QString lastText(const QString& setter) const { return textsGiven.value(setter); }

    // Statuses. The narrower order wins: a call of the record, a call of an operation, an operation.
    /// A call that fails leaves its code for `getResultCode`, a good one clears it; getters do not change it.
    struct Outcome
    {
        int status = 0;
        int code = 0;
    };
    void answer(const QString& operation, Outcome outcome);
    void answerCall(const QString& operation, int n, Outcome outcome);
    /// The n-th call of the whole record, counted from 1.
    void answerNth(int n, Outcome outcome);
    void dropOutcomes();

    // What getters give.
    /// The buffer gets as much of the text as it takes, and a zero if there is room; the status is the length.
    void setText(const QString& getter, const QString& text);
    /// For drivers with manners of their own: fills the buffer and tells the status.
    using TextSource = std::function<int(wchar_t* buffer, int capacity)>;
    void setTextSource(const QString& getter, TextSource source);
    /// The getter fills the number in, whatever its status.
    void setNumber(const QString& getter, double number);

    /// Runs at each call of the operation, when it stands in the record already and before it is answered. It may
    /// give new orders, or throw.
    void onCall(const QString& operation, std::function<void()> action);

    int resultCode = 0;
    QMap<QString, QString> settings; ///< by name; setSingleSetting stores here
    QMap<QString, QString> mappings; ///< by name

    int getDriverVersion(wchar_t* buffer, int capacity) override
    {
        return text("getDriverVersion", buffer, capacity);
    }
    int getDriverName(wchar_t* buffer, int capacity) override
    {
        return text("getDriverName", buffer, capacity);
    }
    int setDeviceEnabled(int value) override { return keep("setDeviceEnabled", value); }
    int getResultCode(int* value) override { return code(value); }
    int getResultDescription(wchar_t* buffer, int capacity) override
    {
        return text("getResultDescription", buffer, capacity);
    }
    int getBadParam(int* value) override { return number("getBadParam", value); }
    int getBadParamDescription(wchar_t* buffer, int capacity) override
    {
        return text("getBadParamDescription", buffer, capacity);
    }
    int ShowProperties() override { return execute("ShowProperties"); }
    int getSingleSetting(const wchar_t* name, wchar_t* buffer, int capacity) override
    {
        return namedText("getSingleSetting", settings, name, buffer, capacity);
    }
    int setSingleSetting(const wchar_t* name, const wchar_t* value) override
    {
        return keepSetting(name, value);
    }
    int getSingleMapping(const wchar_t* name, wchar_t* buffer, int capacity) override
    {
        return namedText("getSingleMapping", mappings, name, buffer, capacity);
    }
    int applySingleSettings() override { return execute("applySingleSettings"); }
    int getCaption(wchar_t* buffer, int capacity) override { return text("getCaption", buffer, capacity); }
    int setCaption(const wchar_t* text) override { return keepText("setCaption", text); }
    int readStatus() override { return execute("readStatus"); }
    int getSerialNumber(wchar_t* buffer, int capacity) override
    {
        return text("getSerialNumber", buffer, capacity);
    }
    int getFiscal(int* value) override { return number("getFiscal", value); }
    int enterMode() override { return execute("enterMode"); }
    int resetMode() override { return execute("resetMode"); }
    int setMode(int value) override { return keep("setMode", value); }
    int makePayment() override { return execute("makePayment"); }
    int setPaymentType(int value) override { return keep("setPaymentType", value); }
    int getSumm(double* value) override { return number("getSumm", value); }
    int setSumm(double value) override { return keep("setSumm", value); }
    int openCheck() override { return execute("openCheck"); }
    int closeCheck() override { return execute("closeCheck"); }
    int cancelCheck() override { return execute("cancelCheck"); }
    int setCheckType(int value) override { return keep("setCheckType", value); }
    int getCheckState(int* value) override { return number("getCheckState", value); }
    int getSessionOpened(int* value) override { return number("getSessionOpened", value); }
    int setPositionName(const wchar_t* text) override { return keepText("setPositionName", text); }
    int setPrice(double value) override { return keep("setPrice", value); }
    int setQuantity(double value) override { return keep("setQuantity", value); }
    int setPositionGroup(int value) override { return keep("setPositionGroup", value); }
    int setRoundTarget(int value) override { return keep("setRoundTarget", value); }
    int registerPosition() override { return execute("registerPosition"); }
    int makeReport() override { return execute("makeReport"); }
    int setReportType(int value) override { return keep("setReportType", value); }
    int getModelId(int* value) override { return number("getModelId", value); }
    int setPositionTax(int value) override { return keep("setPositionTax", value); }
    int applyRounding() override { return execute("applyRounding"); }
    int setTableNumber(int value) override { return keep("setTableNumber", value); }
    int setRowNumber(int value) override { return keep("setRowNumber", value); }
    int setFieldNumber(int value) override { return keep("setFieldNumber", value); }
    int setFieldType(int value) override { return keep("setFieldType", value); }
    int writeTableField() override { return execute("writeTableField"); }
    int readTableField() override { return execute("readTableField"); }
    int setCommandBuffer(const wchar_t* text) override { return keepText("setCommandBuffer", text); }
    int getAnswerBuffer(wchar_t* buffer, int capacity) override
    {
        return text("getAnswerBuffer", buffer, capacity);
    }
    int execCommandBuffer() override { return execute("execCommandBuffer"); }
    int setUnitType(int value) override { return keep("setUnitType", value); }
    int getCharLineLength(int* value) override { return number("getCharLineLength", value); }
    int getUnitVersionMajor(wchar_t* buffer, int capacity) override
    {
        return text("getUnitVersionMajor", buffer, capacity);
    }
    int getUnitVersionMinor(wchar_t* buffer, int capacity) override
    {
        return text("getUnitVersionMinor", buffer, capacity);
    }
    int getUnitVersionBuild(wchar_t* buffer, int capacity) override
    {
        return text("getUnitVersionBuild", buffer, capacity);
    }
    int setRoundMode(int value) override { return keep("setRoundMode", value); }
    int makePaymentVariant() override { return execute("makePaymentVariant"); }
    int getDeviceDescription(wchar_t* buffer, int capacity) override
    {
        return text("getDeviceDescription", buffer, capacity);
    }
    int setTagNumber(int value) override { return keep("setTagNumber", value); }
    int setTagValue(const wchar_t* text) override { return keepText("setTagValue", text); }
    int setTagType(int value) override { return keep("setTagType", value); }
    int setTagPrint(int value) override { return keep("setTagPrint", value); }
    int writeTag() override { return execute("writeTag"); }
    int readUnitVersion() override { return execute("readUnitVersion"); }
    int setPositionSum(double value) override { return keep("setPositionSum", value); }

protected:
    /// Writes an operation down, runs what was ordered for it and tells how it ends.
    Outcome enter(const QString& operation, const QStringList& arguments = {});
    /// The same for an operation that is no getter: the result code follows.
    int execute(const QString& operation, const QStringList& arguments = {});

    int keep(const QString& operation, int value);
    int keep(const QString& operation, double value);
    int keepText(const QString& operation, const wchar_t* text);
    int keepSetting(const wchar_t* name, const wchar_t* value);
    int code(int* value);
    int number(const QString& operation, int* value);
    int number(const QString& operation, double* value);
    int text(const QString& operation, wchar_t* buffer, int capacity);
    int namedText(const QString& operation, const QMap<QString, QString>& texts, const wchar_t* name,
                  wchar_t* buffer, int capacity);

private:
    using CallKey = QPair<QString, int>;

    QStringList record;
    QStringList recordedOperations;
    QHash<QString, int> counts;
    QHash<QString, double> numbersGiven;
    QHash<QString, QString> textsGiven;
    QHash<QString, Outcome> outcomes;
    QHash<CallKey, Outcome> callOutcomes;
    QHash<int, Outcome> nthOutcomes;
    QHash<QString, TextSource> textSources;
    QHash<QString, double> numbers;
    QHash<QString, std::function<void()>> actions;
};

/// Throws out of a driver what its maker may: a standard exception or a number.
[[noreturn]] void throwOut(bool isStandard);

/// A source that gives this text: as much as the buffer takes, and a zero if there is room.
RecordingDriver::TextSource textSource(const QString& text);
