#pragma once

#include "text/Character.h"

#include <cstdint>
#include <optional>
#include <utility>

namespace tapalong {

/// What a key press means to a session.
struct KeyEvent {
    enum class Kind : std::uint8_t {
        printable, ///< append `character`
        space,
        enter,
        deleteLast, ///< remove the last character; held down, it wipes the screen
        tab,
        emoji,     ///< append a random emoji of the pool
        celestial, ///< append a random emoji of the sky
        suppressed,
    };

    KeyEvent(Kind plainKind) : kind(plainKind) {} // NOLINT(google-explicit-constructor): reads as the kind it is

    [[nodiscard]] static KeyEvent printable(Character character) {
        KeyEvent event(Kind::printable);
        event.character = std::move(character);
        return event;
    }

    Kind kind;
    std::optional<Character> character; ///< present for `printable` and for nothing else
};

} // namespace tapalong
