#include "desktop/siege/client/Hands.h"

#include "base/Fatal.h"

#include <xcb/xtest.h>

#include <utility>

namespace tapalong::siege {

void Hands::play(const std::string& token) {
    const bool isButton = token.front() == 'b';
    const std::string action = isButton ? token.substr(1) : token;
    const std::string rest = action.substr(1);
    if (action.front() == 'm') {
        const auto comma = rest.find(',');
        fake(XCB_MOTION_NOTIFY, 0, static_cast<std::int16_t>(std::stoi(rest)),
             static_cast<std::int16_t>(std::stoi(rest.substr(comma + 1))));
        return;
    }
    const bool isPress = action.front() == '+';
    verify(isPress || action.front() == '-', "a token is a press, a release or a movement");
    const auto detail = static_cast<std::uint8_t>(std::stoi(rest));
    auto& held = isButton ? m_buttons : m_keys;
    if (isPress) {
        held.insert(detail);
    } else {
        held.erase(detail);
    }
    const int press = isButton ? XCB_BUTTON_PRESS : XCB_KEY_PRESS;
    fake(static_cast<std::uint8_t>(isPress ? press : press + 1), detail);
}

void Hands::tap(std::uint8_t keycode) {
    fake(XCB_KEY_PRESS, keycode);
    fake(XCB_KEY_RELEASE, keycode);
}

void Hands::rest() {
    for (const auto key : std::exchange(m_keys, {})) {
        fake(XCB_KEY_RELEASE, key);
    }
    for (const auto button : std::exchange(m_buttons, {})) {
        fake(XCB_BUTTON_RELEASE, button);
    }
    constexpr std::uint16_t device = XCB_XKB_ID_USE_CORE_KBD;
    const auto state = own(xcb_xkb_get_state_reply(m_server.xcb(), xcb_xkb_get_state(m_server.xcb(), device), nullptr));
    if (state->lockedMods != 0 || state->latchedMods != 0 || state->lockedGroup != 0 || state->latchedGroup != 0) {
        xcb_xkb_latch_lock_state(m_server.xcb(), device, 0xFF, 0, 1, 0, 0xFF, 1, 0);
        m_server.sync();
    }
}

void Hands::fake(std::uint8_t type, std::uint8_t detail, std::int16_t x, std::int16_t y) {
    xcb_test_fake_input(m_server.xcb(), type, detail, XCB_CURRENT_TIME, m_server.root(), x, y, 0);
    m_server.sync();
}

} // namespace tapalong::siege
