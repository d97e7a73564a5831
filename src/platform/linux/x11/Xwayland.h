#pragma once

#include "platform/linux/x11/XcbHeaders.h"

namespace tapalong {

/// Whether this X server is a window of a Wayland desktop. Any grab is granted there, and holds against other X clients
/// only: the compositor hands on what it has left over, and keeps its own shortcuts.
[[nodiscard]] bool isXwayland(xcb_connection_t* xcb);

} // namespace tapalong
