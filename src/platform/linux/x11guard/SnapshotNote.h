#pragma once

#include "platform/linux/x11/XcbHeaders.h"
#include "platform/linux/x11guard/Snapshot.h"

namespace tapalong {

/// Keeps the snapshot with the X server, which is what it is about: it is there for as long as it is needed, whoever is
/// killed. So it is written before the server is changed. See ServerKeysNote.h.
class SnapshotNote {
public:
    /// The connection outlives the note.
    explicit SnapshotNote(xcb_connection_t* xcb);

    /// Becomes the only guard of this server, as soon as another one has gone. That one has just been told to put
    /// everything back, or its program has died; it is waited for, but not for ever.
    void takeOver();

    /// What a guard wrote that was killed; a new snapshot when there is none.
    [[nodiscard]] Snapshot read() const;
    void write(const Snapshot& snapshot) const;
    void remove() const;
    /// False once another guard has taken over.
    [[nodiscard]] bool isOurs() const { return owner() == m_window; }

private:
    [[nodiscard]] xcb_window_t owner() const;

    xcb_connection_t* m_xcb;
    xcb_window_t m_root;
    xcb_window_t m_window = XCB_NONE; ///< that stands for us as the only guard
    xcb_atom_t m_name = XCB_NONE;
};

} // namespace tapalong
