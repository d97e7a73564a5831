#include "platform/linux/x11/X11KeyboardLocks.h"

namespace tapalong {

namespace {

bool hasCapsLock(std::uint8_t lockedMods) {
    return (lockedMods & XCB_MOD_MASK_LOCK) != 0;
}

} // namespace

X11KeyboardLocks::X11KeyboardLocks(X11Connection& connection)
    : m_xkbEventBase(connection.xkbEventBase()),
      m_listener(connection.listen([this](const auto& event) { observe(event); })) {
    if (!connection.isUsable()) {
        return;
    }
    auto* xcb = connection.xcb();
    const auto state = own(xcb_xkb_get_state_reply(xcb, xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    setCapsLockOn(state && hasCapsLock(state->lockedMods));
}

void X11KeyboardLocks::observe(const xcb_generic_event_t& event) {
    if (kindOf(event) != m_xkbEventBase) {
        return;
    }
    const auto& report = as<xcb_xkb_state_notify_event_t>(event);
    if (report.xkbType == XCB_XKB_STATE_NOTIFY) {
        setCapsLockOn(hasCapsLock(report.lockedMods));
    }
}

} // namespace tapalong
