#pragma once

#include "emulator/faultrule.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace emulator {

/// The rules in force, from a file or set by hand; whichever was set last holds. The owner guards it by a lock.
class FaultPlan
{
public:
    /// Sets rules from JSON text and starts counting anew. False, with the old rules kept, if the text is no
    /// list of rules.
    bool set(const QByteArray& json);
    void clear();

    /// The JSON text that the rules in force were set from.
    QByteArray text() const { return m_text; }

    /// Looks at the file `path` and takes its rules if its time or size has changed since the last look. A file
    /// that cannot be read or parsed has no rules.
    void watch(const QString& path);
    void forgetFile();

    /// Counts one call and tells whether a rule hits it. The first rule that does wins.
    std::optional<Fault> next(const QString& operation, bool diagnostic);

    /// Calls since the rules were set, without the diagnostic getters.
    int count() const { return m_count; }

private:
    struct FileMark
    {
        QDateTime time;
        qint64 size = -1;

        bool operator==(const FileMark&) const = default;
    };

    QList<FaultRule> m_rules;
    QByteArray m_text;
    FileMark m_mark;
    int m_count = 0;
};

} // namespace emulator
