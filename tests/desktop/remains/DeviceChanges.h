#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace tapalong::test {

// What a program could change about one device and leave behind. A device's number is the server's.

void setDeviceFocus(xcb_connection_t* xcb, std::uint16_t device, xcb_window_t window);
void setLockedModifiers(xcb_connection_t* xcb, std::uint16_t device, std::uint8_t modifiers);
/// They go again with the next key that the device types.
void setLatchedModifiers(xcb_connection_t* xcb, std::uint16_t device, std::uint8_t modifiers);
/// What the second button of a mouse stands for; 0 for nothing.
void setMiddleButton(xcb_connection_t* xcb, std::uint16_t device, std::uint8_t meaning);

enum class HotKeys : std::uint8_t { off, on };

/// Those of the accessibility features: five Shifts and the like. Most desktops have them on.
void setHotKeys(xcb_connection_t* xcb, std::uint16_t device, HotKeys which);

} // namespace tapalong::test
