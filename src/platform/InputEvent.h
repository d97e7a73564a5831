#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tapalong {

/// Kinds of input event. The numbers are kept because masks are built from them (bit 1 << type).
enum class EventType : std::uint32_t {
    leftMouseDown = 1,
    leftMouseUp = 2,
    rightMouseDown = 3,
    rightMouseUp = 4,
    mouseMoved = 5,
    leftMouseDragged = 6,
    keyDown = 10,
    keyUp = 11,
    flagsChanged = 12,  ///< a modifier key went down or up
    systemDefined = 14, ///< media and other special keys: volume, brightness, play
    rotate = 18,
    scrollWheel = 22,
    otherMouseDown = 25, ///< any button but left and right
    otherMouseUp = 26,
    gesture = 29,
    magnify = 30,
    swipe = 31,
    tapDisabledByTimeout = 0xFFFFFFFE,
    tapDisabledByUserInput = 0xFFFFFFFF,
};

using EventMask = std::uint64_t;

/// The bit of `type` in a mask; meant for types below 64.
constexpr EventMask maskOf(EventType type) {
    return EventMask{1} << static_cast<std::uint32_t>(type);
}

using ModifierFlags = std::uint64_t;

/// Modifier bits. The values are kept as they are because settings files hold them.
namespace Modifier {
inline constexpr ModifierFlags capsLock = 0x10000;
inline constexpr ModifierFlags shift = 0x20000;
inline constexpr ModifierFlags control = 0x40000;
inline constexpr ModifierFlags option = 0x80000;      ///< Alt on a PC keyboard
inline constexpr ModifierFlags command = 0x100000;    ///< Super on a PC keyboard
inline constexpr ModifierFlags numericPad = 0x200000; ///< set by the keypad's and the arrow keys themselves
inline constexpr ModifierFlags help = 0x400000;
inline constexpr ModifierFlags function = 0x800000; ///< set by function, arrow and navigation keys themselves
inline constexpr ModifierFlags deviceIndependentMask = 0xFFFF0000;
} // namespace Modifier

/// One input event, as a value. For key events `keyCode` is a virtual key code, which names a place on the keyboard
/// and not what is printed there; `modifierFlags` are those in force after the event.
struct InputEvent {
    EventType type = EventType::keyDown;
    std::int64_t keyCode = 0;
    ModifierFlags modifierFlags = 0;
    /// The text that the key types with the active layout; none when it types nothing (a dead key, a bare modifier).
    /// UTF-8. May be empty as a function: then there is no text either.
    std::function<std::optional<std::string>()> characters{};

    [[nodiscard]] std::optional<std::string> text() const { return characters ? characters() : std::nullopt; }
};

/// What a monitor or a tap decides about an event.
enum class Verdict : std::uint8_t {
    pass,    ///< the event goes on, unchanged
    consume, ///< nobody after this one gets it
};

} // namespace tapalong
