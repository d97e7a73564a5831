#pragma once

#include <xcb/xcb.h>

#include <iosfwd>
#include <string>

namespace tapalong::test {

/// Writes the state of the server and of its desktop, one "name: value" per line and each name once: what a program could change and
/// leave behind. The keymap is not here: xkbcomp writes it better.
void writeServerState(xcb_connection_t* xcb, xcb_window_t root, std::ostream& out);

/// What the guard of the server's keys writes on the root window before it changes anything, and removes at its end.
inline constexpr const char* guardsNote = "_TAPALONG_SERVER_KEYS";

[[nodiscard]] bool hasProperty(xcb_connection_t* xcb, xcb_window_t window, const std::string& name);

} // namespace tapalong::test
