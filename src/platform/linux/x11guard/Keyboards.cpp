#include "platform/linux/x11guard/Keyboards.h"

#include <sys/uio.h>
#include <xcb/xcbext.h>

#include <array>

namespace tapalong {

std::optional<LockState> lockState(xcb_connection_t* xcb, std::uint16_t device) {
    const auto state = own(xcb_xkb_get_state_reply(xcb, xcb_xkb_get_state(xcb, device), nullptr));
    return state ? std::optional(LockState{.lockedMods = state->lockedMods,
                                           .latchedMods = state->latchedMods,
                                           .lockedGroup = state->lockedGroup,
                                           .latchedGroup = state->latchedGroup})
                 : std::nullopt;
}

void changeLockState(xcb_connection_t* xcb, std::uint16_t device, const LockState& from, const LockState& to) {
    xcb_xkb_latch_lock_state_request_t request{};
    request.deviceSpec = device;
    // The server refuses a request that has more in a value than in what it affects.
    request.affectModLocks = from.lockedMods ^ to.lockedMods;
    request.modLocks = to.lockedMods & request.affectModLocks;
    request.lockGroup = from.lockedGroup != to.lockedGroup ? 1 : 0;
    request.groupLock = to.lockedGroup;
    request.affectModLatches = from.latchedMods ^ to.latchedMods;
    request.pad0 = to.latchedMods & request.affectModLatches; // the library's own function has no parameter for these
    request.latchGroup = from.latchedGroup != to.latchedGroup ? 1 : 0;
    request.groupLatch = static_cast<std::uint16_t>(to.latchedGroup);
    constexpr xcb_protocol_request_t protocol{
        .count = 1, .ext = &xcb_xkb_id, .opcode = XCB_XKB_LATCH_LOCK_STATE, .isvoid = 1};
    // The two pieces before the first are the library's to fill in.
    std::array<iovec, 3> pieces{};
    pieces[2] = {.iov_base = &request, .iov_len = sizeof request};
    xcb_send_request(xcb, 0, &pieces[2], &protocol);
}

std::optional<std::uint32_t> enabledControls(xcb_connection_t* xcb, std::uint16_t device) {
    const auto controls = own(xcb_xkb_get_controls_reply(xcb, xcb_xkb_get_controls(xcb, device), nullptr));
    return controls ? std::optional(controls->enabledControls) : std::nullopt;
}

bool setControls(xcb_connection_t* xcb, std::uint16_t device, std::uint32_t which, std::uint32_t enabled) {
    constexpr std::array<std::uint8_t, 32> repeats{};
    const auto request = xcb_xkb_set_controls_checked(xcb, device, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, which,
                                                      enabled & which, XCB_XKB_CONTROL_CONTROLS_ENABLED, 0, 0, 0, 0, 0,
                                                      0, 0, 0, 0, 0, 0, 0, 0, 0, repeats.data());
    return own(xcb_request_check(xcb, request)) == nullptr;
}

void switchOnWhenWeAreGone(xcb_connection_t* xcb, std::uint16_t device, std::uint32_t which) {
    constexpr std::uint32_t reset = XCB_XKB_PER_CLIENT_FLAG_AUTO_RESET_CONTROLS;
    const auto request = xcb_xkb_per_client_flags(xcb, device, reset, reset, which, which, which);
    (void)own(xcb_xkb_per_client_flags_reply(xcb, request, nullptr));
}

std::optional<xcb_window_t> deviceFocus(xcb_connection_t* xcb, std::uint16_t device) {
    const auto focus = own(xcb_input_xi_get_focus_reply(xcb, xcb_input_xi_get_focus(xcb, device), nullptr));
    return focus ? std::optional(focus->focus) : std::nullopt;
}

bool setDeviceFocus(xcb_connection_t* xcb, std::uint16_t device, xcb_window_t window) {
    const auto request = xcb_input_xi_set_focus_checked(xcb, window, XCB_CURRENT_TIME, device);
    return own(xcb_request_check(xcb, request)) == nullptr;
}

} // namespace tapalong
