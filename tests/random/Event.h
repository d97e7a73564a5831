#pragma once

#include "platform/Geometry.h"
#include "platform/InputEvent.h"
#include "platform/UserDefaults.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace tapalong::testing {

/// What a key types when no rule keeps it from it.
struct KeyPress {
    enum class Meaning : std::uint8_t {
        text,       ///< `character`, nothing where that is empty
        navigation, ///< the same, but nothing at all where system keys are suppressed
        fixed,      ///< `character`, whatever the key's text is
        space,
        enter,
        tab,
        deleteLast,
        celestial,
    };

    std::int64_t code = 0;
    std::optional<std::string> text{};
    Meaning meaning = Meaning::text;
    std::string character{};
};

/// One thing that happens to the application. Which fields count depends on the kind.
struct Event {
    enum class Kind : std::uint8_t {
        advance,         ///< `seconds`
        key,             ///< `press` with `flags`; `type` keyDown or keyUp
        modifiers,       ///< `flags` after the change
        otherInput,      ///< `type`
        pointer,         ///< `point`
        start,           ///< the start button
        otherInFront,    ///< another application takes the keyboard
        setting,         ///< `text` is the key, `value` the value
        badge,           ///< a click on the badge of the shortcut
        tapsAvailable,   ///< `on`
        disableTap,      ///< `type` is the notification
        permission,      ///< `on`
        askPermission,   ///< the button of the settings window
        appearance,      ///< `on` for dark
        screen,          ///< `on`: there is one
        reader,          ///< `on`: there is one
        finger,          ///< the oldest request is answered: success with `on`, else cancelled or failed by `choice`
        closeSettings,   ///< without a session also the end of the process, and a new one
        overlayPassword, ///< `text` in the field
        overlayReturn,
        overlayCancel,
        overlayField, ///< a click into the field, which also brings us to the front
        overlayTouchID,
        secureInput, ///< `on`
    };

    Kind kind = Kind::advance;
    double seconds = 0; ///< a multiple of 1/16, so that sums of them are exact
    KeyPress press{};
    ModifierFlags flags = 0;
    EventType type = EventType::keyDown;
    Point point{};
    bool on = false;
    int choice = 0;
    std::string text{};
    DefaultsValue value{};
    /// What the random source answers while this event is handled.
    std::array<std::uint64_t, 10> draws{};
};

inline constexpr std::size_t eventKinds = static_cast<std::size_t>(Event::Kind::secureInput) + 1;

/// One line for a report.
[[nodiscard]] std::string describe(const Event& event);

} // namespace tapalong::testing
