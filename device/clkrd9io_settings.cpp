#include "device/clkrd9io.h"

#include <json/json.h>

#include <utility>

using LUM::Fpax::IFpax;

namespace {

QString textOf(const Json::Value& value)
{
    return QString::fromStdString(value.asString());
}

void setUsbPort(QLumFpax& fpax, const Json::Value& usb)
{
    if (usb.isMember("path")) {
        fpax.setSetting("Port", "USB$" + textOf(usb["path"]));
        return;
    }
    constexpr int hexadecimal = 16;
    fpax.setSetting("Port", "USB");
    fpax.setSetting("Vid", textOf(usb["vid"]).toInt(nullptr, hexadecimal));
    fpax.setSetting("Pid", textOf(usb["pid"]).toInt(nullptr, hexadecimal));
}

} // namespace

int clKRD9IO::setIOSettings(const Json::Value& settings, LUM::Fpax::Model model, const QString& searchDir)
{
    constexpr int unknownPort = 13;
    constexpr int defaultProtocol = 3;

    if (!driverLoaded)
        return kNoDriver;
    try {
        fpax().setSetting("Model", static_cast<int>(model));
        fpax().setSetting("SearchDir", searchDir);
        fpax().setSetting("Protocol", settings.get("protocol", defaultProtocol).asInt());

        const std::string port = settings["port"].asString();
        if (port == "com") {
            fpax().setSetting("Port", textOf(settings["com"]["number"]));
            fpax().setSetting("BaudRate", textOf(settings["com"]["baudrate"]));
        } else if (port == "usb") {
            setUsbPort(fpax(), settings["usb"]);
        } else if (port == "tcpip") {
            fpax().setSetting("Port", "TCPIP");
            fpax().setSetting("IPAddress", textOf(settings["tcpip"]["host"]));
            fpax().setSetting("IPPort", textOf(settings["tcpip"]["port"]));
        } else {
            return unknownPort;
        }
        fpax().execMethod(&IFpax::applySingleSettings);
    } catch (const Exception&) {
        return kDriverError;
    } catch (const Json::Exception&) {
        return kDriverError;
    }
    return kDone;
}

int clKRD9IO::getIOSettings(Json::Value& settings)
{
    constexpr int changed = -1;
    constexpr int noSettings = 2;

    if (!driverLoaded)
        return kNoDriver;
    if (settings.isNull())
        return noSettings;
    try {
        fpax().getSetting("Protocol");
        const int stored = std::as_const(settings)["com"]["number"].asInt();
        bool isNumber = false;
        const int number = fpax().getSetting("Port").toInt(&isNumber);
        if (!isNumber || number == stored)
            return kDone;
        settings["com"]["number"] = number;
    } catch (const Exception&) {
        return kDriverError;
    } catch (const Json::Exception&) {
        return kDriverError;
    }
    return changed;
}
