#include "platform/desktop/QtTimers.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace tapalong {

namespace {

/// How far ahead the event loop's timer is set at most; a longer wait takes several steps.
constexpr double longestStep = 86400; // seconds

} // namespace

QtTimers::QtTimers() {
    m_next.setSingleShot(true);
    m_next.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_next, &QTimer::timeout, &m_next, [this] { fire(); });
}

double QtTimers::now() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

TimerToken QtTimers::scheduledTimer(double interval, Repeats repeats, std::weak_ptr<const void> owner,
                                    std::function<void()> block) {
    const auto token = m_queue.schedule(now(), interval, repeats, std::move(owner), std::move(block));
    arm();
    return token;
}

void QtTimers::invalidate(TimerToken token) {
    m_queue.invalidate(token);
    arm();
}

void QtTimers::fire() {
    m_queue.fireDue(now());
    arm();
}

void QtTimers::arm() {
    const auto deadline = m_queue.nextDeadline();
    if (!deadline) {
        m_next.stop();
        return;
    }
    // Rounded up: a wake-up just before the deadline would find nothing to do and spin until it comes.
    const double wait = std::clamp(*deadline - now(), 0.0, longestStep);
    m_next.start(static_cast<int>(std::ceil(wait * 1000)));
}

} // namespace tapalong
