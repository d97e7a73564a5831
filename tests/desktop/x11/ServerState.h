#pragma once

#include "platform/linux/x11/XcbHeaders.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tapalong::test {

using DeviceId = std::uint16_t;

/// What the server keeps about keyboards, as it tells it byte for byte: keymap, controls, locks and layout, and where
/// each device types to; and about pointers, what their buttons stand for. A device can be left out of it by being
/// gone.
class ServerState {
public:
    static ServerState read(xcb_connection_t* xcb);

    /// The parts in which the other differs, by name; empty when all is the same.
    [[nodiscard]] std::string differencesTo(const ServerState& other) const;

private:
    std::map<std::string, std::vector<std::uint8_t>> m_parts;
};

/// Every device with keys.
[[nodiscard]] std::vector<DeviceId> keyboardDevices(xcb_connection_t* xcb);

/// How many actions of these types the keymaps of all devices have, or that of one.
[[nodiscard]] std::size_t countActions(xcb_connection_t* xcb, const std::vector<std::uint8_t>& types);
[[nodiscard]] std::size_t countActions(xcb_connection_t* xcb, DeviceId device, const std::vector<std::uint8_t>& types);

/// Bits of xcb_xkb_bool_ctrl_t that are on at any keyboard.
[[nodiscard]] std::uint32_t controlsOn(xcb_connection_t* xcb);
/// Switches those of `which` on or off as `enabled` has them, at every keyboard.
void setControls(xcb_connection_t* xcb, std::uint32_t which, std::uint32_t enabled);

/// What the buttons of a device stand for, the first button first.
using ButtonMap = std::vector<std::uint8_t>;

/// Every device with buttons but those that all programs share.
[[nodiscard]] std::vector<DeviceId> pointingDevices(xcb_connection_t* xcb);
[[nodiscard]] ButtonMap buttonMap(xcb_connection_t* xcb, DeviceId device);
/// False when the server refuses, because a button that would change is down.
[[nodiscard]] bool setButtonMap(xcb_connection_t* xcb, DeviceId device, const ButtonMap& map);

/// The device that XTest's clicks come from.
[[nodiscard]] DeviceId clickingDevice(xcb_connection_t* xcb);

/// What a daemon may do that tells devices apart: a key or button bound on every one by itself, with all modifiers.
class DeviceBinding {
public:
    static DeviceBinding ofKey(std::uint32_t kernelCode);
    static DeviceBinding ofButton(std::uint8_t button);

    [[nodiscard]] std::size_t presses();

private:
    DeviceBinding(std::uint8_t grabType, std::uint32_t detail, std::uint16_t pressEvent);

    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> m_xcb;
    std::uint16_t m_pressEvent;
    std::size_t m_presses = 0;
};

/// A pair of pointer and keyboard with devices of their own, as plugged in and out.
class PluggedSeat {
public:
    explicit PluggedSeat(xcb_connection_t* xcb);
    ~PluggedSeat() { unplug(); }
    PluggedSeat(const PluggedSeat&) = delete;
    PluggedSeat& operator=(const PluggedSeat&) = delete;

    void unplug();
    [[nodiscard]] const std::vector<DeviceId>& keyboards() const { return m_keyboards; }

    /// Where this keyboard's keys go, which is no matter of the first one's focus.
    void focus(xcb_window_t window) const;
    void tap(std::uint32_t kernelCode) const;

    /// False while somebody else holds this keyboard.
    [[nodiscard]] bool grab() const;
    void ungrab() const;

private:
    xcb_connection_t* m_xcb;
    std::vector<DeviceId> m_keyboards;
    DeviceId m_pointer = 0;
};

} // namespace tapalong::test
