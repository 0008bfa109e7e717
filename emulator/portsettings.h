#pragma once

#include "emulator/resultcodes.h"

#include <QMap>
#include <QString>

namespace emulator {

/// Number of the last serial port.
constexpr int kMaxComPort = 256;

/// Settings of the driver by their names: what was stored, and what was applied of it.
class PortSettings
{
public:
    explicit PortSettings(const QMap<QString, QString>& applied);

    /// The stored value, the applied one if nothing was stored, the driver's own if neither is there.
    QString value(const QString& name) const;
    void store(const QString& name, const QString& value);

    /// Checks everything that is stored and applies all of it or nothing.
    Outcome apply();
    const QMap<QString, QString>& applied() const { return m_applied; }

    /// Values that a setting may take, separated by semicolons; empty for a name that has no such list.
    static QString mapping(const QString& name);

private:
    QMap<QString, QString> m_stored;
    QMap<QString, QString> m_applied;
};

} // namespace emulator
