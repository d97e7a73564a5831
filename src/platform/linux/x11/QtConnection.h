#pragma once

#include "platform/linux/x11/XcbHeaders.h"

namespace tapalong {

/// Qt's own connection to the X server; null when Qt runs on another display system.
[[nodiscard]] xcb_connection_t* qtConnection();

/// Whether Qt's connection made the window: the server gives each connection its own range of numbers.
[[nodiscard]] bool isWindowOfQt(xcb_window_t window);

} // namespace tapalong
