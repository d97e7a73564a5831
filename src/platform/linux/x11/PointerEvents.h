#pragma once

#include "platform/InputEvent.h"
#include "platform/linux/x11/XcbHeaders.h"

#include <cstdint>
#include <optional>

namespace tapalong {

/// The input event of a mouse button by its X number; none for the release of a wheel step.
[[nodiscard]] std::optional<EventType> buttonEventType(std::uint32_t button, bool isPress);

/// The input event of a core or XInput 2 button or motion event; none for any other event. `keyboardFlags` are the
/// modifiers that it is to carry.
[[nodiscard]] std::optional<InputEvent> pointerEventOf(const xcb_generic_event_t& event, std::uint8_t xinputOpcode,
                                                       ModifierFlags keyboardFlags);

} // namespace tapalong
