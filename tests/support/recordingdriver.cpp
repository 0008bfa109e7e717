#include "support/recordingdriver.h"

#include <QLocale>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

QString fromWide(const wchar_t* text)
{
    return text ? QString::fromWCharArray(text) : QString();
}

QString quoted(const wchar_t* text)
{
    return text ? u'"' + fromWide(text) + u'"' : QStringLiteral("null");
}

} // namespace

void throwOut(bool isStandard)
{
    if (isStandard)
        throw std::runtime_error("broken");
    throw 42;
}

RecordingDriver::TextSource textSource(const QString& text)
{
    return [wide = text.toStdWString()](wchar_t* buffer, int capacity) {
        const int length = static_cast<int>(wide.size());
        std::copy_n(wide.c_str(), std::min(length + 1, capacity), buffer);
        return length;
    };
}

QStringList RecordingDriver::operations() const
{
    return recordedOperations;
}

QStringList RecordingDriver::callsOf(const QString& operation) const
{
    QStringList found;
    for (qsizetype i = 0; i < record.size(); ++i) {
        if (recordedOperations.at(i) == operation)
            found.append(record.at(i));
    }
    return found;
}

void RecordingDriver::forgetCalls()
{
    record.clear();
    recordedOperations.clear();
    counts.clear();
}

void RecordingDriver::answer(const QString& operation, Outcome outcome)
{
    outcomes.insert(operation, outcome);
}

void RecordingDriver::answerCall(const QString& operation, int n, Outcome outcome)
{
    callOutcomes.insert({operation, n}, outcome);
}

void RecordingDriver::answerNth(int n, Outcome outcome)
{
    nthOutcomes.insert(n, outcome);
}

void RecordingDriver::dropOutcomes()
{
    outcomes.clear();
    callOutcomes.clear();
    nthOutcomes.clear();
}

void RecordingDriver::setText(const QString& getter, const QString& text)
{
    setTextSource(getter, textSource(text));
}

void RecordingDriver::setTextSource(const QString& getter, TextSource source)
{
    textSources.insert(getter, std::move(source));
}

void RecordingDriver::setNumber(const QString& getter, double number)
{
    numbers.insert(getter, number);
}

void RecordingDriver::onCall(const QString& operation, std::function<void()> action)
{
    actions.insert(operation, std::move(action));
}

RecordingDriver::Outcome RecordingDriver::enter(const QString& operation, const QStringList& arguments)
{
    record.append(operation + u'(' + arguments.join(QStringLiteral(", ")) + u')');
    recordedOperations.append(operation);
    const int n = ++counts[operation];
    if (const auto action = actions.value(operation))
        action();

    Outcome outcome = outcomes.value(operation);
    outcome = callOutcomes.value({operation, n}, outcome);
    return nthOutcomes.value(static_cast<int>(record.size()), outcome);
}

int RecordingDriver::execute(const QString& operation, const QStringList& arguments)
{
    const Outcome outcome = enter(operation, arguments);
    resultCode = outcome.status < 0 ? outcome.code : 0;
    return outcome.status;
}

int RecordingDriver::keep(const QString& operation, int value)
{
    numbersGiven.insert(operation, value);
    return execute(operation, {QString::number(value)});
}

int RecordingDriver::keep(const QString& operation, double value)
{
    numbersGiven.insert(operation, value);
    return execute(operation, {QString::number(value, 'g', QLocale::FloatingPointShortest)});
}

int RecordingDriver::keepText(const QString& operation, const wchar_t* text)
{
    textsGiven.insert(operation, fromWide(text));
    return execute(operation, {quoted(text)});
}

int RecordingDriver::keepSetting(const wchar_t* name, const wchar_t* value)
{
    const int status = execute(QStringLiteral("setSingleSetting"), {quoted(name), quoted(value)});
    if (status >= 0)
        settings.insert(fromWide(name), fromWide(value));
    return status;
}

int RecordingDriver::code(int* value)
{
    const int status = enter(QStringLiteral("getResultCode")).status;
    *value = resultCode;
    return status;
}

int RecordingDriver::number(const QString& operation, int* value)
{
    const int status = enter(operation).status;
    if (const auto found = numbers.constFind(operation); found != numbers.cend())
        *value = static_cast<int>(*found);
    return status;
}

int RecordingDriver::number(const QString& operation, double* value)
{
    const int status = enter(operation).status;
    if (const auto found = numbers.constFind(operation); found != numbers.cend())
        *value = *found;
    return status;
}

int RecordingDriver::text(const QString& operation, wchar_t* buffer, int capacity)
{
    const int status = enter(operation, {QString::number(capacity)}).status;
    const auto source = textSources.value(operation);
    return status < 0 || !source ? status : source(buffer, capacity);
}

int RecordingDriver::namedText(const QString& operation, const QMap<QString, QString>& texts,
                               const wchar_t* name, wchar_t* buffer, int capacity)
{
    const int status = enter(operation, {quoted(name), QString::number(capacity)}).status;
    if (status < 0)
        return status;
    if (const auto source = textSources.value(operation))
        return source(buffer, capacity);
    return textSource(texts.value(fromWide(name)))(buffer, capacity);
}
