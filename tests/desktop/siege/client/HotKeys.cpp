#include "desktop/siege/client/HotKeys.h"

#include <array>

namespace tapalong::siege {

namespace {

constexpr std::uint32_t hotKeys = XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS;
constexpr std::uint32_t whatTheySwitchOn = XCB_XKB_BOOL_CTRL_STICKY_KEYS | XCB_XKB_BOOL_CTRL_SLOW_KEYS;

void setControls(const Server& server, std::uint32_t which, std::uint32_t enabled) {
    constexpr std::array<std::uint8_t, 32> repeats{};
    for (const auto type : {XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD, XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD}) {
        for (const auto keyboard : server.devices(static_cast<std::uint16_t>(type))) {
            xcb_xkb_set_controls(server.xcb(), keyboard, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, which, enabled,
                                 XCB_XKB_CONTROL_CONTROLS_ENABLED, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                 repeats.data());
        }
    }
    server.sync();
}

} // namespace

void switchHotKeysOn(const Server& server) {
    setControls(server, hotKeys, hotKeys);
}

void switchHotKeysOff(const Server& server) {
    setControls(server, hotKeys | whatTheySwitchOn, 0);
}

} // namespace tapalong::siege
