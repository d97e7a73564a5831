#include "lockdown/KioskManager.h"

#include "base/Fatal.h"
#include "base/WhileAlive.h"
#include "lockdown/Notifications.h"
#include "platform/Accessibility.h"
#include "platform/Application.h"
#include "platform/MainQueue.h"
#include "settings/SessionSettings.h"

#include <utility>

namespace tapalong {

namespace {

constexpr double watchdogInterval = 0.5;       // seconds
constexpr double permissionRecheckDelay = 2.0; // seconds

} // namespace

KioskManager::KioskManager(const SessionSettings& settings, const Platform& platform)
    : m_settings(settings), m_platform(platform) {}

void KioskManager::activate(KeyHandler handler) {
    m_keyHandler = std::move(handler);
    m_isActive = true;
    const bool kioskMode = m_settings.kioskMode.get();
    m_isLockdownWanted = kioskMode;
    m_lockdownsSeen.clear();
    setupLocalEventMonitor();
    if (kioskMode) {
        setupEventTap();
    }
    startHotCornerMonitor();
    startFocusWatchdog();
    observeOverlay();
}

void KioskManager::deactivate() {
    m_isActive = false;
    m_isLockdownWanted = false;
    teardownLocalEventMonitor();
    teardownEventTap();
    stopHotCornerMonitor();
    stopFocusWatchdog();
    stopObservingOverlay();
    showCursor();
}

void KioskManager::startHotCornerMonitor() {
    const auto trigger = whileAlive(weak_from_this(), [](const KioskManager& self) {
        self.m_platform.mainQueue.async(
            [&center = self.m_platform.notificationCenter] { center.post(showExitOverlayNotification); });
    });
    const auto monitor = std::make_shared<HotCornerMonitor>(m_settings.exitCorner.get(),
                                                            m_settings.hotCornerDwellTime.get(), trigger, m_platform);
    monitor->start();
    m_hotCornerMonitor = monitor;
}

void KioskManager::stopHotCornerMonitor() {
    if (m_hotCornerMonitor) {
        m_hotCornerMonitor->stop();
        m_hotCornerMonitor.reset();
    }
}

void KioskManager::startFocusWatchdog() {
    const bool kioskMode = m_settings.kioskMode.get();
    m_focusWatchdog = m_platform.timers.scheduledTimer(
        watchdogInterval, Repeats::yes, weak_from_this(),
        whileAlive(weak_from_this(), [kioskMode](KioskManager& self) { self.watch(kioskMode); }));
}

void KioskManager::watch(bool kioskMode) {
    // The overlay must keep the focus for the password and the fingerprint question.
    if (!m_isActive || m_isOverlayShowing) {
        return;
    }
    verify(m_platform.application != nullptr, "the application object must exist while a session runs");
    auto& application = *m_platform.application;
    if (!application.isActive()) {
        application.activateIgnoringOtherApps();
    }
    if (kioskMode) {
        application.setPresentationOptions(Presentation::lockdown);
    }
}

void KioskManager::stopFocusWatchdog() {
    if (m_focusWatchdog) {
        m_platform.timers.invalidate(*m_focusWatchdog);
        m_focusWatchdog.reset();
    }
}

void KioskManager::observeOverlay() {
    observeOverlay(showExitOverlayNotification, true);
    observeOverlay(hideExitOverlayNotification, false);
}

void KioskManager::observeOverlay(std::string_view notification, bool showing) {
    m_overlayObservers.push_back(m_platform.notificationCenter.addObserver(
        notification,
        whileAlive(weak_from_this(), [showing](KioskManager& self) { self.m_isOverlayShowing = showing; })));
}

void KioskManager::stopObservingOverlay() {
    for (const auto token : m_overlayObservers) {
        m_platform.notificationCenter.removeObserver(token);
    }
    m_overlayObservers.clear();
}

void KioskManager::promptForAccessibilityPermission() {
    m_platform.accessibility.isProcessTrustedWithPrompt();
    m_platform.mainQueue.asyncAfter(permissionRecheckDelay,
                                    [weak = weak_from_this(), &accessibility = m_platform.accessibility] {
                                        if (!accessibility.isProcessTrusted()) {
                                            return;
                                        }
                                        if (const auto self = weak.lock()) {
                                            self->setupEventTap();
                                        }
                                    });
}

void KioskManager::updateLockdown() {
    const bool isInForce = m_eventTap && m_platform.eventTaps.isTapEnabled(*m_eventTap);
    const auto lockdown = !m_isLockdownWanted ? Lockdown::off : isInForce ? Lockdown::inForce : Lockdown::missing;
    m_lockdownsSeen.insert(lockdown);
    if (lockdown != m_lockdown.get()) {
        m_lockdown.set(lockdown);
    }
}

void KioskManager::hideCursor() {}

void KioskManager::showCursor() {}

} // namespace tapalong
