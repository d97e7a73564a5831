#pragma once

#include "platform/InputEvent.h"

#include <cstdint>
#include <string>

namespace tapalong {

/// The name of a key for the shortcut badge; "Key" and the decimal code for a key without one.
[[nodiscard]] std::string keyCodeToString(std::uint16_t keyCode);

/// ⌃⌥⇧⌘, in this order, for those of the four that are in `flags`.
[[nodiscard]] std::string modifiersToSymbols(ModifierFlags flags);

} // namespace tapalong
