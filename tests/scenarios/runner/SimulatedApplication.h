#pragma once

#include "app/TapalongApp.h"
#include "auth/ExitOverlay.h"
#include "platform/UserDefaults.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "views/SessionView.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace tapalong::testing {

/// The whole application on a simulated desktop, launched: what a process is in reality. Its end and a new one with
/// the same stored settings are a restart.
class SimulatedApplication {
public:
    using Stored = std::map<std::string, DefaultsValue, std::less<>>;

    /// Starts the palette anew, as a new process does.
    explicit SimulatedApplication(Stored settings, std::uint64_t seed = 1);
    SimulatedApplication(const SimulatedApplication&) = delete;
    SimulatedApplication& operator=(const SimulatedApplication&) = delete;
    ~SimulatedApplication() = default;

    /// Sends an event to whoever has the keyboard and lets all that follows at this instant happen.
    simulated::SimulatedInput::Receiver send(const InputEvent& event);
    /// Puts the pointer there and tells those who watch its movements.
    simulated::SimulatedInput::Receiver movePointer(Point to, EventType type = EventType::mouseMoved);

    [[nodiscard]] SessionManager& manager() const { return m_app.sessionManager(); }
    [[nodiscard]] SessionSettings& settings() { return m_app.settings(); }
    [[nodiscard]] SettingsView& settingsView() const { return *m_app.settingsView(); }
    [[nodiscard]] AppDelegate& delegate() const { return m_app.appDelegate(); }
    /// The content of the session window on screen; null when there is none.
    [[nodiscard]] std::shared_ptr<SessionView> sessionView() const;
    /// The exit overlay on screen; null when there is none.
    [[nodiscard]] std::shared_ptr<ExitOverlay> overlay() const;

    simulated::SimulatedPlatform platform;

private:
    /// What the session window does with a key that nobody took: the focused password field gets it.
    void handleInWindow(const InputEvent& event);

    TapalongApp m_app;
};

/// Return, or the keypad's Enter: what submits a field.
[[nodiscard]] bool submitsField(const InputEvent& event);
/// What a text field holds after a key press: plain text is appended, chords and keys that type nothing change nothing.
[[nodiscard]] std::string fieldAfter(std::string field, const InputEvent& event);

} // namespace tapalong::testing
