#include "emulator/devicestate.h"

#include "emulator/jsonread.h"

#include <QJsonArray>

#include <algorithm>

namespace emulator {

namespace {

/// A counter that is read still has room to count on.
constexpr int kMaxCount = 1'000'000'000;
constexpr qint64 kMaxTotal = 1'000'000'000'000'000;
constexpr int kMaxTemplate = 0xFF;

QJsonObject countersToJson(const Counters& counters)
{
    return {{"shifts", counters.shifts},
            {"receipts", counters.receipts},
            {"annulled", counters.annulled},
            {"documents", counters.documents},
            {"shiftReceipts", counters.shiftReceipts},
            {"shiftTotal", counters.shiftTotal},
            {"grandTotal", counters.grandTotal}};
}

void readKopecks(const QJsonObject& object, const QString& key, qint64& target)
{
    if (object.value(key).isDouble())
        target = std::clamp<qint64>(object.value(key).toInteger(), 0, kMaxTotal);
}

void readCounters(const QJsonObject& object, Counters& counters)
{
    readInt(object, "shifts", 0, kMaxCount, counters.shifts);
    readInt(object, "receipts", 0, kMaxCount, counters.receipts);
    readInt(object, "annulled", 0, kMaxCount, counters.annulled);
    readInt(object, "documents", 0, kMaxCount, counters.documents);
    readInt(object, "shiftReceipts", 0, kMaxCount, counters.shiftReceipts);
    readKopecks(object, "shiftTotal", counters.shiftTotal);
    readKopecks(object, "grandTotal", counters.grandTotal);
}

QJsonObject settingsToJson(const QMap<QString, QString>& settings)
{
    QJsonObject object;
    for (auto it = settings.begin(); it != settings.end(); ++it)
        object.insert(it.key(), it.value());
    return object;
}

QMap<QString, QString> settingsFromJson(const QJsonObject& object)
{
    QMap<QString, QString> settings;
    for (auto it = object.begin(); it != object.end(); ++it)
        if (it.value().isString())
            settings.insert(it.key(), it.value().toString());
    return settings;
}

} // namespace

QString DeviceState::description() const
{
    return QString("%1;эмулятор кассы;лента %2 симв.").arg(modelName, QString::number(lineLength));
}

UnitVersion DeviceState::firmwareVersion() const
{
    return {QString::number(firmwareMajor), QString::number(firmwareMinor), QString::number(firmwareBuild)};
}

QJsonObject DeviceState::toJson() const
{
    return {{"model", model},
            {"modelName", modelName},
            {"serial", serial},
            {"firmwareMajor", firmwareMajor},
            {"firmwareMinor", firmwareMinor},
            {"firmwareBuild", firmwareBuild},
            {"templateMajor", templateVersion.major},
            {"templateMinor", templateVersion.minor},
            {"templateBuild", templateVersion.build},
            {"fiscal", fiscal},
            {"shiftOpen", shiftOpen},
            {"shiftExpired", shiftExpired},
            {"receiptState", receiptState},
            {"lineLength", lineLength},
            {"mode", mode},
            {"connected", connected},
            {"latencyMs", latencyMs},
            {"counters", countersToJson(counters)},
            {"settings", settingsToJson(settings)},
            {"receipt", receipt.toJson()},
            {"table20", templateTableToJson(templates)},
            {"table21", QJsonArray::fromStringList(freeLines)},
            {"activeTemplate", activeTemplate},
            {"parameterGroup", parameterGroup}};
}

void DeviceState::apply(const QJsonObject& object)
{
    readInt(object, "model", 0, kMaxNumber, model);
    readText(object, "modelName", modelName);
    readText(object, "serial", serial);
    readInt(object, "firmwareMajor", 0, kMaxNumber, firmwareMajor);
    readInt(object, "firmwareMinor", 0, kMaxNumber, firmwareMinor);
    readInt(object, "firmwareBuild", 0, kMaxNumber, firmwareBuild);
    readText(object, "templateMajor", templateVersion.major);
    readText(object, "templateMinor", templateVersion.minor);
    readText(object, "templateBuild", templateVersion.build);
    readBool(object, "fiscal", fiscal);
    readBool(object, "shiftOpen", shiftOpen);
    readBool(object, "shiftExpired", shiftExpired);
    readInt(object, "receiptState", 0, kMaxNumber, receiptState);
    readInt(object, "lineLength", 1, kMaxLineLength, lineLength);
    readInt(object, "mode", 0, kMaxNumber, mode);
    readBool(object, "connected", connected);
    readInt(object, "latencyMs", 0, kMaxLatencyMs, latencyMs);
    readCounters(object.value("counters").toObject(), counters);
    if (object.value("settings").isObject())
        settings = settingsFromJson(object.value("settings").toObject());
    if (object.value("receipt").isObject())
        receipt = Receipt::fromJson(object.value("receipt").toObject());
    if (object.value("table20").isObject())
        templates = templateTableFromJson(object.value("table20").toObject());
    if (object.value("table21").isArray())
        freeLines = object.value("table21").toVariant().toStringList();
    readInt(object, "activeTemplate", 0, kMaxTemplate, activeTemplate);
    readInt(object, "parameterGroup", 1, kParamCount, parameterGroup);
}

QList<KnownModel> knownModels()
{
    return {{67, "Тавр 11Ф", 32}, {78, "Тавр 15Ф", 32}, {61, "Тавр 30Ф", 36}, {75, "Тавр 60Ф", 36},
            {72, "Тавр 90Ф", 36}, {64, "Тавр 52Ф", 36}, {62, "Тавр 55Ф", 36}, {63, "Тавр 22Ф", 48},
            {57, "Тавр 25Ф", 48}, {69, "Тавр 77Ф", 48}, {76, "Ларец ФА", 48}};
}

} // namespace emulator
