#pragma once

#include <QJsonArray>
#include <QList>
#include <QString>

namespace emulator {

/// One call of a driver operation, with the thread that it came from and its span on the steady clock.
struct CallRecord
{
    QString operation;
    QJsonArray arguments;
    int status = 0;
    QString thread;
    qint64 beginNs = 0;
    qint64 endNs = 0;
};

/// The calls since tracing was switched on. The owner guards it by a lock.
class CallTrace
{
public:
    /// Switching forgets what was recorded.
    void setOn(bool on);
    void add(const CallRecord& record);
    /// Everything recorded, oldest first, and forgets it.
    QJsonArray take();

    /// Name of the calling thread and the present time, as the records hold them.
    static QString currentThread();
    static qint64 now();

private:
    bool m_on = false;
    QList<CallRecord> m_records;
};

} // namespace emulator
