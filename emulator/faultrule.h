#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace emulator {

/// What an operation that was hit by a rule does instead of its work.
struct Fault
{
    /// Absent: the operation does its work, perhaps late or with another answer.
    std::optional<int> status;
    int code = 0;
    bool codeNamed = false;
    QString description;
    int badParam = 0;
    QString badParamText;
    /// Empty, or "short", "empty", "garbled", or the text of the answer itself.
    QString answer;
    bool hasAnswer = false;
    int delayMs = 0;
    /// Empty, "std" or "other".
    QString exception;
};

/// One rule: which operations fail, when, and how.
struct FaultRule
{
    /// Name of an operation or "*".
    QString operation;
    /// The first matching call that fails, from 1; 0 for every one.
    int call = 0;
    /// How often the rule strikes; 0 for its own default: once with `call`, for ever without.
    int count = 0;
    /// "*" counts and hits the getters of result code and texts too.
    bool withGetters = false;
    Fault fault;

    int matched = 0;
    int struck = 0;

    /// True if the rule speaks of the operation. Diagnostic getters want to be named.
    bool matches(const QString& name, bool diagnostic) const;
    /// Counts one matching call; true if it is one to be hit.
    bool strikes();

    static std::optional<FaultRule> fromJson(const QJsonObject& object);
};

/// An answer as the rule wants it.
QString spoiledAnswer(const Fault& fault, const QString& answer);

/// Rules in an array or in the member "rules" of an object; nothing if the text is neither.
std::optional<QList<FaultRule>> faultRulesFromJson(const QByteArray& json);

} // namespace emulator
