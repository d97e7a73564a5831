#include "desktop/siege/client/Daemon.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace tapalong::siege {

namespace {

constexpr std::array<std::uint8_t, 3> extraButtons{2, 8, 9};
constexpr xcb_keysym_t firstVendorKeysym = 0x10080001; // media keys and the like
constexpr xcb_keysym_t lastVendorKeysym = 0x1008FFFF;
constexpr std::uint32_t anyModifier = 1U << 31U;

bool isShortcut(xcb_keysym_t keysym) {
    constexpr std::array others{XKB_KEY_Super_L, XKB_KEY_Super_R, XKB_KEY_Hyper_L, XKB_KEY_Print,
                                XKB_KEY_Pause,   XKB_KEY_Menu,    XKB_KEY_F9,      XKB_KEY_Help};
    return (keysym >= firstVendorKeysym && keysym <= lastVendorKeysym) ||
           std::find(others.begin(), others.end(), keysym) != others.end();
}

} // namespace

Daemon::Daemon(GrabLevel level) {
    if (level == GrabLevel::core) {
        grabOnCore();
    } else {
        grabOnSlaves();
    }
    m_server.sync();
}

// What another client has bound already is refused and stays that client's.
void Daemon::grabOnCore() {
    for (const auto keycode : shortcutKeys()) {
        xcb_grab_key(m_server.xcb(), 0, m_server.root(), XCB_MOD_MASK_ANY, keycode, XCB_GRAB_MODE_ASYNC,
                     XCB_GRAB_MODE_ASYNC);
    }
    for (const auto button : extraButtons) {
        xcb_grab_button(m_server.xcb(), 0, m_server.root(), XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE,
                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, button, XCB_MOD_MASK_ANY);
    }
}

void Daemon::grabOnSlaves() {
    for (const auto keyboard : m_server.devices(XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD)) {
        grabKeysOf(keyboard);
    }
    for (const auto pointer : m_server.devices(XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER)) {
        grabButtonsOf(pointer);
    }
}

void Daemon::grabKeysOf(xcb_input_device_id_t keyboard) {
    constexpr std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
    for (const auto keycode : shortcutKeys()) {
        const auto request = xcb_input_xi_passive_grab_device(
            m_server.xcb(), XCB_CURRENT_TIME, m_server.root(), XCB_NONE, keycode, keyboard, 1, 1,
            XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_GRAB_MODE_ASYNC, 0, &events, &anyModifier);
        (void)own(xcb_input_xi_passive_grab_device_reply(m_server.xcb(), request, nullptr));
    }
}

void Daemon::grabButtonsOf(xcb_input_device_id_t pointer) {
    constexpr std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE;
    for (const auto button : extraButtons) {
        const auto request = xcb_input_xi_passive_grab_device(
            m_server.xcb(), XCB_CURRENT_TIME, m_server.root(), XCB_NONE, button, pointer, 1, 1,
            XCB_INPUT_GRAB_TYPE_BUTTON, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_GRAB_MODE_ASYNC, 0, &events, &anyModifier);
        (void)own(xcb_input_xi_passive_grab_device_reply(m_server.xcb(), request, nullptr));
    }
}

std::vector<xcb_keycode_t> Daemon::shortcutKeys() const {
    const auto* setup = xcb_get_setup(m_server.xcb());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto request = xcb_get_keyboard_mapping(m_server.xcb(), setup->min_keycode, count);
    const auto reply = own(xcb_get_keyboard_mapping_reply(m_server.xcb(), request, nullptr));
    const auto* keysyms = xcb_get_keyboard_mapping_keysyms(reply.get());
    std::vector<xcb_keycode_t> keycodes;
    for (int i = 0; i < count; ++i) {
        if (isShortcut(keysyms[static_cast<std::ptrdiff_t>(i) * reply->keysyms_per_keycode])) {
            keycodes.push_back(static_cast<xcb_keycode_t>(setup->min_keycode + i));
        }
    }
    return keycodes;
}

void Daemon::collect(std::vector<std::string>& sightings) {
    m_server.sync();
    while (const auto event = m_server.poll()) {
        const auto kind = kindOf(*event);
        const auto xinput = xinputTypeOf(*event, m_server.xinputOpcode());
        if (kind == XCB_KEY_PRESS) {
            sightings.push_back("a daemon's shortcut on " + keyName(as<xcb_key_press_event_t>(*event).detail));
        } else if (kind == XCB_BUTTON_PRESS) {
            sightings.push_back("a daemon's shortcut on button " +
                                std::to_string(as<xcb_button_press_event_t>(*event).detail));
        } else if (xinput == XCB_INPUT_KEY_PRESS) {
            sightings.push_back("a daemon's shortcut on a physical keyboard, " +
                                keyName(as<xcb_input_key_press_event_t>(*event).detail));
        } else if (xinput == XCB_INPUT_BUTTON_PRESS) {
            sightings.push_back("a daemon's shortcut on a physical mouse, button " +
                                std::to_string(as<xcb_input_button_press_event_t>(*event).detail));
        }
    }
}

} // namespace tapalong::siege
