#include "platform/MonitorRegistry.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tapalong {

namespace {

template <class Monitors> bool holds(const Monitors& monitors, MonitorToken token) {
    return std::any_of(monitors.begin(), monitors.end(), [token](const auto& each) { return each.token == token; });
}

} // namespace

MonitorToken MonitorRegistry::addLocal(EventMask matching, EventMonitors::LocalHandler handler) {
    const auto token = static_cast<MonitorToken>(++m_lastToken);
    m_locals.push_back({token, matching, std::move(handler)});
    return token;
}

MonitorToken MonitorRegistry::addGlobal(EventMask matching, EventMonitors::GlobalHandler handler) {
    const auto token = static_cast<MonitorToken>(++m_lastToken);
    m_globals.push_back({token, matching, std::move(handler)});
    return token;
}

void MonitorRegistry::remove(MonitorToken token) {
    std::erase_if(m_locals, [token](const auto& each) { return each.token == token; });
    std::erase_if(m_globals, [token](const auto& each) { return each.token == token; });
}

Verdict MonitorRegistry::dispatchLocal(const InputEvent& event) {
    // Handlers add and remove monitors: those added now wait for the next event, those removed are skipped.
    const auto monitors = m_locals;
    std::optional<EventMask> consumedUnder;
    for (auto each = monitors.rbegin(); each != monitors.rend(); ++each) {
        const bool hidden = consumedUnder && *consumedUnder != each->mask;
        if (hidden || (each->mask & maskOf(event.type)) == 0 || !holds(m_locals, each->token)) {
            continue;
        }
        if (each->handler(event) == Verdict::consume && !consumedUnder) {
            consumedUnder = each->mask;
        }
    }
    return consumedUnder ? Verdict::consume : Verdict::pass;
}

void MonitorRegistry::dispatchGlobal(const InputEvent& event) {
    const auto monitors = m_globals;
    for (const auto& each : monitors) {
        if ((each.mask & maskOf(event.type)) != 0 && holds(m_globals, each.token)) {
            each.handler(event);
        }
    }
}

EventMask MonitorRegistry::globalInterest() const {
    EventMask interest = 0;
    for (const auto& each : m_globals) {
        interest |= each.mask;
    }
    return interest;
}

} // namespace tapalong
