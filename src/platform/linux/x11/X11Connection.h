#pragma once

#include "platform/linux/x11/XcbHeaders.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tapalong {

/// A connection of our own to the X server that Qt is on, read by the main loop. What we hold of the keyboard is held
/// through it and ends with it, however the process ends; Qt's own connection stays as Qt expects it.
///
/// Keys repeat on it as presses without releases, and it gets every change of the keyboard's state and keymap.
/// To be created after and destroyed before the QGuiApplication.
class X11Connection {
public:
    using Listener = std::function<void(const xcb_generic_event_t&)>;

    X11Connection();
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    /// False when the server gave no connection, lacks XKB or XInput 2.2, or when the connection broke since. All else
    /// here is then without effect.
    [[nodiscard]] bool isUsable() const;

    [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb.get(); }
    [[nodiscard]] xcb_window_t root() const { return m_root; }
    [[nodiscard]] std::uint8_t xkbEventBase() const { return m_xkbEventBase; }
    [[nodiscard]] std::uint8_t xinputOpcode() const { return m_xinputOpcode; }

    /// `listener` gets every event for as long as the result lives.
    [[nodiscard]] std::shared_ptr<Listener> listen(Listener listener);

    /// `lost` runs once, when the connection breaks. The program then leaves the main loop, and has failed.
    void whenLost(std::function<void()> lost) { m_whenLost = std::move(lost); }

    /// Core events wanted of the root window besides focus changes, which always arrive.
    void selectOnRoot(std::uint32_t eventMask);

    /// Hands out what has arrived. The main loop does this by itself.
    void dispatchPending();

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] bool setUpXkb();
    [[nodiscard]] bool setUpXinput();
    void watch();
    void dispatch(const xcb_generic_event_t& event);

    std::unique_ptr<xcb_connection_t, Disconnect> m_xcb;
    xcb_window_t m_root = XCB_NONE;
    std::uint8_t m_xkbEventBase = 0;
    std::uint8_t m_xinputOpcode = 0;
    bool m_complete = false;
    std::vector<std::weak_ptr<Listener>> m_listeners;
    std::function<void()> m_whenLost;
    std::optional<QSocketNotifier> m_notifier;
    QObject m_beforeSleep;
    QTimer m_leave;
};

} // namespace tapalong
