#pragma once

#include "app/AppDelegate.h"
#include "platform/Platform.h"
#include "platform/Windows.h"
#include "session/SessionManager.h"
#include "settings/SessionSettings.h"

#include <memory>

namespace tapalong {

class SettingsView;

/// The whole application, to be run on any platform: whoever makes it opens body() as a window, tells the delegate
/// that launching has finished, and then feeds events.
class TapalongApp {
public:
    explicit TapalongApp(const Platform& platform);
    TapalongApp(const TapalongApp&) = delete;
    TapalongApp& operator=(const TapalongApp&) = delete;
    ~TapalongApp();

    /// The application's one scene: the settings window.
    [[nodiscard]] Scene body() const;

    [[nodiscard]] AppDelegate& appDelegate() const { return *m_appDelegate; }
    [[nodiscard]] SessionManager& sessionManager() const { return *m_sessionManager; }
    [[nodiscard]] SessionSettings& settings() { return m_settings; }
    [[nodiscard]] const std::shared_ptr<SettingsView>& settingsView() const { return m_settingsView; }

private:
    SessionSettings m_settings;
    std::shared_ptr<SessionManager> m_sessionManager;
    std::shared_ptr<AppDelegate> m_appDelegate;
    std::shared_ptr<SettingsView> m_settingsView;
};

} // namespace tapalong
