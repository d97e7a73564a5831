#pragma once

#include <functional>

namespace tapalong {

/// The queue of the main thread. Callable from any thread.
class MainQueue {
public:
    virtual ~MainQueue() = default;

    /// Runs `work` on a later turn of the main thread, after all work posted before.
    virtual void async(std::function<void()> work) = 0;
    /// The same, `seconds` from now at the earliest.
    virtual void asyncAfter(double seconds, std::function<void()> work) = 0;
};

} // namespace tapalong
