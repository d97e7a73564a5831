#pragma once

#include "platform/linux/x11/XcbHeaders.h"

namespace tapalong {

/// Qt's own connection to the X server; null when Qt runs on another display system.
[[nodiscard]] xcb_connection_t* qtConnection();

/// Whether a window of ours has the keyboard's focus now, by the server: Qt learns of changes a little later, and in no
/// fixed order with what arrives on `ownConnection`.
[[nodiscard]] bool isFocusOurs(xcb_connection_t* ownConnection);

} // namespace tapalong
