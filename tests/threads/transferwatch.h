#pragma once

#include "device/clkrd9io.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFuture>
#include <QList>
#include <QObject>
#include <QThread>
#include <QTimer>
#include <QtConcurrent>

#include <atomic>
#include <thread>

/// What the main thread gets to know of a transfer: the signals of the session, in the order in which they arrive.
class TransferWatch : public QObject
{
public:
    explicit TransferWatch(const clKRD9IO& session)
    {
        connect(&session, &clKRD9IO::updateProgressValue, this, [this](int value) {
            note();
            values.append(value);
            if (ends > 0)
                ++valuesBehindEnd;
        });
        connect(&session, &clKRD9IO::progressEnd, this, [this] {
            note();
            ++ends;
            m_loop.quit();
        });
    }

    /// Counts anew, for another transfer.
    void forget()
    {
        values.clear();
        ends = 0;
        valuesBehindEnd = 0;
        onOtherThread = 0;
        duringTransfer = 0;
    }

    /// Runs the event loop of the calling thread until the transfer has told its end; false if it never does.
    bool waitForEnd()
    {
        constexpr int longestMs = 120000;
        QTimer limit;
        connect(&limit, &QTimer::timeout, &m_loop, [this] { m_loop.exit(1); });
        limit.start(longestMs);
        return m_loop.exec() == 0;
    }

    QList<int> values;
    int ends = 0;
    int valuesBehindEnd = 0;
    int onOtherThread = 0;  ///< signals that did not arrive on the main thread
    int duringTransfer = 0; ///< signals that arrived before the transfer returned

    // Relaxed: the flag must not order what the hand-over of the transfer has to order.
    void setReturned(bool returned) { m_hasReturned.store(returned, std::memory_order_relaxed); }
    bool hasReturned() const { return m_hasReturned.load(std::memory_order_relaxed); }

private:
    void note()
    {
        onOtherThread += QThread::currentThread() == QCoreApplication::instance()->thread() ? 0 : 1;
        duringTransfer += hasReturned() ? 0 : 1;
    }

    std::atomic<bool> m_hasReturned = true;
    QEventLoop m_loop;
};

/// Reads all the time what the status bar of the window reads while a transfer runs.
class StatusReader : public QObject
{
public:
    explicit StatusReader(const clKRD9IO& session)
    {
        connect(&m_timer, &QTimer::timeout, this, [this, &session] {
            ++readings;
            if (session.driverLoaded)
                lastText = session.deviceText + session.serialText + QString::number(session.lineChars) +
                           QString::number(session.sessionState) + QString::number(session.checkState);
        });
        m_timer.start(1);
    }

    int readings = 0;
    QString lastText;

private:
    QTimer m_timer;
};

/// Where a transfer runs: on a thread of the pool, as in the program, or on one of the standard library, whose start
/// and end a race detector understands without any help.
enum class Worker { Pool, Thread };

/// Runs `transfer` on a worker, and the event loop here until it has ended; gives its result, -1 if it never ends.
template <typename Transfer>
int runOn(Worker worker, TransferWatch& watch, Transfer transfer)
{
    watch.forget();
    watch.setReturned(false);
    const auto noted = [&watch, transfer] {
        const int result = transfer();
        watch.setReturned(true);
        return result;
    };
    if (worker == Worker::Pool) {
        QFuture<int> running = QtConcurrent::run(noted);
        const bool hasEnded = watch.waitForEnd();
        running.waitForFinished();
        return hasEnded ? running.result() : -1;
    }
    int result = -1;
    std::thread thread([&result, &noted] { result = noted(); });
    const bool hasEnded = watch.waitForEnd();
    thread.join();
    return hasEnded ? result : -1;
}
