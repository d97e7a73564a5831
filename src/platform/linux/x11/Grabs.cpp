#include "platform/linux/x11/Grabs.h"

#include "platform/linux/x11/QtConnection.h"

namespace tapalong {

namespace {

// Whoever acts on the end of a session finds the keyboard free, not about to become so.
void waitFor(xcb_connection_t* xcb, xcb_void_cookie_t request) {
    (void)own(xcb_request_check(xcb, request));
}

} // namespace

bool KeyboardGrab::take() {
    if (!m_connection.isUsable()) {
        m_isHeld = false;
        return false;
    }
    auto* xcb = m_connection.xcb();
    const auto request =
        xcb_grab_keyboard(xcb, 0, m_connection.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const auto reply = own(xcb_grab_keyboard_reply(xcb, request, nullptr));
    m_isHeld = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    m_sequence = request.sequence;
    return m_isHeld;
}

void KeyboardGrab::release() {
    if (m_isHeld && m_connection.isUsable()) {
        waitFor(m_connection.xcb(), xcb_ungrab_keyboard_checked(m_connection.xcb(), XCB_CURRENT_TIME));
    }
    m_isHeld = false;
}

bool KeyboardGrab::isLostBy(const xcb_generic_event_t& event) {
    if (!m_isHeld || kindOf(event) != XCB_FOCUS_OUT ||
        as<xcb_focus_out_event_t>(event).mode != XCB_NOTIFY_MODE_UNGRAB ||
        static_cast<std::int32_t>(event.full_sequence - m_sequence) < 0) {
        return false;
    }
    m_isHeld = false;
    return true;
}

bool PointerGrab::take() {
    auto* xcb = qtConnection();
    if (xcb == nullptr) {
        return false;
    }
    // Of the kind that Qt selects its events with: a button held down over one of its windows, an implicit grab of
    // that kind, would refuse a core grab.
    const auto pointer =
        own(xcb_input_xi_get_client_pointer_reply(xcb, xcb_input_xi_get_client_pointer(xcb, XCB_NONE), nullptr));
    if (!pointer || pointer->set == 0) {
        return false;
    }
    m_device = pointer->deviceid;
    constexpr std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE;
    const auto request = xcb_input_xi_grab_device(xcb, m_root, XCB_CURRENT_TIME, XCB_NONE, m_device,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, 1, 1, &events);
    const auto reply = own(xcb_input_xi_grab_device_reply(xcb, request, nullptr));
    m_isHeld = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    return m_isHeld;
}

void PointerGrab::release() {
    auto* xcb = qtConnection();
    if (m_isHeld && xcb != nullptr) {
        waitFor(xcb, xcb_input_xi_ungrab_device_checked(xcb, XCB_CURRENT_TIME, m_device));
    }
    m_isHeld = false;
}

} // namespace tapalong
