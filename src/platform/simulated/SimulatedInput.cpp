#include "platform/simulated/SimulatedInput.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tapalong::simulated {

namespace {

std::string withNumber(const char* effect, std::uint64_t number) {
    return effect + std::to_string(number);
}

} // namespace

MonitorToken SimulatedInput::addLocalMonitorForEvents(EventMask matching, LocalHandler handler) {
    m_effects.record(withNumber("monitor.addLocal mask=", matching));
    return m_monitors.addLocal(matching, std::move(handler));
}

MonitorToken SimulatedInput::addGlobalMonitorForEvents(EventMask matching, GlobalHandler handler) {
    m_effects.record(withNumber("monitor.addGlobal mask=", matching));
    return m_monitors.addGlobal(matching, std::move(handler));
}

void SimulatedInput::removeMonitor(MonitorToken token) {
    m_effects.record("monitor.remove");
    m_monitors.remove(token);
}

std::optional<TapHandle> SimulatedInput::createTap(TapLocation location, TapPlacement placement, TapOptions options,
                                                   EventMask eventsOfInterest, Callback callback) {
    m_effects.record("tap.create location=" + std::to_string(static_cast<unsigned>(location)) +
                     " placement=" + std::to_string(static_cast<unsigned>(placement)) + " options=" +
                     std::to_string(static_cast<unsigned>(options)) + " mask=" + std::to_string(eventsOfInterest));
    if (!m_tapsAvailable) {
        return std::nullopt;
    }
    const auto handle = static_cast<TapHandle>(++m_lastHandle);
    m_taps.emplace(handle, Tap{eventsOfInterest, std::move(callback)});
    return handle;
}

void SimulatedInput::enableTap(TapHandle tap, bool enable) {
    m_effects.record(enable ? "tap.enable" : "tap.disable");
    if (const auto found = m_taps.find(tap); found != m_taps.end()) {
        found->second.enabled = enable && m_tapsAvailable;
        found->second.refused = enable && !m_tapsAvailable;
    }
}

bool SimulatedInput::isTapEnabled(TapHandle tap) const {
    const auto found = m_taps.find(tap);
    return found != m_taps.end() && found->second.enabled;
}

RunLoopSource SimulatedInput::createRunLoopSource(TapHandle tap) {
    m_effects.record("tap.createSource");
    const auto source = static_cast<RunLoopSource>(tap);
    if (const auto found = m_taps.find(tap); found != m_taps.end()) {
        found->second.source = source;
    }
    return source;
}

void SimulatedInput::addSource(RunLoopSource source) {
    m_effects.record("tap.addSource");
    for (auto& [handle, tap] : m_taps) {
        tap.onRunLoop = tap.onRunLoop || tap.source == source;
    }
}

void SimulatedInput::removeSource(RunLoopSource source) {
    m_effects.record("tap.removeSource");
    std::erase_if(m_taps, [source](const auto& entry) { return entry.second.source == source; });
}

bool SimulatedInput::isTapInForce() const {
    return std::any_of(m_taps.begin(), m_taps.end(),
                       [](const auto& entry) { return entry.second.enabled && entry.second.onRunLoop; });
}

bool SimulatedInput::keepsFromTaps(const InputEvent& event) const {
    return m_secureInput && (event.type == EventType::keyDown || event.type == EventType::keyUp ||
                             event.type == EventType::flagsChanged);
}

Verdict SimulatedInput::offerToTaps(const InputEvent& event) {
    std::vector<Callback> callbacks; // a copy: a callback may remove its own tap
    for (const auto& [handle, tap] : m_taps) {
        const bool wanted = static_cast<std::uint32_t>(event.type) < 64 && (tap.mask & maskOf(event.type)) != 0;
        if (tap.enabled && tap.onRunLoop && wanted) {
            callbacks.push_back(tap.callback);
        }
    }
    for (const auto& callback : callbacks) {
        if (callback(event) == Verdict::consume) {
            return Verdict::consume;
        }
    }
    return Verdict::pass;
}

SimulatedInput::Receiver SimulatedInput::deliver(const InputEvent& event, bool toOurs) {
    const bool secure = keepsFromTaps(event);
    if (!secure && offerToTaps(event) == Verdict::consume) {
        return Receiver::tap;
    }
    if (!toOurs) {
        if (!secure) {
            m_monitors.dispatchGlobal(event);
        }
        return Receiver::otherApplication;
    }
    if (m_monitors.dispatchLocal(event) == Verdict::consume) {
        return Receiver::localMonitor;
    }
    if (m_windowHandler) {
        m_windowHandler(event);
    }
    return Receiver::ownWindow;
}

void SimulatedInput::disableTaps(EventType notification) {
    tellTaps(notification, &Tap::enabled);
}

void SimulatedInput::setTapsAvailable(bool available) {
    m_tapsAvailable = available;
    if (available) {
        tellTaps(EventType::tapDisabledByUserInput, &Tap::refused);
    }
}

// Clears the flag of those that have it, and tells them.
void SimulatedInput::tellTaps(EventType notification, bool Tap::*whichOnes) {
    std::vector<Callback> callbacks;
    for (auto& [handle, tap] : m_taps) {
        if (std::exchange(tap.*whichOnes, false)) {
            callbacks.push_back(tap.callback);
        }
    }
    for (const auto& callback : callbacks) {
        std::ignore = callback(InputEvent{.type = notification});
    }
}

} // namespace tapalong::simulated
