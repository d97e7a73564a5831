#pragma once

#include "platform/linux/x11guard/Devices.h"
#include "platform/linux/x11guard/Snapshot.h"
#include "platform/linux/x11guard/SnapshotNote.h"

#include <memory>
#include <optional>

namespace tapalong {

/// Keeps keyboards and pointers from reaching past a grab: what the server itself does on keys, and what others have
/// bound to a single device. Closed are, on every device, also on those that are plugged in later or get another
/// keymap:
///
/// - the server's own actions in the keymap (see KeyActions.h);
/// - the accessibility features' hot keys, such as Shift five times;
/// - bindings to a device's keys: a device whose own focus is nowhere has none, while its master, whose events
///   everybody else goes by, types on as ever. Grabbing the devices would close them too, but takes each of them away
///   from its master, with all keys that are down at that moment;
/// - bindings to a device's buttons (see Buttons.h), which ask for no focus.
class ServerKeysGuard {
public:
    /// On the display that the environment names. Goes on from what a guard that was killed has left.
    ServerKeysGuard();

    /// False when there is no such server, it lacks XKB or XInput 2, or it is gone.
    [[nodiscard]] bool isConnected() const;
    [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(xcb()); }

    /// To be called again when devices changed. False when the server refused a part.
    [[nodiscard]] bool close();
    /// Puts everything back that was there at the first close(), also keys that were locked since. Last. A button that
    /// is down gets its meaning back when it comes up: that is waited for. Leaves everything to another guard that has
    /// taken over.
    void reopen();

    /// Takes in what the server has told; true when that calls for another close().
    [[nodiscard]] bool hasNews();

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb.get(); }
    [[nodiscard]] bool setUp();
    void watchKeyboard(std::uint16_t device);
    [[nodiscard]] bool saveKeyboard(const Device& keyboard);
    [[nodiscard]] bool closeDevice(const Device& device);
    [[nodiscard]] bool closeKeyboard(const Device& keyboard, SavedKeyboard& saved);
    void reopenKeyboard(const Device& keyboard, const SavedKeyboard& saved);
    [[nodiscard]] bool reopenButtons();
    [[nodiscard]] bool isNews(const xcb_generic_event_t& event);

    std::unique_ptr<xcb_connection_t, Disconnect> m_xcb;
    std::optional<SnapshotNote> m_note;
    Snapshot m_snapshot;
    std::uint8_t m_xkbEventBase = 0;
    std::uint8_t m_xinputOpcode = 0;
    bool m_isSetUp = false;
};

} // namespace tapalong
