#pragma once

#include "app/TapalongApp.h"
#include "session/RainbowColors.h"
#include "settings/SettingsFixture.test.h"
#include "views/SessionView.h"

#include <memory>
#include <string>

namespace tapalong {

/// The whole application, launched on a simulated desktop, with a password set and its settings window open.
struct ApplicationFixture : testing::Test {
    using Receiver = simulated::SimulatedInput::Receiver;

    simulated::SimulatedPlatform world;
    TapalongApp app{world.platform()};
    SessionSettings& settings = app.settings();
    SessionManager& manager = app.sessionManager();
    AppDelegate& delegate = app.appDelegate();

    ApplicationFixture() {
        RainbowColors::reset();
        settings.exitPassword.set("open sesame");
        settings.useTouchID.set(false);
        delegate.applicationDidFinishLaunching();
        world.desktop.openScene(app.body());
        world.time.drain();
        world.effects.clear();
    }

    Receiver press(std::int64_t keyCode, ModifierFlags flags = 0, std::optional<std::string> text = std::nullopt) {
        const auto receiver = world.send(simulated::keyEvent(keyCode, flags, std::move(text)));
        world.time.drain();
        return receiver;
    }
    Receiver type(const std::string& text) { return press(0, 0, text); }
    Receiver pressQuickStart(ModifierFlags more = 0) {
        return press(17, Modifier::control | Modifier::option | Modifier::command | more, "t");
    }
    /// Puts the pointer into the exit corner for as long as it takes, and then back.
    void holdCorner() {
        world.desktop.mouse = {1919, 1080};
        world.time.advance(2);
        world.desktop.mouse = {960, 540};
        world.time.advance(0.5);
    }
    /// The view in the shown session window; null outside of a session.
    [[nodiscard]] std::shared_ptr<SessionView> sessionView() const {
        const auto window = world.desktop.shownWindow();
        return window ? std::dynamic_pointer_cast<SessionView>(window->contentView()) : nullptr;
    }
    void unlock(const std::string& password) {
        const auto overlay = sessionView()->exitOverlay();
        overlay->setPassword(password);
        overlay->attemptPassword();
    }
};

} // namespace tapalong
