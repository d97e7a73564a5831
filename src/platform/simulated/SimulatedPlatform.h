#pragma once

#include "platform/KeyboardLocks.h"
#include "platform/Platform.h"
#include "platform/simulated/EffectLog.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "platform/simulated/SimulatedInput.h"
#include "platform/simulated/SimulatedServices.h"
#include "platform/simulated/SimulatedTime.h"

#include <cstdint>

namespace tapalong::simulated {

/// A whole desktop without a desktop: time stands still until it is moved, input comes from a script, and every
/// effect is written down.
class SimulatedPlatform {
public:
    explicit SimulatedPlatform(std::uint64_t seed = 1);

    /// The services as the core takes them. `withApplication` false leaves the application object out.
    [[nodiscard]] Platform platform(bool withApplication = true);

    EffectLog effects;
    SimulatedTime time;
    SimulatedInput input;
    KeyboardLocks keyboardLocks;
    SimulatedDesktop desktop;
    SimulatedNotificationCenter notificationCenter;
    SimulatedBiometrics biometrics;
    SimulatedSounds sounds;
    SimulatedDefaults defaults;
    SimulatedRandom random;
    SimulatedOutput output;
    SimulatedNotices notices;
    SimulatedInputLimits inputLimits;

    /// The main screen becomes another one, gets another frame, or goes.
    void setMainScreen(std::optional<Rect> frame);

    /// Sends a key event to whoever has the keyboard, without letting posted work run.
    SimulatedInput::Receiver send(const InputEvent& event) { return input.deliver(event, desktop.active); }
};

/// A key-down (or another type of event) with the text that the key types.
[[nodiscard]] InputEvent keyEvent(std::int64_t keyCode, ModifierFlags flags = 0,
                                  std::optional<std::string> text = std::nullopt, EventType type = EventType::keyDown);

} // namespace tapalong::simulated
