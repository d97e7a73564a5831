#pragma once

#include "platform/linux/x11/XcbHeaders.h"

#include <cstdint>
#include <optional>

namespace tapalong {

/// The parts of a keyboard's state that outlast its keys.
struct LockState {
    std::uint8_t lockedMods = 0;
    std::uint8_t latchedMods = 0;
    std::uint8_t lockedGroup = 0;
    std::int16_t latchedGroup = 0;

    [[nodiscard]] bool operator==(const LockState&) const = default;
};

// What a device that has just left is asked has no answer, and what is asked of it is refused.

[[nodiscard]] std::optional<LockState> lockState(xcb_connection_t* xcb, std::uint16_t device);
/// Touches only what differs.
void changeLockState(xcb_connection_t* xcb, std::uint16_t device, const LockState& from, const LockState& to);

/// Bits of xcb_xkb_bool_ctrl_t.
[[nodiscard]] std::optional<std::uint32_t> enabledControls(xcb_connection_t* xcb, std::uint16_t device);
/// Switches those of `which` on or off as `enabled` has them.
[[nodiscard]] bool setControls(xcb_connection_t* xcb, std::uint16_t device, std::uint32_t which, std::uint32_t enabled);

/// The server switches those of `which` on by itself when our connection ends, however it ends.
void switchOnWhenWeAreGone(xcb_connection_t* xcb, std::uint16_t device, std::uint32_t which);

/// The window that the device by itself types into; what is bound to its keys depends on it.
[[nodiscard]] std::optional<xcb_window_t> deviceFocus(xcb_connection_t* xcb, std::uint16_t device);
[[nodiscard]] bool setDeviceFocus(xcb_connection_t* xcb, std::uint16_t device, xcb_window_t window);

} // namespace tapalong
