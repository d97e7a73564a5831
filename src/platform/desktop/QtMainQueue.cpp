#include "platform/desktop/QtMainQueue.h"

#include <QMetaObject>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace tapalong {

void QtMainQueue::async(std::function<void()> work) {
    QMetaObject::invokeMethod(&m_receiver, std::move(work), Qt::QueuedConnection);
}

void QtMainQueue::asyncAfter(double seconds, std::function<void()> work) {
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;
    const auto due = Clock::now() + std::chrono::duration_cast<Clock::duration>(Seconds(std::max(seconds, 0.0)));
    // A timer must be started by the thread that it fires on.
    async([this, due, work = std::move(work)]() mutable {
        const auto left = std::max(std::chrono::ceil<std::chrono::milliseconds>(due - Clock::now()),
                                   std::chrono::milliseconds::zero());
        QTimer::singleShot(left, Qt::PreciseTimer, &m_receiver, std::move(work));
    });
}

} // namespace tapalong
