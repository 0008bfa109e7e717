#include "support/emulateddevice.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

const char* const kFailureText = "отказ %1 <b>";

namespace {

constexpr auto kHome = "FPAX_HOME";

QJsonObject ruleOf(Failure failure)
{
    switch (failure) {
    case Failure::Coded:
        return {{"status", -1}, {"code", kFailureCode}, {"description", kFailureText}};
    case Failure::Codeless:
        return {{"status", -1}, {"code", 0}};
    case Failure::Pretended:
        return {{"status", 0}, {"code", 0}};
    case Failure::Standard:
        return {{"throw", "std"}};
    case Failure::Foreign:
        return {{"throw", "other"}};
    }
    return {};
}

QString argumentText(const QJsonValue& argument)
{
    if (argument.isString())
        return u'"' + argument.toString() + u'"';
    return QString::number(argument.toDouble());
}

QString callText(const QJsonObject& call)
{
    QStringList arguments;
    for (const auto& argument : call.value("args").toArray())
        arguments.append(argumentText(argument));
    return call.value("op").toString() + u'(' + arguments.join(QStringLiteral(", ")) + u')';
}

} // namespace

EmulatedDevice::EmulatedDevice(const QString& folder)
    : m_folder(folder)
    , m_file(folder + u'/' + QFileInfo(QStringLiteral(FPAX_PATH)).fileName())
{
    // A link and not a copy: every session of the process then meets the same device.
    if (!QFile::link(QStringLiteral(FPAX_PATH), m_file))
        qFatal("no emulator in %s", qPrintable(folder));
    qputenv(kHome, QFile::encodeName(folder));
    // By its own name: a library that is loaded by the name of the link would be found without the link.
    m_library.setFileName(QStringLiteral(FPAX_PATH));
    m_isLoadedElsewhere = m_library.isLoaded();
    if (!m_library.load())
        qFatal("%s", qPrintable(m_library.errorString()));
    control({{"cmd", "reset"}});
}

EmulatedDevice::~EmulatedDevice()
{
    control({{"cmd", "reset"}});
    // Who met the library loaded has no share in it.
    if (!m_isLoadedElsewhere)
        m_library.unload();
    qunsetenv(kHome);
    QFile::remove(m_file);
}

void EmulatedDevice::remove()
{
    QFile::remove(m_file);
}

QJsonValue EmulatedDevice::control(const QJsonObject& command)
{
    using ControlFunction = const char*(const char*);
    const auto function = reinterpret_cast<ControlFunction*>(m_library.resolve("FpaxEmulatorControl"));
    if (!function)
        qFatal("%s is no emulator", qPrintable(m_file));
    const QByteArray answer = function(QJsonDocument(command).toJson().constData());
    const QJsonDocument document = QJsonDocument::fromJson(answer);
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

void EmulatedDevice::set(const QJsonObject& state)
{
    if (!control({{"cmd", "set"}, {"state", state}}).toObject().value("ok").toBool())
        qFatal("the emulator does not take the state");
}

void EmulatedDevice::setFaults(const QJsonArray& rules)
{
    if (!control({{"cmd", "faults"}, {"rules", rules}}).toObject().value("ok").toBool())
        qFatal("the emulator does not take the rules");
}

void EmulatedDevice::failCall(int n, Failure failure)
{
    QJsonObject rule = ruleOf(failure);
    rule["operation"] = "*";
    rule["call"] = n;
    setFaults({rule});
}

void EmulatedDevice::fail(const QString& operation, Failure failure)
{
    QJsonObject rule = ruleOf(failure);
    rule["operation"] = operation;
    setFaults({rule});
}

void EmulatedDevice::watch()
{
    control({{"cmd", "trace"}, {"on", true}});
}

QStringList EmulatedDevice::takeCalls()
{
    QStringList calls;
    for (const auto& call : takeAnsweredCalls())
        calls.append(call.text);
    return calls;
}

QList<DriverCall> EmulatedDevice::takeAnsweredCalls()
{
    QList<DriverCall> calls;
    for (const auto& call : takeTrace())
        calls.append({callText(call.toObject()), call.toObject().value("status").toInt()});
    return calls;
}
