#pragma once

#include "platform/linux/x11/XcbHeaders.h"

#include <string>

namespace tapalong {

/// As the window manager that runs now calls itself; empty where none runs or it has no name.
[[nodiscard]] std::string windowManagerName(xcb_connection_t* xcb, xcb_window_t root);

} // namespace tapalong
