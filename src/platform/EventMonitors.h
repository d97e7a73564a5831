#pragma once

#include "platform/InputEvent.h"

#include <cstdint>
#include <functional>

namespace tapalong {

/// Names one installed monitor; never reused within a process.
enum class MonitorToken : std::uint64_t {};

/// Watches of the input events.
///
/// Local monitors see the events addressed to this application before its windows do, the newest monitor first. One
/// that consumes an event hides it from the older monitors that have another mask; those with the same mask each get
/// it. A monitor installed during a dispatch does not see that event. The event goes on to the application only if
/// nobody consumed it.
///
/// Global monitors see copies of what is bound for other applications, never an event while one of our windows has
/// the keyboard, and cannot consume anything.
///
/// All handlers run on the main thread. A monitor stays until it is removed by its token.
class EventMonitors {
public:
    using LocalHandler = std::function<Verdict(const InputEvent&)>;
    using GlobalHandler = std::function<void(const InputEvent&)>;

    virtual ~EventMonitors() = default;

    [[nodiscard]] virtual MonitorToken addLocalMonitorForEvents(EventMask matching, LocalHandler handler) = 0;
    [[nodiscard]] virtual MonitorToken addGlobalMonitorForEvents(EventMask matching, GlobalHandler handler) = 0;

    /// Removing a token twice does nothing.
    virtual void removeMonitor(MonitorToken token) = 0;
};

} // namespace tapalong
