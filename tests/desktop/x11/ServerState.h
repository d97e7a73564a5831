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
/// each device types to. A device can be left out of it by being gone.
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

/// What a daemon may do that tells keyboards apart: a key bound on every device by itself, with all modifiers.
class DeviceBinding {
public:
    explicit DeviceBinding(std::uint32_t kernelCode);

    [[nodiscard]] std::size_t presses();

private:
    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> m_xcb;
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
