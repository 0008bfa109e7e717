#pragma once

#include "app/csettings.h"
#include "app/mainwindow.h"
#include "device/clkrd9io.h"
#include "support/dialogrobot.h"
#include "support/emulateddevice.h"
#include "support/templatefile.h"
#include "support/usersteps.h"
#include "support/windowprobe.h"

#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>

class QDialog;
class QLabel;

/// Answers the driver's own settings dialog while it lives; without orders it is cancelled.
class DriverDialogUser : public QObject
{
    Q_OBJECT

public:
    using Steps = std::function<void(QDialog&)>;

    DriverDialogUser();

    /// From now on each dialog is accepted, the next one after `steps` in it.
    void accept(const Steps& steps = {});
    /// From now on each dialog is cancelled, the next one after `steps` in it.
    void cancel(const Steps& steps = {});
    /// How many dialogs there were since the last call.
    int takeSeen() { return std::exchange(m_seen, 0); }

private:
    void look();

    QTimer m_timer;
    QPointer<QWidget> m_lastSeen;
    Steps m_steps;
    bool m_accepts = false;
    int m_seen = 0;
};

/// Makes the one session of the process as it was before `main` when it goes.
struct SessionRenewal
{
    SessionRenewal() = default;
    ~SessionRenewal();
    Q_DISABLE_COPY_MOVE(SessionRenewal)
};

/// A user with the program in a directory where the emulator is the driver. The program starts when it is told to.
struct ConnectionBench
{
    ConnectionBench();

    /// Starts the program; the boxes of the start are answered.
    void start();
    /// Shows the window without a template and lets the slow timer look at the device.
    void showAndWait();
    /// Closes the program.
    void stop() { window.reset(); }

    QStringList log() const { return WindowProbe(*window).log(); }
    QString settingsPath() const { return dir.path(QStringLiteral("settings.json")); }
    QByteArray settingsFile() const { return bytesOf(settingsPath()); }
    void writeSettings(const QByteArray& text) const { dir.write(QStringLiteral("settings.json"), text); }
    /// Writes the settings that a new program makes for itself.
    void writeUsualSettings() const;

    /// Cell `n` of the status bar, from 0.
    QLabel* statusCell(int n) const;
    bool isEnabled(const char* action) const;
    /// Opens a template of these fields.
    void openFields(const QList<FieldRow>& fields);
    /// What of the tape is not as these fields want it.
    QStringList harm(const QList<FieldRow>& fields) const;

    SessionRenewal renewal;
    ProgramDir dir;
    EmulatedDevice device{Settings.pathApp};
    DialogRobot robot;
    DriverDialogUser driverDialog;
    std::unique_ptr<MainWindow> window;
};

/// The program with a device that answers, a template on the tape and nothing yet in its log.
struct RunningBench : ConnectionBench
{
    RunningBench();

    void choose(const char* action) { chooseInMenu(*window, action); }

    QList<FieldRow> fields = manyFields(4);
    std::unique_ptr<LogWatch> watch;
};

/// A column "failure", and a row for each way in which an operation fails and does not hide it.
void addFailureRows();

// What the user is told of an exchange that cannot begin.
extern const char* const kNoPortText;
extern const char* const kNoExchangeText;
extern const char* const kNoModeText;
extern const char* const kNoDialogText;

/// The lines of a start that every good driver begins with.
QStringList driverLines();
/// The lines about a device that answers, as the session knows it.
QStringList goodDeviceLines();
/// The lines about a device that does not, as the session knows it.
QStringList noConnectionLines();
