#include "desktop/remains/DeviceChanges.h"

#include "desktop/remains/Replies.h"

#include <sys/uio.h>
#include <xcb/xcbext.h>
#include <xcb/xinput.h>

// XCB's header for XKB uses a word of C++ as a name.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include <array>
#include <span>
#include <vector>

namespace tapalong::test {

namespace {

void speakXkb(xcb_connection_t* xcb) {
    (void)own(xcb_xkb_use_extension_reply(xcb, xcb_xkb_use_extension(xcb, 1, 0), nullptr));
}

} // namespace

void setDeviceFocus(xcb_connection_t* xcb, std::uint16_t device, xcb_window_t window) {
    (void)own(xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
    (void)own(xcb_request_check(xcb, xcb_input_xi_set_focus_checked(xcb, window, XCB_CURRENT_TIME, device)));
}

void setLockedModifiers(xcb_connection_t* xcb, std::uint16_t device, std::uint8_t modifiers) {
    speakXkb(xcb);
    constexpr std::uint8_t all = 0xFF;
    (void)own(xcb_request_check(xcb, xcb_xkb_latch_lock_state_checked(xcb, device, all, modifiers, 0, 0, 0, 0, 0)));
}

void setLatchedModifiers(xcb_connection_t* xcb, std::uint16_t device, std::uint8_t modifiers) {
    speakXkb(xcb);
    xcb_xkb_latch_lock_state_request_t request{};
    request.deviceSpec = device;
    request.affectModLatches = 0xFF;
    request.pad0 = modifiers; // the library's own function has no parameter for these
    constexpr xcb_protocol_request_t protocol{
        .count = 1, .ext = &xcb_xkb_id, .opcode = XCB_XKB_LATCH_LOCK_STATE, .isvoid = 1};
    // The two pieces before the first are the library's to fill in.
    std::array<iovec, 3> pieces{};
    pieces[2] = {.iov_base = &request, .iov_len = sizeof request};
    const unsigned number = xcb_send_request(xcb, XCB_REQUEST_CHECKED, &pieces[2], &protocol);
    (void)own(xcb_request_check(xcb, xcb_void_cookie_t{number}));
}

void setMiddleButton(xcb_connection_t* xcb, std::uint16_t device, std::uint8_t meaning) {
    const auto number = static_cast<std::uint8_t>(device);
    const auto now =
        own(xcb_input_get_device_button_mapping_reply(xcb, xcb_input_get_device_button_mapping(xcb, number), nullptr));
    if (!now || now->map_size < 2) {
        return;
    }
    const std::span buttons(xcb_input_get_device_button_mapping_map(now.get()), now->map_size);
    std::vector<std::uint8_t> map(buttons.begin(), buttons.end());
    map[1] = meaning;
    (void)own(xcb_input_set_device_button_mapping_reply(
        xcb, xcb_input_set_device_button_mapping(xcb, number, now->map_size, map.data()), nullptr));
}

void setHotKeys(xcb_connection_t* xcb, std::uint16_t device, HotKeys which) {
    speakXkb(xcb);
    constexpr std::uint32_t hotKeys = XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS;
    const std::uint32_t enabled = which == HotKeys::on ? hotKeys : 0;
    constexpr std::array<std::uint8_t, 32> repeats{};
    const auto request = xcb_xkb_set_controls_checked(xcb, device, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, hotKeys, enabled,
                                                      XCB_XKB_CONTROL_CONTROLS_ENABLED, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                                      0, 0, 0, repeats.data());
    (void)own(xcb_request_check(xcb, request));
}

} // namespace tapalong::test
