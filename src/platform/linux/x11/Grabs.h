#pragma once

#include "platform/linux/x11/X11Connection.h"

namespace tapalong {

/// The active grab of the whole keyboard, on the root window: it can be had before any window of ours is up. Until it
/// is released, or our connection ends, keys go to our connection and to no window, passive grab or window manager.
/// What a grab takes cannot be given to another client afterwards.
class KeyboardGrab {
public:
    explicit KeyboardGrab(X11Connection& connection) : m_connection(connection) {}
    ~KeyboardGrab() { release(); }
    KeyboardGrab(const KeyboardGrab&) = delete;
    KeyboardGrab& operator=(const KeyboardGrab&) = delete;

    /// False when another client has the keyboard (an open menu, a window manager's switcher, a locker).
    [[nodiscard]] bool take();
    void release();
    [[nodiscard]] bool isHeld() const { return m_isHeld; }

    /// Has to see the connection's events. True when this one says that the server took the grab away.
    [[nodiscard]] bool isLostBy(const xcb_generic_event_t& event);

private:
    X11Connection& m_connection;
    std::uint32_t m_sequence = 0; ///< of the request that got the grab; older news is not about it
    bool m_isHeld = false;
};

/// The active grab of the pointer, through Qt's connection: Qt's windows go on getting their own pointer events, and
/// all others' arrive there too instead of where they would have gone.
class PointerGrab {
public:
    explicit PointerGrab(X11Connection& connection) : m_root(connection.root()) {}
    ~PointerGrab() { release(); }
    PointerGrab(const PointerGrab&) = delete;
    PointerGrab& operator=(const PointerGrab&) = delete;

    [[nodiscard]] bool take();
    void release();
    [[nodiscard]] bool isHeld() const { return m_isHeld; }

private:
    xcb_window_t m_root;
    xcb_input_device_id_t m_device = 0;
    bool m_isHeld = false;
};

} // namespace tapalong
