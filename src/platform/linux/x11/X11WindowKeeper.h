#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <QElapsedTimer>
#include <QTimer>

#include <memory>

class QWindow;

namespace tapalong {

/// Keeps an unmanaged window above all others for as long as the keeper lives: raises it when something covers it and
/// when a top-level window appears or is restacked, since window managers do not tell of the windows that they leave
/// alone. One keeper at a time per connection.
class X11WindowKeeper {
public:
    /// `window` has its platform window already and outlives the keeper.
    X11WindowKeeper(X11Connection& connection, const QWindow& window);
    ~X11WindowKeeper();
    X11WindowKeeper(const X11WindowKeeper&) = delete;
    X11WindowKeeper& operator=(const X11WindowKeeper&) = delete;

private:
    [[nodiscard]] bool mayBeCovered(const xcb_generic_event_t& event) const;
    void handle(const xcb_generic_event_t& event);
    void raise();

    X11Connection& m_connection;
    xcb_window_t m_window;
    std::shared_ptr<X11Connection::Listener> m_listener;
    QElapsedTimer m_sinceRaise;
    QTimer m_delayedRaise;
};

} // namespace tapalong
