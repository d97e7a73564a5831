#include "desktop/siege/client/Watcher.h"

#include <array>
#include <string_view>
#include <utility>

namespace tapalong::siege {

namespace {

constexpr std::uint32_t ofBystander = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                      XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                      XCB_EVENT_MASK_FOCUS_CHANGE;
constexpr std::uint32_t ofRoot = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_FOCUS_CHANGE |
                                 XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
constexpr std::uint32_t ofGuarded =
    XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;

constexpr std::array desktopProperties{"_NET_ACTIVE_WINDOW", "_NET_CURRENT_DESKTOP", "_NET_SHOWING_DESKTOP",
                                       "_NET_NUMBER_OF_DESKTOPS", "_NET_CLIENT_LIST"};

// Mutter, when it first sees a lock on, sets as it likes it how the accessibility features behave once they are on. What
// the server's own hot keys do comes of a key.
bool isOfNoAccount(const xcb_xkb_controls_notify_event_t& change) {
    constexpr std::uint32_t behaviour = XCB_XKB_BOOL_CTRL_MOUSE_KEYS_ACCEL | XCB_XKB_BOOL_CTRL_ACCESS_X_TIMEOUT_MASK |
                                        XCB_XKB_BOOL_CTRL_ACCESS_X_FEEDBACK_MASK;
    constexpr std::uint32_t theirOptions = XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS;
    return change.keycode == 0 && (change.enabledControlChanges & ~behaviour) == 0 &&
           (change.changedControls & ~(behaviour | theirOptions | XCB_XKB_CONTROL_CONTROLS_ENABLED)) == 0;
}

} // namespace

Watcher::Watcher() {
    for (const char* name : desktopProperties) {
        m_desktopProperties[m_server.atom(name)] = name;
    }
    m_server.select(m_server.root(), ofRoot);
    constexpr std::uint16_t controls = XCB_XKB_EVENT_TYPE_CONTROLS_NOTIFY;
    xcb_xkb_select_events(m_server.xcb(), XCB_XKB_ID_USE_CORE_KBD, controls, 0, controls, 0, 0, nullptr);
    openBystander();
}

void Watcher::openBystander() {
    m_bystander = xcb_generate_id(m_server.xcb());
    constexpr std::uint32_t mask = XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK;
    const std::array values{m_server.screen().white_pixel, ofBystander};
    xcb_create_window(m_server.xcb(), XCB_COPY_FROM_PARENT, m_bystander, m_server.root(), 60, 60, 300, 200, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, mask, values.data());
    constexpr std::string_view title = "bystander";
    xcb_change_property(m_server.xcb(), XCB_PROP_MODE_REPLACE, m_bystander, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(title.size()), title.data());
    xcb_map_window(m_server.xcb(), m_bystander);
    m_server.sync();
}

void Watcher::guard(xcb_window_t window) {
    m_guarded = window;
    m_server.select(window, ofGuarded);
    m_server.sync();
    while (m_server.poll()) {
    }
    for (const auto& [atom, name] : m_desktopProperties) {
        m_desktop[atom] = m_server.property(m_server.root(), atom);
    }
}

void Watcher::collect(std::vector<std::string>& sightings) {
    m_server.sync();
    while (const auto event = m_server.poll()) {
        if (auto sighting = seen(*event); !sighting.empty()) {
            sightings.push_back(std::move(sighting));
        }
    }
}

std::string Watcher::seen(const xcb_generic_event_t& event) {
    if (kindOf(event) == m_server.xkbEventBase()) {
        return isOfNoAccount(as<xcb_xkb_controls_notify_event_t>(event)) ? "" : "the keyboard's controls changed";
    }
    switch (kindOf(event)) {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        return seenOfInput(event);
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
        return seenOfFocus(as<xcb_focus_in_event_t>(event), kindOf(event) == XCB_FOCUS_IN);
    case XCB_PROPERTY_NOTIFY:
        return seenOfDesktop(as<xcb_property_notify_event_t>(event));
    default:
        return seenOfWindows(event);
    }
}

std::string Watcher::seenOfInput(const xcb_generic_event_t& event) const {
    const auto kind = kindOf(event);
    if (kind == XCB_ENTER_NOTIFY || kind == XCB_LEAVE_NOTIFY) {
        const auto& crossing = as<xcb_enter_notify_event_t>(event);
        return crossing.mode == XCB_NOTIFY_MODE_GRAB ? "a grab took the pointer" : "";
    }
    const auto& input = as<xcb_key_press_event_t>(event);
    const std::string who = input.event == m_bystander ? "another window got " : "a client watching the root got ";
    const bool isKey = kind == XCB_KEY_PRESS || kind == XCB_KEY_RELEASE;
    return who + (isKey ? keyName(input.detail) : "button " + std::to_string(input.detail));
}

std::string Watcher::seenOfFocus(const xcb_focus_in_event_t& event, bool isIn) const {
    if (event.mode == XCB_NOTIFY_MODE_GRAB) {
        return "a grab took the keyboard";
    }
    if (event.mode == XCB_NOTIFY_MODE_UNGRAB || event.detail == XCB_NOTIFY_DETAIL_POINTER) {
        return "";
    }
    if (isIn && event.event == m_bystander) {
        return "another window got the focus";
    }
    return !isIn && event.event == m_guarded && event.detail != XCB_NOTIFY_DETAIL_INFERIOR ? "the focus left the window"
                                                                                           : "";
}

std::string Watcher::seenOfWindows(const xcb_generic_event_t& event) const {
    switch (kindOf(event)) {
    case XCB_MAP_NOTIFY:
        return "window " + hex(as<xcb_map_notify_event_t>(event).window) + " appeared";
    case XCB_UNMAP_NOTIFY:
        return "window " + hex(as<xcb_unmap_notify_event_t>(event).window) + " went";
    case XCB_CONFIGURE_NOTIFY: {
        const auto window = as<xcb_configure_notify_event_t>(event).window;
        return window != m_guarded ? "window " + hex(window) + " was moved or restacked" : "";
    }
    default:
        return "";
    }
}

std::string Watcher::seenOfDesktop(const xcb_property_notify_event_t& event) {
    const auto name = m_desktopProperties.find(event.atom);
    if (event.window != m_server.root() || name == m_desktopProperties.end()) {
        return "";
    }
    auto now = m_server.property(m_server.root(), event.atom);
    auto& before = m_desktop[event.atom];
    if (now == before) {
        return "";
    }
    before = std::move(now);
    return name->second + " changed";
}

} // namespace tapalong::siege
