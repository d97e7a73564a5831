#pragma once

#include "platform/TimerQueue.h"
#include "platform/Timers.h"

#include <QTimer>

namespace tapalong {

/// The timers of the main thread. One timer of the event loop serves them all, armed for the next deadline only: the
/// process does not wake up while nothing is due.
class QtTimers final : public Timers {
public:
    QtTimers();

    [[nodiscard]] double now() const override;
    TimerToken scheduledTimer(double interval, Repeats repeats, std::weak_ptr<const void> owner,
                              std::function<void()> block) override;
    void invalidate(TimerToken token) override;

    /// Whether the event loop will wake up for us.
    [[nodiscard]] bool isArmed() const { return m_next.isActive(); }

private:
    void fire();
    void arm();

    TimerQueue m_queue;
    QTimer m_next;
};

} // namespace tapalong
