#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <chrono>
#include <functional>

namespace tapalong::test {

/// Runs the main loop until `reached` holds, or gives up and returns false.
inline bool spinUntil(const std::function<bool()>& reached,
                      std::chrono::milliseconds atMost = std::chrono::seconds{10}) {
    const QDeadlineTimer deadline(atMost);
    while (!reached()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(1);
    }
    return true;
}

/// Runs the main loop for so long, for asserting that something does not happen.
inline void spinFor(std::chrono::milliseconds time) {
    (void)spinUntil([] { return false; }, time);
}

} // namespace tapalong::test
