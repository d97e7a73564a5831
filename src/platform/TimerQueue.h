#pragma once

#include "platform/Timers.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace tapalong {

/// The timers of one clock, for the platforms to drive. Those due at the same instant fire in the order of their
/// creation. Main thread only.
class TimerQueue {
public:
    /// `now` and `interval` in seconds. A timer whose `owner` is gone never fires again and is forgotten.
    TimerToken schedule(double now, double interval, Repeats repeats, std::weak_ptr<const void> owner,
                        std::function<void()> block);
    void invalidate(TimerToken token);

    /// When fireDue() has something to do next; none while nothing waits. Forgets timers without owner.
    [[nodiscard]] std::optional<double> nextDeadline();

    /// Fires every timer due by `now`, in order. One that repeats keeps its own beat: beats missed meanwhile are
    /// left out. Timers may be scheduled and invalidated by the blocks; one scheduled by a block waits for the next
    /// call even where it is due at once.
    void fireDue(double now);

    /// Timers that wait and whose owner lives.
    [[nodiscard]] std::size_t count();

private:
    struct Timer {
        double interval = 0;
        Repeats repeats = Repeats::no;
        std::weak_ptr<const void> owner;
        std::function<void()> block;
    };
    using Key = std::pair<double, std::uint64_t>; ///< deadline, then order of creation

    void forgetOrphans();
    [[nodiscard]] std::map<Key, Timer>::iterator find(TimerToken token);

    std::map<Key, Timer> m_timers;
    std::uint64_t m_lastToken = 0;
};

} // namespace tapalong
