#pragma once

#include "platform/KeyboardLocks.h"
#include "platform/linux/x11/X11Connection.h"

#include <memory>

namespace tapalong {

/// The locks as the X server reports them, whoever has the keyboard.
class X11KeyboardLocks final : public KeyboardLocks {
public:
    explicit X11KeyboardLocks(X11Connection& connection);

private:
    void observe(const xcb_generic_event_t& event);

    const std::uint8_t m_xkbEventBase;
    std::shared_ptr<X11Connection::Listener> m_listener;
};

} // namespace tapalong
