#pragma once

#include "base/Observable.h"
#include "lockdown/HotCornerMonitor.h"
#include "lockdown/KeyEvent.h"
#include "platform/EventMonitors.h"
#include "platform/EventTaps.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"
#include "platform/Timers.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

namespace tapalong {

class SessionSettings;

/// Whether Lockdown Mode was wanted when the session began, and whether the keyboard is really ours.
enum class Lockdown : std::uint8_t { off, missing, inForce };

/// The lockdown of one session: keeps every key flowing to the session's handler, watches the exit corner, keeps
/// the application in front and, in Lockdown Mode, takes the keyboard from everybody else.
///
/// Held by shared pointer, and strongly by the session alone: whatever waits on a timer or on the main queue holds
/// it weakly and dies with it. Letting go of it tears nothing down: call deactivate() first.
class KioskManager : public ObservableObject, public std::enable_shared_from_this<KioskManager> {
public:
    using KeyHandler = std::function<void(const KeyEvent&)>;

    KioskManager(const SessionSettings& settings, const Platform& platform);

    /// `handler` is called on the main thread, always from the main queue and never from inside an event's delivery.
    void activate(KeyHandler handler);
    /// May be called twice, or without activate().
    void deactivate();

    /// In force exactly while the tap is enabled; a change is announced.
    [[nodiscard]] Lockdown lockdown() const { return m_lockdown.get(); }
    /// Whether that was so at some time since the last activate().
    [[nodiscard]] bool hasBeen(Lockdown lockdown) const { return m_lockdownsSeen.contains(lockdown); }

private:
    // KioskManager.cpp
    void startHotCornerMonitor();
    void stopHotCornerMonitor();
    void startFocusWatchdog();
    void stopFocusWatchdog();
    void watch(bool kioskMode);
    void observeOverlay();
    void observeOverlay(std::string_view notification, bool showing);
    void stopObservingOverlay();
    void promptForAccessibilityPermission();
    /// The pointer stays visible in a session, or nobody would find the corner; hence these two do nothing.
    void hideCursor();
    void showCursor();
    void updateLockdown();

    // KioskManager+Interception.cpp
    void setupLocalEventMonitor();
    void teardownLocalEventMonitor();
    [[nodiscard]] Verdict handleLocalEvent(const InputEvent& event, bool kioskMode);
    void setupEventTap();
    void teardownEventTap();
    [[nodiscard]] Verdict handleCGEvent(const InputEvent& event);
    void emitEmojiForModifiers(ModifierFlags flags);
    void post(KeyEvent event);

    const SessionSettings& m_settings;
    const Platform m_platform;
    std::optional<TapHandle> m_eventTap;
    std::optional<RunLoopSource> m_runLoopSource;
    std::optional<MonitorToken> m_localEventMonitor;
    KeyHandler m_keyHandler;
    std::shared_ptr<HotCornerMonitor> m_hotCornerMonitor;
    std::optional<TimerToken> m_focusWatchdog;
    Published<Lockdown> m_lockdown{*this, Lockdown::off};
    std::set<Lockdown> m_lockdownsSeen;
    bool m_isLockdownWanted = false;
    bool m_isActive = false;
    bool m_isOverlayShowing = false;
    std::vector<ObserverToken> m_overlayObservers;
};

} // namespace tapalong
