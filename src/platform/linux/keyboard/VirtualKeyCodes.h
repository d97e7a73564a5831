#pragma once

#include "platform/InputEvent.h"

#include <cstdint>
#include <optional>

namespace tapalong {

/// What a key is by its place on the keyboard; decides the bits that its events carry by themselves.
enum class KeyKind : std::uint8_t {
    ordinary,
    modifier,   ///< reported as flagsChanged
    function,   ///< F1 to F20 and the navigation block
    numericPad, ///< the keypad
    arrow,      ///< counts as a function key and as a keypad key
};

struct VirtualKey {
    std::int64_t code = 0; ///< virtual key code
    KeyKind kind = KeyKind::ordinary;
};

/// X and XKB number keys as the kernel does and this more: X keeps the first eight numbers to itself.
inline constexpr std::uint32_t kernelOffset = 8;

/// The key at a kernel key code (an X or XKB key code less kernelOffset). None for media, brightness and other keys
/// that have no virtual key code; their events are systemDefined.
[[nodiscard]] std::optional<VirtualKey> virtualKeyOf(std::uint32_t kernelCode);

/// The modifier bits that events of such a key carry whatever modifiers are down.
[[nodiscard]] ModifierFlags ownFlagsOf(KeyKind kind);

} // namespace tapalong
