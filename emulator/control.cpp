#include "emulator/control.h"

#include "emulator/emulator.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace emulator {

namespace {

QByteArray text(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray done()
{
    return text({{"ok", true}});
}

QByteArray refused(const QString& reason)
{
    return text({{"ok", false}, {"error", reason}});
}

QByteArray setState(Emulator& emulator, const QJsonValue& members)
{
    if (!members.isObject())
        return refused("state is no object");
    DeviceState state = emulator.device().state();
    state.apply(members.toObject());
    emulator.device().setState(state);
    emulator.save(Emulator::SaveTime::Now);
    return done();
}

QByteArray setFaults(Emulator& emulator, const QJsonValue& rules)
{
    // A file that is there already must not win over the command later.
    emulator.watchFaults();
    if (!rules.isArray() || !emulator.faults().set(QJsonDocument(rules.toArray()).toJson()))
        return refused("rules are no list of rules");
    return done();
}

QByteArray setTrace(Emulator& emulator, const QJsonValue& on)
{
    if (!on.isBool())
        return refused("on is neither true nor false");
    emulator.trace().setOn(on.toBool());
    return done();
}

} // namespace

QByteArray control(Emulator& emulator, const QByteArray& command)
{
    const QJsonObject object = QJsonDocument::fromJson(command).object();
    const QString name = object.value("cmd").toString();
    const auto guard = emulator.lock();
    emulator.save(Emulator::SaveTime::Now);
    if (name == "reset") {
        emulator.reset();
        return done();
    }
    if (name == "reload") {
        emulator.reload();
        return done();
    }
    if (name == "set")
        return setState(emulator, object.value("state"));
    if (name == "get")
        return text(emulator.device().state().toJson());
    if (name == "faults")
        return setFaults(emulator, object.value("rules"));
    if (name == "trace")
        return setTrace(emulator, object.value("on"));
    if (name == "calls")
        return QJsonDocument(emulator.trace().take()).toJson(QJsonDocument::Compact);
    if (name == "count")
        return QByteArray::number(emulator.faults().count());
    return refused("unknown command");
}

} // namespace emulator
