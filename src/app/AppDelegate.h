#pragma once

#include "app/SessionWindow.h"
#include "platform/Application.h"
#include "platform/EventMonitors.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"
#include "session/ApplicationDelegate.h"

#include <memory>
#include <optional>

namespace tapalong {

class SessionManager;
class SessionSettings;

/// The machinery outside any view: the quick-start shortcut, and the window of a session. Held by shared pointer,
/// because the shortcut's monitors look whether it is still there.
class AppDelegate final : public ApplicationDelegate, public std::enable_shared_from_this<AppDelegate> {
public:
    AppDelegate(SessionSettings& settings, std::shared_ptr<SessionManager> sessionManager, const Platform& platform);
    ~AppDelegate();

    /// Null until launch has finished.
    [[nodiscard]] static AppDelegate* shared();

    void applicationDidFinishLaunching();
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const;
    /// The user started the program once more: shows the settings window. During a session nothing happens.
    void applicationShouldHandleReopen();

    /// Registers the shortcut anew. Each call leaves one more local monitor for the rest of the process.
    void registerGlobalShortcut() override;
    /// Makes the session window unless there is one.
    void showSessionWindow() override;
    void dismissSessionWindow() override;

    /// Null outside of a session.
    [[nodiscard]] const SessionWindow* sessionWindow() const { return m_sessionWindow.get(); }

private:
    [[nodiscard]] bool matchesGlobalShortcut(const InputEvent& event) const;
    void scheduleStart();
    SessionWindow& createSessionWindow();
    void followMainScreen();
    void showSettingsWindow();
    [[nodiscard]] Application& application() const;

    SessionSettings& m_settings;
    const std::shared_ptr<SessionManager> m_sessionManager;
    const Platform m_platform;
    std::unique_ptr<SessionWindow> m_sessionWindow;
    std::optional<ObserverToken> m_screenObserver; ///< while there is a session window
    std::optional<MonitorToken> m_globalShortcutMonitor;
};

} // namespace tapalong
