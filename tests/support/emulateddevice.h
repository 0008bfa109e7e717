#pragma once

#include "support/drivercalls.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QLibrary>
#include <QList>
#include <QString>
#include <QStringList>

/// How an operation of the driver fails.
enum class Failure {
    Coded,     ///< negative status and a result code
    Codeless,  ///< negative status, no result code
    Pretended, ///< reports success without doing its work
    Standard,  ///< a standard exception leaves it
    Foreign,   ///< a number is thrown out of it
};

/// A call as takeCalls() writes it, and its status.
struct DriverCall
{
    QString text;
    int status = 0;
};

/// The emulator in a folder, where a session finds it as the driver, with a new device that no files belong to; and a
/// hand on that device. The folder is the emulator's home meanwhile.
class EmulatedDevice
{
public:
    explicit EmulatedDevice(const QString& folder);
    ~EmulatedDevice();
    Q_DISABLE_COPY_MOVE(EmulatedDevice)

    /// What a session loads: no prefix, no suffix.
    QString driverPath() const { return m_folder + QStringLiteral("/fpax"); }
    /// Takes the driver's file out of the folder; only before a session has loaded it.
    void remove();

    QJsonObject state() { return control({{"cmd", "get"}}).toObject(); }
    void set(const QJsonObject& state);

    /// Sets fault rules; calls count from 1 again.
    void setFaults(const QJsonArray& rules);
    void dropFaults() { setFaults({}); }
    /// The `n`-th call from now on fails; the getters of the result code, of the bad parameter and of their texts
    /// neither count nor fail.
    void failCall(int n, Failure failure);
    /// Each call of this operation fails from now on.
    void fail(const QString& operation, Failure failure);

    /// Starts to write down the calls.
    void watch();
    /// The calls since then or since the last look, with their arguments: `setMode(4)`, `getSingleSetting("Port", 4096)`.
    QStringList takeCalls();
    /// The same with what each of them returned; a call that threw has a negative status.
    QList<DriverCall> takeAnsweredCalls();
    /// The same as the emulator has noted them: operation, arguments, status, thread, begin and end.
    QJsonArray takeTrace() { return control({{"cmd", "calls"}}).toArray(); }

private:
    QJsonValue control(const QJsonObject& command);

    QString m_folder;
    QString m_file;
    QLibrary m_library;
    bool m_isLoadedElsewhere = false;
};

/// What the failing operations report as their description.
extern const char* const kFailureText;
/// And their result code.
constexpr int kFailureCode = -1000;
