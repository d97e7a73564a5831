#pragma once

#include "platform/EventMonitors.h"
#include "platform/EventTaps.h"
#include "platform/MonitorRegistry.h"
#include "platform/simulated/EffectLog.h"

#include <functional>
#include <map>
#include <optional>

namespace tapalong::simulated {

/// The event stream of the simulated desktop: taps first, then this application's local monitors and windows, or the
/// global monitors and another application.
class SimulatedInput final : public EventMonitors, public EventTaps {
public:
    /// Who got an event in the end.
    enum class Receiver : std::uint8_t { tap, localMonitor, ownWindow, otherApplication };

    explicit SimulatedInput(EffectLog& effects) : m_effects(effects) {}

    [[nodiscard]] MonitorToken addLocalMonitorForEvents(EventMask matching, LocalHandler handler) override;
    [[nodiscard]] MonitorToken addGlobalMonitorForEvents(EventMask matching, GlobalHandler handler) override;
    void removeMonitor(MonitorToken token) override;

    [[nodiscard]] std::optional<TapHandle> createTap(TapLocation location, TapPlacement placement, TapOptions options,
                                                     EventMask eventsOfInterest, Callback callback) override;
    void enableTap(TapHandle tap, bool enable) override;
    [[nodiscard]] bool isTapEnabled(TapHandle tap) const override;
    [[nodiscard]] RunLoopSource createRunLoopSource(TapHandle tap) override;
    void addSource(RunLoopSource source) override;
    void removeSource(RunLoopSource source) override;

    /// Sends one event down the stream; `toOurs` says whether one of our windows has the keyboard.
    Receiver deliver(const InputEvent& event, bool toOurs);
    /// The system takes every enabled tap away, and tells it.
    void disableTaps(EventType notification);

    /// Whether the keyboard can be had, or another program holds it: then no tap is created, and none that was taken
    /// away is enabled again until it is available. On by default.
    void setTapsAvailable(bool available);
    /// While a secure field has focus, keys are kept from taps and global monitors. Off by default.
    void setSecureInput(bool secure) { m_secureInput = secure; }
    /// What the focused field of our window does with a key that nobody consumed.
    void setWindowHandler(std::function<void(const InputEvent&)> handler) { m_windowHandler = std::move(handler); }

    [[nodiscard]] std::size_t localMonitorCount() const { return m_monitors.localCount(); }
    [[nodiscard]] std::size_t globalMonitorCount() const { return m_monitors.globalCount(); }
    [[nodiscard]] std::size_t tapCount() const { return m_taps.size(); }
    [[nodiscard]] bool isTapInForce() const;

private:
    struct Tap {
        EventMask mask = 0;
        Callback callback;
        bool enabled = false;
        bool refused = false; ///< to be enabled, but the keyboard could not be had
        bool onRunLoop = false;
        std::optional<RunLoopSource> source{};
    };

    [[nodiscard]] bool keepsFromTaps(const InputEvent& event) const;
    void tellTaps(EventType notification, bool Tap::*whichOnes);
    [[nodiscard]] Verdict offerToTaps(const InputEvent& event);

    EffectLog& m_effects;
    MonitorRegistry m_monitors;
    std::map<TapHandle, Tap> m_taps;
    std::uint64_t m_lastHandle = 0;
    bool m_tapsAvailable = true;
    bool m_secureInput = false;
    std::function<void(const InputEvent&)> m_windowHandler;
};

} // namespace tapalong::simulated
