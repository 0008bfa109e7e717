#include "bench/startreport.h"

#include "bench/processmemory.h"

#include <QEvent>
#include <QMetaObject>
#include <QWidget>

#include <chrono>
#include <cstdio>
#include <cstdlib>

qint64 StartReport::now()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
}

void StartReport::mark(const char* step)
{
    mark(step, now());
}

void StartReport::finish() const
{
    for (const auto& mark : m_marks)
        std::printf("%s\t%lld\n", mark.step.c_str(), static_cast<long long>(mark.ns));
    std::printf("peak KiB\t%.0f\n", peakMemoryKib());
    std::fflush(stdout);
    std::_Exit(0);
}

FirstPaint::FirstPaint(QWidget& window, std::function<void()> action)
    : m_action(std::move(action))
{
    window.installEventFilter(this);
}

bool FirstPaint::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Paint) {
        object->removeEventFilter(this);
        // The window is painted first; what lies in it follows before the event loop gets on.
        QMetaObject::invokeMethod(this, m_action, Qt::QueuedConnection);
    }
    return QObject::eventFilter(object, event);
}
