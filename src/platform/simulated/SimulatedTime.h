#pragma once

#include "platform/MainQueue.h"
#include "platform/TimerQueue.h"
#include "platform/Timers.h"
#include "platform/simulated/EffectLog.h"

#include <deque>
#include <functional>
#include <map>
#include <utility>

namespace tapalong::simulated {

/// Virtual time: the main queue and the timers of a clock that moves only when it is told to. What is scheduled and
/// called off is recorded; what fires is not.
class SimulatedTime final : public MainQueue, public Timers {
public:
    explicit SimulatedTime(EffectLog& effects) : m_effects(effects) {}

    void async(std::function<void()> work) override;
    void asyncAfter(double seconds, std::function<void()> work) override;

    [[nodiscard]] double now() const override { return m_now; }
    TimerToken scheduledTimer(double interval, Repeats repeats, std::weak_ptr<const void> owner,
                              std::function<void()> block) override;
    void invalidate(TimerToken token) override;

    /// Runs posted work, and what that posts, until none is left.
    void drain();
    /// Moves the clock on by `seconds`; what falls due on the way happens at its own instant, in order, timers before
    /// delayed work. The main queue is drained after each.
    void advance(double seconds);

    [[nodiscard]] std::size_t timerCount() { return m_timers.count(); }
    /// Work that waits for the next turn of the main queue.
    [[nodiscard]] std::size_t postedCount() const { return m_posted.size(); }

private:
    [[nodiscard]] double nextInstant(double latest);
    void runDelayed();

    EffectLog& m_effects;
    double m_now = 0;
    TimerQueue m_timers;
    std::deque<std::function<void()>> m_posted;
    std::multimap<double, std::function<void()>> m_delayed;
};

} // namespace tapalong::simulated
