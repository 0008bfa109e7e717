#include "emulator/fpaxdriver.h"

#include "emulator/emulator.h"
#include "emulator/settingsdialog.h"
#include "emulator/widetext.h"

#include <QApplication>
#include <QThread>

namespace emulator {

int FpaxDriver::getSingleSetting(const wchar_t* name, wchar_t* buffer, int capacity)
{
    const QString key = fromWide(name);
    return run("getSingleSetting", Reach::Driver, true, {key, capacity},
               [&](Call&) { return copyText(m_settings.value(key), buffer, capacity); });
}

int FpaxDriver::setSingleSetting(const wchar_t* name, const wchar_t* value)
{
    const QString key = fromWide(name);
    const QString text = fromWide(value);
    return run("setSingleSetting", Reach::Driver, false, {key, text}, [&](Call&) {
        if (key.isEmpty())
            return finish(Outcome::badParameter(1, "Имя настройки"));
        m_settings.store(key, text);
        return finish(Outcome::ok());
    });
}

int FpaxDriver::getSingleMapping(const wchar_t* name, wchar_t* buffer, int capacity)
{
    const QString key = fromWide(name);
    return run("getSingleMapping", Reach::Driver, true, {key, capacity},
               [&](Call&) { return copyText(PortSettings::mapping(key), buffer, capacity); });
}

int FpaxDriver::applySingleSettings()
{
    return execute("applySingleSettings", [this] {
        const Outcome outcome = m_settings.apply();
        if (outcome.isOk())
            m_emulator.device().applySettings(m_settings.applied());
        return outcome;
    });
}

int FpaxDriver::ShowProperties()
{
    return run("ShowProperties", Reach::Driver, false, {},
               [this](Call& call) { return finish(showProperties(call.lock)); });
}

// The dialog may stay open for long, and a worker must not wait for it: the lock is given back meanwhile.
Outcome FpaxDriver::showProperties(std::unique_lock<std::mutex>& lock)
{
    const auto* application = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (application == nullptr || application->thread() != QThread::currentThread())
        return Outcome::refused(code::kNoDisplay);

    DialogValues values{m_emulator.device().state(), m_settings.value("Port"), m_emulator.faults().text()};
    const DialogValues before = values;
    lock.unlock();
    SettingsDialog dialog(values);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (accepted)
        values = dialog.values();
    lock.lock();
    if (!accepted)
        return Outcome::ok();

    values.state.settings = m_emulator.device().state().settings;
    m_emulator.device().setState(values.state);
    if (values.faults != before.faults)
        m_emulator.faults().set(values.faults.trimmed().isEmpty() ? QByteArray("[]") : values.faults);
    if (values.port == before.port)
        return Outcome::ok();
    m_settings.store("Port", values.port);
    const Outcome outcome = m_settings.apply();
    if (outcome.isOk())
        m_emulator.device().applySettings(m_settings.applied());
    return outcome;
}

} // namespace emulator
