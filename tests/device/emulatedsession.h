#pragma once

#include "device/clkrd9io.h"
#include "support/emulateddevice.h"

#include <QByteArray>
#include <QTemporaryDir>

#include <json/json.h>

#include <memory>

/// A session of its own before the emulator, which it has loaded from a file as the program does.
struct EmulatedSession
{
    EmulatedSession()
    {
        QString message;
        if (session.initDriver(device.driverPath(), folder.path(), message) != 0)
            qFatal("%s", qPrintable(message));
        device.watch();
    }

    QTemporaryDir folder;
    EmulatedDevice device{folder.path()};
    clKRD9IO session;
};

/// Puts `driver` into a session without a driver, as if it came from a library.
inline void takeDriver(clKRD9IO& session, LUM::Fpax::IFpax& driver)
{
    session.driverIface = &driver;
    session.fpaxWrapper.reset(new QLumFpax(&driver));
    session.driverLoaded = true;
}

/// What `text` holds.
inline Json::Value jsonOf(const QByteArray& text)
{
    Json::Value value;
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    std::string errors;
    if (!reader->parse(text.constData(), text.constData() + text.size(), &value, &errors))
        qFatal("%s: %s", text.constData(), errors.c_str());
    return value;
}
