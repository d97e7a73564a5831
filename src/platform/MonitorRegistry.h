#pragma once

#include "platform/EventMonitors.h"

#include <cstdint>
#include <vector>

namespace tapalong {

/// The rules of EventMonitors about who sees an event, for the platforms to feed with events. Main thread only.
class MonitorRegistry {
public:
    [[nodiscard]] MonitorToken addLocal(EventMask matching, EventMonitors::LocalHandler handler);
    [[nodiscard]] MonitorToken addGlobal(EventMask matching, EventMonitors::GlobalHandler handler);
    void remove(MonitorToken token);

    /// Hands an event of this application to the local monitors; consume means that the application must not get it.
    [[nodiscard]] Verdict dispatchLocal(const InputEvent& event);
    /// Hands an event that is bound for another application to the global monitors.
    void dispatchGlobal(const InputEvent& event);

    /// The union of the global monitors' masks: what is worth listening for.
    [[nodiscard]] EventMask globalInterest() const;
    [[nodiscard]] std::size_t localCount() const { return m_locals.size(); }
    [[nodiscard]] std::size_t globalCount() const { return m_globals.size(); }

private:
    template <class Handler> struct Monitor {
        MonitorToken token;
        EventMask mask;
        Handler handler;
    };
    using LocalMonitor = Monitor<EventMonitors::LocalHandler>;
    using GlobalMonitor = Monitor<EventMonitors::GlobalHandler>;

    std::vector<LocalMonitor> m_locals;
    std::vector<GlobalMonitor> m_globals;
    std::uint64_t m_lastToken = 0;
};

} // namespace tapalong
