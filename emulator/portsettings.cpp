#include "emulator/portsettings.h"

#include <QList>
#include <QStringList>

#include <algorithm>

namespace emulator {

namespace {

constexpr int kMaxWord = 0xFFFF;

const char* const kBaudRates[] = {"1200",  "2400",  "4800",   "9600",   "14400",
                                  "38400", "57600", "115200", "230400", "921600"};

bool isNumber(const QString& text, int least, int greatest)
{
    bool parsed = false;
    const int number = text.toInt(&parsed);
    return parsed && number >= least && number <= greatest;
}

bool isComPort(const QString& port)
{
    return isNumber(port.startsWith("COM") ? port.mid(3) : port, 1, kMaxComPort);
}

bool isBaudRate(const QString& text)
{
    return std::any_of(std::begin(kBaudRates), std::end(kBaudRates),
                       [&text](const char* rate) { return text == QLatin1String(rate); });
}

QString ownValue(const QString& name)
{
    const QMap<QString, QString> values{{"Model", "63"},
                                        {"Protocol", "3"},
                                        {"Port", "5"},
                                        {"BaudRate", "115200"},
                                        {"IPAddress", "10.0.0.2"},
                                        {"IPPort", "5555"},
                                        {"DeviceName", "Эмулятор кассы"}};
    return values.value(name);
}

} // namespace

PortSettings::PortSettings(const QMap<QString, QString>& applied)
    : m_applied(applied)
{
}

QString PortSettings::value(const QString& name) const
{
    const QString unlessStored = m_applied.value(name, ownValue(name));
    return m_stored.value(name, unlessStored);
}

void PortSettings::store(const QString& name, const QString& value)
{
    m_stored.insert(name, value);
}

Outcome PortSettings::apply()
{
    const QString port = value("Port");
    const bool com = isComPort(port);
    const bool usbByPath = port.startsWith("USB$");
    const bool usbById = port == "USB";
    const bool network = port == "TCPIP";
    if (!com && !usbByPath && !usbById && !network)
        return Outcome::badParameter(1, QString("Port: %1").arg(port));

    struct Check
    {
        const char* name;
        bool wanted;
        bool good;
    };
    const QList<Check> checks{
        {"Model", true, isNumber(value("Model"), 0, kMaxWord)},
        {"Protocol", true, isNumber(value("Protocol"), 0, kMaxWord)},
        {"BaudRate", com, isBaudRate(value("BaudRate"))},
        {"Vid", usbById && m_stored.contains("Vid"), isNumber(value("Vid"), 0, kMaxWord)},
        {"Pid", usbById && m_stored.contains("Pid"), isNumber(value("Pid"), 0, kMaxWord)},
        {"IPAddress", network, !value("IPAddress").trimmed().isEmpty()},
        {"IPPort", network, isNumber(value("IPPort"), 1, kMaxWord)},
    };
    int number = 1;
    for (const Check& check : checks) {
        ++number;
        if (check.wanted && !check.good)
            return Outcome::badParameter(number, QString("%1: %2").arg(check.name, value(check.name)));
    }
    m_applied.insert(m_stored);
    m_stored.clear();
    return Outcome::ok();
}

QString PortSettings::mapping(const QString& name)
{
    if (name == "Port")
        return "COM1 (свободен);COM5 (эмулятор кассы);COM8 (свободен);USB;TCPIP";
    if (name == "ExistedSerial")
        return "1;5;8";
    if (name == "Protocol")
        return "0 автоматически;1 с подтверждением;3 обычный";
    if (name == "Model")
        return "63 Тавр 22Ф";
    if (name == "BaudRate") {
        QStringList rates;
        for (const char* rate : kBaudRates)
            rates.append(rate);
        return rates.join(';');
    }
    return {};
}

} // namespace emulator
