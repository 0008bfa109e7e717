#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>

/// Lets the window go on until `holds()`; false if it never does. Unlike the waiting of the test library this
/// never sleeps, which would be most of a long session.
template <typename Holds>
bool waitUntil(Holds holds)
{
    constexpr int kPatienceMs = 10000;
    QElapsedTimer clock;
    clock.start();
    while (!holds()) {
        if (clock.elapsed() > kPatienceMs)
            return false;
        QCoreApplication::processEvents();
        // Editors that have closed are deleted here.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}
