#pragma once

#include <xcb/xcb.h>

namespace tapalong {

/// Grabs every pair of pointer and keyboard but the one that programs go by, for as long as the connection lasts. A
/// pair that somebody adds has a focus and shortcuts of its own, which the grab of the first pair does not stop; what
/// it does is then for nobody. False when another program has such a device.
[[nodiscard]] bool grabOtherSeats(xcb_connection_t* xcb);

void releaseOtherSeats(xcb_connection_t* xcb);

} // namespace tapalong
