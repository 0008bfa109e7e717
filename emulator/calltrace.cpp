#include "emulator/calltrace.h"

#include <QJsonObject>

#include <chrono>
#include <sstream>
#include <thread>

namespace emulator {

namespace {

// A trace that nobody takes must not fill the memory.
constexpr qsizetype kMaxRecords = 500000;

} // namespace

void CallTrace::setOn(bool on)
{
    m_on = on;
    m_records.clear();
}

void CallTrace::add(const CallRecord& record)
{
    if (m_on && m_records.size() < kMaxRecords)
        m_records.append(record);
}

QJsonArray CallTrace::take()
{
    QJsonArray array;
    for (const CallRecord& record : m_records)
        array.append(QJsonObject{{"op", record.operation},
                                 {"args", record.arguments},
                                 {"status", record.status},
                                 {"thread", record.thread},
                                 {"begin", record.beginNs},
                                 {"end", record.endNs}});
    m_records.clear();
    return array;
}

QString CallTrace::currentThread()
{
    std::ostringstream text;
    text << std::this_thread::get_id();
    return QString::fromStdString(text.str());
}

qint64 CallTrace::now()
{
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(since).count();
}

} // namespace emulator
