#include "desktop/siege/client/PlainWindow.h"

#include <array>
#include <chrono>
#include <thread>

namespace tapalong::siege {

namespace {

using namespace std::chrono_literals;

constexpr xcb_keycode_t escapeKey = 9;
constexpr int attempts = 400;
constexpr auto betweenAttempts = 10ms;
constexpr int attemptsBetweenRequests = 20;

} // namespace

PlainWindow::PlainWindow() {
    open();
}

void PlainWindow::open() {
    const auto& screen = m_server.screen();
    m_window = xcb_generate_id(m_server.xcb());
    constexpr std::uint32_t mask = XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK;
    const std::array values{screen.black_pixel,
                            static_cast<std::uint32_t>(XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                                       XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                                       XCB_EVENT_MASK_STRUCTURE_NOTIFY)};
    xcb_create_window(m_server.xcb(), XCB_COPY_FROM_PARENT, m_window, screen.root, 0, 0, screen.width_in_pixels,
                      screen.height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, mask,
                      values.data());
    m_server.setProperty(m_window, m_server.atom("_NET_WM_STATE"), XCB_ATOM_ATOM,
                         {m_server.atom("_NET_WM_STATE_FULLSCREEN")});
    // A window that cannot be asked to close is closed by cutting its client's connection.
    m_server.setProperty(m_window, m_server.atom("WM_PROTOCOLS"), XCB_ATOM_ATOM, {m_server.atom("WM_DELETE_WINDOW")});
    xcb_map_window(m_server.xcb(), m_window);
    m_server.sync();
    m_isOpen = true;
}

void PlainWindow::takeIn() {
    m_server.sync();
    while (const auto event = m_server.poll()) {
        if (kindOf(*event) == XCB_CLIENT_MESSAGE && m_isOpen) {
            xcb_destroy_window(m_server.xcb(), m_window);
            m_isOpen = false;
        } else if (kindOf(*event) == XCB_DESTROY_NOTIFY && as<xcb_destroy_notify_event_t>(*event).window == m_window) {
            m_isOpen = false;
        }
    }
}

bool PlainWindow::keyboardIsFree() const {
    const auto request = xcb_grab_keyboard(m_server.xcb(), 0, m_server.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                           XCB_GRAB_MODE_ASYNC);
    const auto reply = own(xcb_grab_keyboard_reply(m_server.xcb(), request, nullptr));
    xcb_ungrab_keyboard(m_server.xcb(), XCB_CURRENT_TIME);
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

bool PlainWindow::isInFront() const {
    const auto geometry =
        own(xcb_get_geometry_reply(m_server.xcb(), xcb_get_geometry(m_server.xcb(), m_window), nullptr));
    return geometry && geometry->width == m_server.screen().width_in_pixels &&
           geometry->height == m_server.screen().height_in_pixels && m_server.focus() == m_window;
}

bool PlainWindow::restore(Hands& hands) {
    for (int i = 0; i < attempts; ++i) {
        hands.rest();
        takeIn();
        if (!keyboardIsFree()) {
            hands.tap(escapeKey);
        } else if (!m_isOpen) {
            open();
        } else if (isInFront()) {
            return true;
        } else if (i % attemptsBetweenRequests == 0) {
            constexpr std::uint32_t fromPager = 2;
            constexpr std::uint32_t add = 1;
            m_server.request(m_server.root(), "_NET_CURRENT_DESKTOP", {0, 0});
            m_server.request(m_server.root(), "_NET_SHOWING_DESKTOP", {0});
            m_server.request(m_window, "_NET_ACTIVE_WINDOW", {fromPager, XCB_CURRENT_TIME, 0});
            m_server.request(m_window, "_NET_WM_STATE", {add, m_server.atom("_NET_WM_STATE_FULLSCREEN"), 0, fromPager});
        }
        std::this_thread::sleep_for(betweenAttempts);
    }
    return false;
}

} // namespace tapalong::siege
