#pragma once

#include "platform/InputEvent.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tapalong::testing {

/// A key of the scripts' keyboard, an English one.
struct Key {
    std::int64_t code = 0;
    std::optional<std::string> text{}; ///< without modifiers
    ModifierFlags ownFlags = 0;        ///< what the key's events carry by themselves
};

/// By name ("A", "Return", "F4") or virtual key code ("300"); none for an unknown name.
[[nodiscard]] std::optional<Key> keyNamed(std::string_view name);
/// The key that types a character, or one without a place of its own for those that this keyboard lacks.
[[nodiscard]] Key keyFor(std::string_view character);
/// The text of a key with modifiers held: capitals with Shift or Caps Lock, control characters with Control.
[[nodiscard]] std::optional<std::string> textWith(const Key& key, ModifierFlags modifiers);

[[nodiscard]] std::optional<ModifierFlags> modifierNamed(std::string_view name);
[[nodiscard]] std::optional<EventType> eventNamed(std::string_view name);

} // namespace tapalong::testing
