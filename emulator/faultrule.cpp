#include "emulator/faultrule.h"

#include "emulator/jsonread.h"
#include "emulator/resultcodes.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace emulator {

namespace {

constexpr int kMaxDelayMs = 600000;
constexpr int kShortAnswerBytes = 2;

bool namesAFailure(const QJsonObject& object)
{
    for (const char* key : {"status", "code", "description", "badParam", "badParamText", "throw"})
        if (object.contains(QLatin1String(key)))
            return true;
    // A rule that says nothing of what shall happen means a failure too.
    return !object.contains("answer") && !object.contains("delayMs");
}

Fault faultFromJson(const QJsonObject& object)
{
    Fault fault;
    if (namesAFailure(object)) {
        int status = -1;
        readInt(object, "status", -kMaxNumber, kMaxNumber, status);
        fault.status = status;
        fault.codeNamed = object.value("code").isDouble();
        fault.code = status < 0 ? code::kInjected : code::kOk;
        readInt(object, "code", -kMaxNumber, kMaxNumber, fault.code);
        fault.description = fault.code == 0 ? QString() : resultText(fault.code);
    }
    readText(object, "description", fault.description);
    readInt(object, "badParam", -kMaxNumber, kMaxNumber, fault.badParam);
    readText(object, "badParamText", fault.badParamText);
    fault.hasAnswer = object.value("answer").isString();
    readText(object, "answer", fault.answer);
    readInt(object, "delayMs", 0, kMaxDelayMs, fault.delayMs);
    readText(object, "throw", fault.exception);
    return fault;
}

QString garbled(const QString& answer)
{
    QString text;
    for (const QString& pair : answer.split(' ', Qt::SkipEmptyParts)) {
        const uint byte = ~pair.toUInt(nullptr, 16) & 0xFFU;
        text += QString("%1 ").arg(byte, 2, 16, QChar('0')).toUpper();
    }
    return text.trimmed();
}

} // namespace

bool FaultRule::matches(const QString& name, bool diagnostic) const
{
    if (operation == name)
        return true;
    return operation == "*" && (!diagnostic || withGetters);
}

bool FaultRule::strikes()
{
    ++matched;
    const bool reached = matched >= call;
    const bool bounded = call > 0 || count > 0;
    const int limit = count > 0 ? count : 1;
    if (!reached || (bounded && struck >= limit))
        return false;
    ++struck;
    return true;
}

std::optional<FaultRule> FaultRule::fromJson(const QJsonObject& object)
{
    FaultRule rule;
    readText(object, "operation", rule.operation);
    if (rule.operation.isEmpty())
        return std::nullopt;
    readInt(object, "call", 0, kMaxNumber, rule.call);
    readInt(object, "count", 0, kMaxNumber, rule.count);
    readBool(object, "withGetters", rule.withGetters);
    rule.fault = faultFromJson(object);
    return rule;
}

QString spoiledAnswer(const Fault& fault, const QString& answer)
{
    if (!fault.hasAnswer)
        return answer;
    if (fault.answer == "empty")
        return {};
    if (fault.answer == "short")
        return answer.split(' ', Qt::SkipEmptyParts).mid(0, kShortAnswerBytes).join(' ');
    if (fault.answer == "garbled")
        return garbled(answer);
    return fault.answer;
}

std::optional<QList<FaultRule>> faultRulesFromJson(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    const QJsonValue rules =
        document.isArray() ? QJsonValue(document.array()) : document.object().value("rules");
    if (!rules.isArray())
        return std::nullopt;
    QList<FaultRule> list;
    const QJsonArray array = rules.toArray();
    for (const QJsonValue value : array) {
        const std::optional<FaultRule> rule = FaultRule::fromJson(value.toObject());
        if (!rule)
            return std::nullopt;
        list.append(*rule);
    }
    return list;
}

} // namespace emulator
