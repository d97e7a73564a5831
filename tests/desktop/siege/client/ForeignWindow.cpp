#include "desktop/siege/client/ForeignWindow.h"

#include "base/Fatal.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tapalong::siege {

namespace {

constexpr std::uint16_t width = 900;
constexpr std::uint16_t height = 700;
constexpr std::uint16_t smallWidth = 300;
constexpr std::uint16_t smallHeight = 80;
constexpr std::uint16_t fromEdge = 20;
constexpr std::size_t lengthOfSizeHints = 18;

bool isUnmanaged(const std::string& kind) {
    return kind.starts_with("unmanaged");
}

} // namespace

ForeignWindow::ForeignWindow(const Server& server, std::string kind, std::uint32_t colour)
    : m_server(server), m_kind(std::move(kind)), m_colour(colour), m_window(xcb_generate_id(server.xcb())) {
    const auto& screen = server.screen();
    const auto [x, y, itsWidth, itsHeight] = frame();
    constexpr std::uint32_t mask = XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK;
    constexpr std::uint32_t input = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE;
    const std::array values{m_colour, static_cast<std::uint32_t>(isUnmanaged(m_kind) ? 1 : 0), input};
    xcb_create_window(server.xcb(), XCB_COPY_FROM_PARENT, m_window, screen.root, x, y, itsWidth, itsHeight, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, mask, values.data());
    describe();
    xcb_map_window(server.xcb(), m_window);
    server.sync();
}

ForeignWindow::~ForeignWindow() {
    xcb_destroy_window(m_server.xcb(), m_window);
    m_server.sync();
}

xcb_rectangle_t ForeignWindow::frame() const {
    const auto& screen = m_server.screen();
    if (isSmall() || m_kind == "full-screen") {
        const auto bottom = static_cast<std::int16_t>(screen.height_in_pixels - smallHeight - fromEdge);
        return {.x = fromEdge, .y = bottom, .width = smallWidth, .height = smallHeight};
    }
    if (m_kind == "desktop") {
        return {.x = 0, .y = 0, .width = screen.width_in_pixels, .height = screen.height_in_pixels};
    }
    if (m_kind == "dock") {
        return {.x = 0, .y = 0, .width = screen.width_in_pixels, .height = height};
    }
    return {.x = static_cast<std::int16_t>((screen.width_in_pixels - width) / 2),
            .y = static_cast<std::int16_t>((screen.height_in_pixels - height) / 2),
            .width = width,
            .height = height};
}

bool ForeignWindow::isSmall() const {
    return m_kind.ends_with("in a corner");
}

ForeignWindow::Point ForeignWindow::spot() const {
    if (!isSmall()) {
        const auto& screen = m_server.screen();
        return {.x = static_cast<std::int16_t>(screen.width_in_pixels / 2),
                .y = static_cast<std::int16_t>(screen.height_in_pixels / 2)};
    }
    // The window manager may have put it into another corner.
    const auto request =
        xcb_translate_coordinates(m_server.xcb(), m_window, m_server.root(), smallWidth / 2, smallHeight / 2);
    const auto place = own(xcb_translate_coordinates_reply(m_server.xcb(), request, nullptr));
    verify(place != nullptr, "the window is there");
    return {.x = place->dst_x, .y = place->dst_y};
}

void ForeignWindow::describe() const {
    // A window that cannot be asked to close is closed by cutting its client's connection.
    m_server.setProperty(m_window, m_server.atom("WM_PROTOCOLS"), XCB_ATOM_ATOM, {m_server.atom("WM_DELETE_WINDOW")});
    const auto type = m_server.atom("_NET_WM_WINDOW_TYPE");
    const auto state = m_server.atom("_NET_WM_STATE");
    if (m_kind == "desktop") {
        m_server.setProperty(m_window, type, XCB_ATOM_ATOM, {m_server.atom("_NET_WM_WINDOW_TYPE_DESKTOP")});
    } else if (m_kind == "dialog") {
        m_server.setProperty(m_window, type, XCB_ATOM_ATOM, {m_server.atom("_NET_WM_WINDOW_TYPE_DIALOG")});
        m_server.setProperty(m_window, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, {m_server.root()});
    } else if (m_kind.starts_with("notification")) {
        m_server.setProperty(m_window, type, XCB_ATOM_ATOM, {m_server.atom("_NET_WM_WINDOW_TYPE_NOTIFICATION")});
    } else if (m_kind == "dock") {
        m_server.setProperty(m_window, type, XCB_ATOM_ATOM, {m_server.atom("_NET_WM_WINDOW_TYPE_DOCK")});
    } else if (m_kind == "keep-above") {
        m_server.setProperty(m_window, state, XCB_ATOM_ATOM, {m_server.atom("_NET_WM_STATE_ABOVE")});
    } else if (m_kind == "full-screen") {
        m_server.setProperty(m_window, state, XCB_ATOM_ATOM, {m_server.atom("_NET_WM_STATE_FULLSCREEN")});
        // Or some window managers put it into the middle when it is no longer full-screen.
        const auto [x, y, itsWidth, itsHeight] = frame();
        constexpr std::uint32_t placeAndSizeOfUser = 3;
        std::vector<std::uint32_t> hints{placeAndSizeOfUser, static_cast<std::uint32_t>(x),
                                         static_cast<std::uint32_t>(y), itsWidth, itsHeight};
        hints.resize(lengthOfSizeHints);
        m_server.setProperty(m_window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
    }
}

void ForeignWindow::insist() const {
    constexpr std::uint32_t fromPager = 2;
    constexpr std::uint32_t above = XCB_STACK_MODE_ABOVE;
    if (m_kind == "self-activating") {
        m_server.request(m_window, "_NET_ACTIVE_WINDOW", {fromPager, XCB_CURRENT_TIME, 0});
    } else if (m_kind == "self-focusing") {
        xcb_set_input_focus(m_server.xcb(), XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
    } else if (m_kind.ends_with("self-raising")) {
        xcb_configure_window(m_server.xcb(), m_window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    }
    xcb_flush(m_server.xcb());
}

bool ForeignWindow::hasFocus() const {
    return m_server.focus() == m_window;
}

ForeignWindow::Input ForeignWindow::takeInput() const {
    Input input;
    m_server.sync();
    while (const auto event = m_server.poll()) {
        const auto kind = kindOf(*event);
        if (kind == XCB_CLIENT_MESSAGE && as<xcb_client_message_event_t>(*event).window == m_window) {
            xcb_unmap_window(m_server.xcb(), m_window);
        } else if (as<xcb_key_press_event_t>(*event).event == m_window) {
            input.keys += kind == XCB_KEY_PRESS || kind == XCB_KEY_RELEASE ? 1 : 0;
            input.clicks += kind == XCB_BUTTON_PRESS || kind == XCB_BUTTON_RELEASE ? 1 : 0;
        }
    }
    return input;
}

} // namespace tapalong::siege
