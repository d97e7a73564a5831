#pragma once

#include "lockdown/KeyEvents.test.h"
#include "lockdown/KioskManager.h"
#include "lockdown/Notifications.h"
#include "settings/SettingsFixture.test.h"

#include <memory>

namespace tapalong {

/// A lockdown whose key events are collected in words.
struct KioskFixture : SettingsFixture {
    using Receiver = simulated::SimulatedInput::Receiver;

    std::shared_ptr<KioskManager> kiosk = std::make_shared<KioskManager>(settings, platform);
    std::vector<std::string> handled;

    void activate() {
        kiosk->activate([this](const KeyEvent& event) { handled.push_back(describe(event)); });
    }
    void activateLocked() {
        settings.kioskMode.set(true);
        activate();
    }
    Receiver press(std::int64_t keyCode, ModifierFlags flags = 0, std::optional<std::string> text = std::nullopt) {
        const auto receiver = world.send(simulated::keyEvent(keyCode, flags, std::move(text)));
        world.time.drain();
        return receiver;
    }
    /// A modifier key moved; `flags` are what is down afterwards.
    Receiver modifiers(ModifierFlags flags) { return send(EventType::flagsChanged, flags); }
    Receiver send(EventType type, ModifierFlags flags = 0) {
        const auto receiver = world.send(simulated::keyEvent(0, flags, std::nullopt, type));
        world.time.drain();
        return receiver;
    }
    void showOverlay() { world.notificationCenter.post(showExitOverlayNotification); }
    void hideOverlay() { world.notificationCenter.post(hideExitOverlayNotification); }
};

} // namespace tapalong
