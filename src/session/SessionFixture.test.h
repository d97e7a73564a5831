#pragma once

#include "lockdown/KioskManager.h"
#include "session/RainbowColors.h"
#include "session/RecordingDelegate.test.h"
#include "session/SessionManager.h"
#include "settings/SettingsFixture.test.h"
#include "sound/SoundEngine.h"

#include <memory>

namespace tapalong {

/// A session manager whose keys come through the local monitor of a session without Lockdown Mode.
struct SessionFixture : SettingsFixture {
    RecordingDelegate delegate{world.effects};
    std::shared_ptr<SessionManager> manager = std::make_shared<SessionManager>(settings, platform);

    SessionFixture() { RainbowColors::reset(); }

    void press(std::int64_t keyCode, std::optional<std::string> text = std::nullopt) {
        world.send(simulated::keyEvent(keyCode, 0, std::move(text)));
        world.time.drain();
    }
    /// A letter key that types nothing.
    void pressSuppressed() { press(0); }
    void pressShift() {
        world.send(simulated::keyEvent(56, Modifier::shift, std::nullopt, EventType::flagsChanged));
        world.time.drain();
    }
    void type(std::size_t times, const std::string& text = "a") {
        for (std::size_t i = 0; i < times; ++i) {
            press(0, text);
        }
    }
    [[nodiscard]] std::string typed() const {
        std::string text;
        for (const auto& each : manager->typedContent()) {
            text += each.character.utf8();
        }
        return text;
    }
    [[nodiscard]] std::size_t count() const { return manager->typedContent().size(); }
};

} // namespace tapalong
