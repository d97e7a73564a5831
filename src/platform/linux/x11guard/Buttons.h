#pragma once

#include "platform/linux/x11guard/Snapshot.h"
#include "platform/linux/x11guard/SnapshotNote.h"

#include <xcb/xcb.h>

#include <cstdint>

namespace tapalong {

/// Takes their meaning from all buttons of a device but those for a left and a right click, the wheel included: what
/// others have bound to them on this very device, a grab of the pointer does not stop.
///
/// What they stood for is noted before it is changed. False when the server refuses: while such a button is down, and
/// for a device that has just left.
[[nodiscard]] bool silenceButtons(xcb_connection_t* xcb, std::uint16_t device, Snapshot& snapshot,
                                  const SnapshotNote& note);

/// Leaves alone what somebody has changed meanwhile. False as above.
[[nodiscard]] bool putBackButtons(xcb_connection_t* xcb, std::uint16_t device, const Snapshot& snapshot);

/// The server tells of changes to what the device's buttons stand for.
void watchButtons(xcb_connection_t* xcb, std::uint16_t device);
[[nodiscard]] bool tellsOfButtons(xcb_connection_t* xcb, const xcb_generic_event_t& event);

} // namespace tapalong
