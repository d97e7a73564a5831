#pragma once

#include "platform/linux/x11guard/Snapshot.h"
#include "platform/linux/x11guard/SnapshotNote.h"

#include <xcb/xcb.h>

namespace tapalong {

/// Takes out of a keyboard's keymap what the server does by itself when a key is pressed: switch the virtual terminal,
/// end itself, break grabs, switch accessibility features. What makes letters (modifiers, locks, layouts) stays, and so
/// does every symbol.
///
/// In place of each such action stands one that does nothing, with the number of the original in its unused bytes. So
/// the keymap itself tells what to put back, also where the server has copied it to another device, and a keymap that
/// somebody has replaced meanwhile is left alone.
///
/// The originals are noted before the keymap is changed. False when the server refuses, as it does for a device that
/// has just left.
[[nodiscard]] bool takeOutServerActions(xcb_connection_t* xcb, std::uint16_t device, Snapshot& snapshot,
                                        const SnapshotNote& note);

void putBackServerActions(xcb_connection_t* xcb, std::uint16_t device, const Snapshot& snapshot);

} // namespace tapalong
