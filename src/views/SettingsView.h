#pragma once

#include "base/Observable.h"
#include "platform/Platform.h"
#include "platform/Timers.h"
#include "platform/Windows.h"
#include "settings/Color.h"
#include "settings/Preference.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tapalong {

class SessionManager;
class SessionSettings;
class ShortcutRecorder;
class SystemSound;

/// The settings window's content: what a parent may change, what is missing for a start, and the start itself.
/// Controls are bound to the store's preferences; this holds the rules around them. Held by shared pointer.
class SettingsView final : public HostedView,
                           public ObservableObject,
                           public std::enable_shared_from_this<SettingsView> {
public:
    SettingsView(std::shared_ptr<SessionManager> sessionManager, SessionSettings& settings, const Platform& platform);
    ~SettingsView() override;

    void onAppear() override;
    void onDisappear() override;

    void checkAccessibilityPermission();
    /// Brings up the system's question and watches for the answer once a second, however often it is called.
    void requestAccessibilityPermission();
    [[nodiscard]] bool accessibilityGranted() const { return m_accessibilityGranted.get(); }

    /// Neither on nor off can be chosen while the permission is missing.
    [[nodiscard]] bool isLockdownToggleEnabled() const { return accessibilityGranted(); }
    [[nodiscard]] std::string_view lockdownInfo() const;
    [[nodiscard]] std::string_view emojiInfo() const;
    [[nodiscard]] bool showsAccessibilityWarning() const;
    [[nodiscard]] bool showsPasswordWarning() const;
    [[nodiscard]] bool showsSoundPicker() const;
    [[nodiscard]] bool showsColorPickers() const;
    /// What the parent should know: troubles of the desktop, and a last session without its Lockdown Mode. Each is a
    /// few sentences.
    [[nodiscard]] std::vector<std::string> notices() const;
    /// What Lockdown Mode cannot stop on this computer, each a sentence; nothing while it is off or cannot be had.
    [[nodiscard]] std::vector<std::string> lockdownLimits() const;

    [[nodiscard]] Color customFG() const;
    [[nodiscard]] Color customBG() const;
    void setCustomFG(const Color& color);
    void setCustomBG(const Color& color);

    /// Plays the selected pack's sound once; nothing where it cannot be loaded.
    void previewSound();

    [[nodiscard]] bool isStartEnabled() const;
    [[nodiscard]] double startOpacity() const { return isStartEnabled() ? 1.0 : 0.4; }
    void startSession();
    /// As in "Move mouse to Top Right corner to exit".
    [[nodiscard]] std::string exitHint() const;

    [[nodiscard]] SessionSettings& settings() const { return m_settings; }
    [[nodiscard]] ShortcutRecorder& shortcutRecorder() const { return *m_shortcutRecorder; }

    Published<bool> showLockdownInfo{*this, false};
    Published<bool> showEmojiInfo{*this, false};

private:
    void sessionWillChange();
    void settingsWillChange();
    void followLockdownMode();
    void endForgottenRecording();
    [[nodiscard]] std::string_view lastLockdownNotice() const;
    void watchForGrant(const std::shared_ptr<std::optional<TimerToken>>& watcher);

    const std::shared_ptr<SessionManager> m_sessionManager;
    SessionSettings& m_settings;
    const Platform m_platform;
    const std::shared_ptr<ShortcutRecorder> m_shortcutRecorder;
    Published<bool> m_accessibilityGranted{*this, false};
    std::optional<TimerToken> m_accessibilityTimer;
    /// They were looked for since Lockdown Mode is on, the window is open, and the last session has ended.
    bool m_knowsLimits = false;
    Subscription m_limitsSubscription;
    Subscription m_settingsSubscription;
    Subscription m_noticesSubscription;
    Subscription m_sessionSubscription;
    std::unique_ptr<SystemSound> m_preview; ///< kept, or it would end before it is heard
};

} // namespace tapalong
