#pragma once

#include <xcb/xcb.h>

#include <iosfwd>

namespace tapalong::test {

/// Writes the state of the server and of its desktop, one "name: value" per line and each name once: what a program could change and
/// leave behind. The keymap is not here: xkbcomp writes it better.
void writeServerState(xcb_connection_t* xcb, xcb_window_t root, std::ostream& out);

} // namespace tapalong::test
