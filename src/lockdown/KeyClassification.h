#pragma once

#include "lockdown/KeyEvent.h"
#include "platform/InputEvent.h"

#include <cstdint>

namespace tapalong {

class SessionSettings;

/// What a key press seen by the event tap means. Reads the event's text only for keys that have no meaning of
/// their own.
[[nodiscard]] KeyEvent classifyKeyEvent(std::int64_t keyCode, ModifierFlags flags, const InputEvent& event);

/// The same for the local monitor. While Lockdown Mode is off (asked at each call) chords and the keys of the
/// navigation block count as ordinary keys.
[[nodiscard]] KeyEvent classifyNSEvent(std::int64_t keyCode, ModifierFlags flags, const InputEvent& event,
                                       const SessionSettings& settings);

} // namespace tapalong
