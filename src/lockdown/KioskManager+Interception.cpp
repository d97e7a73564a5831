// The two layers that catch keys. The local monitor sees what is addressed to this application and is always there;
// the event tap sits ahead of every application and is there in Lockdown Mode only.

#include "base/WhileAlive.h"
#include "lockdown/KeyClassification.h"
#include "lockdown/KioskManager.h"
#include "platform/MainQueue.h"
#include "platform/StandardOutput.h"
#include "settings/SessionSettings.h"

#include <utility>

namespace tapalong {

namespace {

constexpr ModifierFlags emojiModifiers =
    Modifier::command | Modifier::option | Modifier::control | Modifier::shift | Modifier::capsLock;

Verdict consumeIf(bool condition) {
    return condition ? Verdict::consume : Verdict::pass;
}

} // namespace

void KioskManager::setupLocalEventMonitor() {
    const bool kioskMode = m_settings.kioskMode.get();
    m_localEventMonitor = m_platform.eventMonitors.addLocalMonitorForEvents(
        maskOf(EventType::keyDown) | maskOf(EventType::flagsChanged) | maskOf(EventType::systemDefined),
        [weak = weak_from_this(), kioskMode](const InputEvent& event) {
            const auto self = weak.lock();
            return self ? self->handleLocalEvent(event, kioskMode) : Verdict::pass;
        });
    m_platform.standardOutput.print("✅ Local event monitor active — keyboard input captured");
}

void KioskManager::teardownLocalEventMonitor() {
    if (m_localEventMonitor) {
        m_platform.eventMonitors.removeMonitor(*m_localEventMonitor);
        m_localEventMonitor.reset();
    }
}

Verdict KioskManager::handleLocalEvent(const InputEvent& event, bool kioskMode) {
    // While the overlay shows, its password field must receive the typing.
    if (!m_isActive || m_isOverlayShowing) {
        return Verdict::pass;
    }
    switch (event.type) {
    case EventType::systemDefined:
        break;
    case EventType::flagsChanged:
        emitEmojiForModifiers(event.modifierFlags & Modifier::deviceIndependentMask);
        break;
    default:
        post(classifyNSEvent(event.keyCode, event.modifierFlags, event, m_settings));
        break;
    }
    return consumeIf(kioskMode);
}

void KioskManager::setupEventTap() {
    constexpr EventMask eventsOfInterest = maskOf(EventType::keyDown) | maskOf(EventType::keyUp) |
                                           maskOf(EventType::flagsChanged) | maskOf(EventType::scrollWheel) |
                                           maskOf(EventType::otherMouseDown) | maskOf(EventType::otherMouseUp) |
                                           maskOf(EventType::systemDefined) | maskOf(EventType::gesture) |
                                           maskOf(EventType::magnify) | maskOf(EventType::swipe);
    const auto tap =
        m_platform.eventTaps.createTap(TapLocation::session, TapPlacement::headInsert, TapOptions::activeFilter,
                                       eventsOfInterest, [weak = weak_from_this()](const InputEvent& event) {
                                           const auto self = weak.lock();
                                           return self ? self->handleCGEvent(event) : Verdict::pass;
                                       });
    if (!tap) {
        m_platform.standardOutput.print("⚠️ Failed to create CGEventTap. Accessibility permission required!");
        m_platform.standardOutput.print("   Grant permission in: System Settings → Privacy & Security → Accessibility");
        promptForAccessibilityPermission();
        updateLockdown();
        return;
    }
    m_eventTap = tap;
    m_runLoopSource = m_platform.eventTaps.createRunLoopSource(*tap);
    m_platform.eventTaps.addSource(*m_runLoopSource);
    m_platform.eventTaps.enableTap(*tap, true);
    m_platform.standardOutput.print("✅ CGEventTap active — all keyboard input intercepted");
    updateLockdown();
}

Verdict KioskManager::handleCGEvent(const InputEvent& event) {
    switch (event.type) {
    case EventType::tapDisabledByTimeout:
    case EventType::tapDisabledByUserInput:
        if (m_eventTap) {
            m_platform.eventTaps.enableTap(*m_eventTap, true);
        }
        updateLockdown();
        return Verdict::pass;
    case EventType::systemDefined:
    case EventType::scrollWheel:
    case EventType::otherMouseDown:
    case EventType::otherMouseUp:
    case EventType::gesture:
    case EventType::magnify:
    case EventType::swipe:
    case EventType::rotate:
        return Verdict::consume;
    case EventType::flagsChanged:
        emitEmojiForModifiers(event.modifierFlags);
        return Verdict::consume;
    case EventType::keyDown:
        post(classifyKeyEvent(event.keyCode, event.modifierFlags, event));
        return Verdict::consume;
    default: // key-ups
        return Verdict::pass;
    }
}

void KioskManager::teardownEventTap() {
    if (m_eventTap) {
        m_platform.eventTaps.enableTap(*m_eventTap, false);
    }
    if (m_runLoopSource) {
        m_platform.eventTaps.removeSource(*m_runLoopSource);
    }
    m_eventTap.reset();
    m_runLoopSource.reset();
    m_platform.standardOutput.print("🔓 CGEventTap deactivated — normal input restored");
    updateLockdown();
}

void KioskManager::emitEmojiForModifiers(ModifierFlags flags) {
    if (m_settings.modifierKeysTypeEmoji.get() && (flags & emojiModifiers) != 0) {
        post(KeyEvent::Kind::emoji);
    }
}

void KioskManager::post(KeyEvent event) {
    m_platform.mainQueue.async(whileAlive(weak_from_this(), [event = std::move(event)](const KioskManager& self) {
        if (self.m_keyHandler) {
            self.m_keyHandler(event);
        }
    }));
}

} // namespace tapalong
