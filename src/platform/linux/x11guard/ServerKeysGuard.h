#pragma once

#include "platform/linux/x11guard/Keyboards.h"
#include "platform/linux/x11guard/Snapshot.h"
#include "platform/linux/x11guard/SnapshotNote.h"

#include <memory>
#include <optional>

namespace tapalong {

/// Keeps a keyboard from reaching past a grab: what the server itself does on keys, and what others have bound to a
/// single device. Closed are, on every keyboard, also on those that are plugged in later or get another keymap:
///
/// - the server's own actions in the keymap (see KeyActions.h);
/// - the accessibility features' hot keys, such as Shift five times;
/// - bindings to a device's keys: a device whose own focus is nowhere has none, while its master, whose events
///   everybody else goes by, types on as ever. Grabbing the devices would close them too, but takes each of them away
///   from its master, with all keys that are down at that moment.
class ServerKeysGuard {
public:
    /// On the display that the environment names. Goes on from what a guard that was killed has left.
    ServerKeysGuard();

    /// False when there is no such server, it lacks XKB or XInput 2, or it is gone.
    [[nodiscard]] bool isConnected() const;
    [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(xcb()); }

    /// To be called again when keyboards changed. False when the server refused a part.
    [[nodiscard]] bool close();
    /// Puts everything back that was there at the first close(), also keys that were locked since. Last.
    void reopen();

    /// Takes in what the server has told; true when that calls for another close().
    [[nodiscard]] bool hasNews();

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb.get(); }
    [[nodiscard]] bool setUp();
    void watchDevice(std::uint16_t device);
    [[nodiscard]] bool save(std::uint16_t device);
    [[nodiscard]] bool closeDevice(const Keyboard& keyboard, SavedDevice& saved);
    void reopenDevice(const Keyboard& keyboard, const SavedDevice& saved);
    [[nodiscard]] bool isNews(const xcb_generic_event_t& event);

    std::unique_ptr<xcb_connection_t, Disconnect> m_xcb;
    std::optional<SnapshotNote> m_note;
    Snapshot m_snapshot;
    std::uint8_t m_xkbEventBase = 0;
    std::uint8_t m_xinputOpcode = 0;
    bool m_isSetUp = false;
};

} // namespace tapalong
