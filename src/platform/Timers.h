#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace tapalong {

enum class TimerToken : std::uint64_t {};
enum class Repeats : bool { no, yes };

/// Timers of the main thread, and the monotonic clock that they run by.
class Timers {
public:
    virtual ~Timers() = default;

    /// Seconds since some fixed moment; never goes back and does not follow changes of the wall clock.
    [[nodiscard]] virtual double now() const = 0;

    /// Calls `block` every `interval` seconds, or once. A timer ends by invalidate(), after its one call, or, since
    /// some owners keep no token, by itself once `owner` is gone.
    virtual TimerToken scheduledTimer(double interval, Repeats repeats, std::weak_ptr<const void> owner,
                                      std::function<void()> block) = 0;

    /// Invalidating a timer that has ended does nothing.
    virtual void invalidate(TimerToken token) = 0;
};

} // namespace tapalong
