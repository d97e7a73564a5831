#pragma once

#include "platform/linux/x11/XcbHeaders.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tapalong::siege {

/// One client of the X server. Each part of the siege is a client of its own, as the programs are that it stands for.
/// Stops the program when the display cannot be opened: no test can say anything then.
class Server {
public:
    Server();

    [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb.get(); }
    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *m_screen; }
    [[nodiscard]] std::uint8_t xinputOpcode() const { return m_xinputOpcode; }
    [[nodiscard]] std::uint8_t xkbEventBase() const { return m_xkbEventBase; }

    [[nodiscard]] xcb_atom_t atom(const std::string& name) const;
    /// Empty when the window has no such property.
    [[nodiscard]] std::vector<std::uint32_t> property(xcb_window_t window, xcb_atom_t name) const;
    void setProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                     const std::vector<std::uint32_t>& values) const;
    [[nodiscard]] xcb_window_t focus() const;

    /// The numbers of all devices of one type: XCB_INPUT_DEVICE_TYPE_...
    [[nodiscard]] std::vector<xcb_input_device_id_t> devices(std::uint16_t type) const;

    /// What a pager or a taskbar asks of the window manager.
    void request(xcb_window_t window, const std::string& what, const std::vector<std::uint32_t>& data) const;

    /// Adds to what this client hears of the window.
    void select(xcb_window_t window, std::uint32_t events) const;

    /// Returns when the server has done all that was asked of it and has sent what came of it.
    void sync() const;
    [[nodiscard]] XcbReply<xcb_generic_event_t> poll() const { return own(xcb_poll_for_event(xcb())); }

private:
    std::unique_ptr<xcb_connection_t, std::function<void(xcb_connection_t*)>> m_xcb;
    const xcb_screen_t* m_screen = nullptr;
    std::uint8_t m_xinputOpcode = 0;
    std::uint8_t m_xkbEventBase = 0;
};

/// As programs write window numbers.
[[nodiscard]] std::string hex(std::uint32_t number);

/// As the kernel and setxkbmap's listings number keys.
[[nodiscard]] std::string keyName(std::uint32_t keycode);

} // namespace tapalong::siege
