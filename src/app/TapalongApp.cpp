#include "app/TapalongApp.h"

#include "views/SettingsView.h"

namespace tapalong {

TapalongApp::TapalongApp(const Platform& platform)
    : m_settings(platform.userDefaults, platform.application),
      m_sessionManager(std::make_shared<SessionManager>(m_settings, platform)),
      m_appDelegate(std::make_shared<AppDelegate>(m_settings, m_sessionManager, platform)),
      m_settingsView(std::make_shared<SettingsView>(m_sessionManager, m_settings, platform)) {}

TapalongApp::~TapalongApp() = default;

Scene TapalongApp::body() const {
    return {.title = "Tapalong Settings",
            .identifier = "settings",
            .content = m_settingsView,
            .width = 500,
            .minHeight = 600,
            .centred = true};
}

} // namespace tapalong
