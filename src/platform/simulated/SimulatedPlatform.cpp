#include "platform/simulated/SimulatedPlatform.h"

#include <utility>

namespace tapalong::simulated {

SimulatedPlatform::SimulatedPlatform(std::uint64_t seed)
    : time(effects), input(effects), desktop(effects), notificationCenter(effects), biometrics(effects),
      sounds(effects), defaults(effects), random(seed), output(effects) {}

Platform SimulatedPlatform::platform(bool withApplication) {
    return {.accessibility = desktop,
            .application = withApplication ? &desktop : nullptr,
            .biometrics = biometrics,
            .eventMonitors = input,
            .eventTaps = input,
            .inputLimits = inputLimits,
            .keyboardLocks = keyboardLocks,
            .mainQueue = time,
            .notificationCenter = notificationCenter,
            .notices = notices,
            .random = random,
            .screens = desktop,
            .standardOutput = output,
            .systemSounds = sounds,
            .timers = time,
            .userDefaults = defaults,
            .windows = desktop};
}

void SimulatedPlatform::setMainScreen(std::optional<Rect> frame) {
    desktop.mainScreen = frame;
    notificationCenter.post(screenParametersChangedNotification);
}

InputEvent keyEvent(std::int64_t keyCode, ModifierFlags flags, std::optional<std::string> text, EventType type) {
    return {.type = type, .keyCode = keyCode, .modifierFlags = flags, .characters = [text = std::move(text)] {
                return text;
            }};
}

} // namespace tapalong::simulated
