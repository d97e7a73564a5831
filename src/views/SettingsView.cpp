#include "views/SettingsView.h"

#include "base/WhileAlive.h"
#include "platform/Accessibility.h"
#include "platform/InputLimits.h"
#include "platform/MainQueue.h"
#include "platform/Notices.h"
#include "platform/SystemSounds.h"
#include "session/SessionManager.h"
#include "settings/SessionSettings.h"
#include "sound/SoundPack.h"
#include "views/LockdownLimits.h"
#include "views/ShortcutRecorder.h"

#include <utility>

namespace tapalong {

namespace {

constexpr double permissionInterval = 2.0; // seconds
constexpr double grantInterval = 1.0;      // seconds

} // namespace

SettingsView::SettingsView(std::shared_ptr<SessionManager> sessionManager, SessionSettings& settings,
                           const Platform& platform)
    : m_sessionManager(std::move(sessionManager)), m_settings(settings), m_platform(platform),
      m_shortcutRecorder(std::make_shared<ShortcutRecorder>(settings, platform)),
      m_limitsSubscription(platform.inputLimits.objectWillChange([this] { sendObjectWillChange(); })),
      m_settingsSubscription(settings.objectWillChange([this] { settingsWillChange(); })),
      m_noticesSubscription(platform.notices.objectWillChange([this] { sendObjectWillChange(); })),
      m_sessionSubscription(m_sessionManager->objectWillChange([this] { sessionWillChange(); })) {}

SettingsView::~SettingsView() = default;

void SettingsView::onAppear() {
    checkAccessibilityPermission();
    m_accessibilityTimer =
        m_platform.timers.scheduledTimer(permissionInterval, Repeats::yes, weak_from_this(),
                                         whileAlive(weak_from_this(), &SettingsView::checkAccessibilityPermission));
    m_knowsLimits = false; // a touchpad may have been plugged in
    followLockdownMode();
}

void SettingsView::onDisappear() {
    if (m_accessibilityTimer) {
        m_platform.timers.invalidate(*m_accessibilityTimer);
        m_accessibilityTimer.reset();
    }
    m_shortcutRecorder->stopRecordingShortcut();
}

// Each key of a session is a change, and none alters what this window shows, should it lie open on a second screen. What
// the session meets with is to be looked for after it.
void SettingsView::sessionWillChange() {
    if (m_sessionManager->isSessionActive()) {
        m_knowsLimits = false;
        return;
    }
    sendObjectWillChange();
    endForgottenRecording();
    m_platform.mainQueue.async(whileAlive(weak_from_this(), &SettingsView::followLockdownMode));
}

// A recording that was forgotten when the shortcut started a session would eat the password on the way out. None
// outlives a session either.
void SettingsView::endForgottenRecording() {
    if (m_shortcutRecorder->isRecordingShortcut()) {
        m_shortcutRecorder->stopRecordingShortcut();
    }
}

void SettingsView::settingsWillChange() {
    m_platform.mainQueue.async(whileAlive(weak_from_this(), &SettingsView::followLockdownMode));
}

// Only then, because looking asks the system's services, which need not be troubled for a list that nobody sees.
void SettingsView::followLockdownMode() {
    if (!m_accessibilityTimer || m_sessionManager->isSessionActive()) {
        return;
    }
    const bool isOn = m_settings.kioskMode.get();
    if (const bool knew = std::exchange(m_knowsLimits, isOn); isOn && !knew) {
        m_platform.inputLimits.lookAgain();
    }
}

void SettingsView::checkAccessibilityPermission() {
    // Announced only when it changes: this runs every two seconds for as long as the window is open.
    if (const bool granted = m_platform.accessibility.isProcessTrusted(); granted != accessibilityGranted()) {
        m_accessibilityGranted.set(granted);
    }
}

void SettingsView::requestAccessibilityPermission() {
    m_platform.accessibility.isProcessTrustedWithPrompt();
    const auto token = std::make_shared<std::optional<TimerToken>>();
    *token = m_platform.timers.scheduledTimer(
        grantInterval, Repeats::yes, weak_from_this(),
        whileAlive(weak_from_this(), [token](SettingsView& self) { self.watchForGrant(token); }));
}

void SettingsView::watchForGrant(const std::shared_ptr<std::optional<TimerToken>>& watcher) {
    if (m_platform.accessibility.isProcessTrusted()) {
        m_accessibilityGranted.set(true);
        m_platform.timers.invalidate(watcher->value());
    }
}

std::string_view SettingsView::lockdownInfo() const {
    return accessibilityGranted()
               ? "Blocks Cmd+Tab, Cmd+Q, and other system shortcuts. Hides the dock and disables force quit. Mouse "
                 "cursor stays visible for hot corner exit."
               : "Grant accessibility permission to enable lockdown mode. Required for intercepting system shortcuts.";
}

std::string_view SettingsView::emojiInfo() const {
    return "Shift, Cmd, Option, Control, and Caps Lock will produce random toddler-friendly emoji instead of being "
           "silently ignored.";
}

bool SettingsView::showsAccessibilityWarning() const {
    return m_settings.kioskMode.get() && !accessibilityGranted();
}

bool SettingsView::showsPasswordWarning() const {
    return m_settings.exitPassword.get().empty();
}

bool SettingsView::showsSoundPicker() const {
    return m_settings.soundEnabled.get();
}

bool SettingsView::showsColorPickers() const {
    return !m_settings.useSystemAppearance.get();
}

std::vector<std::string> SettingsView::notices() const {
    auto notices = m_platform.notices.notices();
    if (const auto notice = lastLockdownNotice(); !notice.empty()) {
        notices.emplace_back(notice);
    }
    return notices;
}

std::string_view SettingsView::lastLockdownNotice() const {
    switch (m_sessionManager->lastLockdown()) {
    case LockdownOutcome::partly:
        return "Lockdown Mode was not in force for a part of the last session: Tapalong could not get all of the "
               "keyboard for itself, perhaps because of an open menu or another program. Keys may have reached other "
               "programs or the system.";
    case LockdownOutcome::never:
        return "Lockdown Mode was not in force in the last session: Tapalong could not get all of the keyboard for "
               "itself, perhaps because of an open menu or another program. Keys may have reached other programs or "
               "the system.";
    case LockdownOutcome::asWished:
        break;
    }
    return {};
}

std::vector<std::string> SettingsView::lockdownLimits() const {
    const bool canBeInForce = m_settings.kioskMode.get() && accessibilityGranted();
    return canBeInForce ? sentencesAbout(m_platform.inputLimits.openLimits()) : std::vector<std::string>();
}

Color SettingsView::customFG() const {
    return Color::fromHex(m_settings.customFGColorHex.get()).value_or(NamedColor::white);
}

Color SettingsView::customBG() const {
    return Color::fromHex(m_settings.customBGColorHex.get()).value_or(NamedColor::black);
}

void SettingsView::setCustomFG(const Color& color) {
    m_settings.customFGColorHex.set(color.hexString());
}

void SettingsView::setCustomBG(const Color& color) {
    m_settings.customBGColorHex.set(color.hexString());
}

void SettingsView::previewSound() {
    const auto& pack = SoundPack::packWithID(m_settings.selectedSoundPack.get());
    m_preview = m_platform.systemSounds.soundNamed(pack.systemSoundName);
    if (m_preview) {
        m_preview->play();
    }
}

bool SettingsView::isStartEnabled() const {
    return !showsPasswordWarning();
}

void SettingsView::startSession() {
    m_sessionManager->startSession();
}

std::string SettingsView::exitHint() const {
    return "Move mouse to " + std::string(label(m_settings.exitCorner.get())) + " corner to exit";
}

} // namespace tapalong
