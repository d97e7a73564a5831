#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tapalong::test {

/// Another program on the display: it types and clicks (XTest), opens plain windows, grabs keys as a window manager
/// does, and records what it gets. Keys are named by the kernel's codes (KEY_A), buttons by their X numbers.
class XClient {
public:
    struct Seen {
        std::uint8_t type = 0;    ///< XCB_KEY_PRESS, XCB_BUTTON_RELEASE, ...
        std::uint32_t detail = 0; ///< the kernel's key code, or the button
        xcb_window_t window = 0;
    };

    /// On the display that DISPLAY names. Stops the program when it cannot be opened.
    XClient();

    void press(std::uint32_t kernelCode);
    void release(std::uint32_t kernelCode);
    void tap(std::uint32_t kernelCode);
    /// Presses all in their order and releases them in the reverse.
    void chord(const std::vector<std::uint32_t>& kernelCodes);
    void pressButton(std::uint8_t button);
    void releaseButton(std::uint8_t button);
    void click(std::uint8_t button);
    void movePointer(std::int16_t x, std::int16_t y);

    /// A mapped, unmanaged window that takes keys and buttons.
    [[nodiscard]] xcb_window_t openWindow(std::int16_t x, std::int16_t y, std::uint16_t width, std::uint16_t height);
    void focus(xcb_window_t window);
    void raise(xcb_window_t window);
    [[nodiscard]] xcb_window_t topWindow() const; ///< the top-most mapped child of the root

    /// What a window manager or a desktop daemon does with its shortcuts, for every set of modifiers.
    void bindKey(std::uint32_t kernelCode);
    void bindButton(std::uint8_t button);
    [[nodiscard]] bool grabKeyboard();
    void ungrabKeyboard();

    /// Waits until the server has done all this and takes in what it sent.
    void sync();
    [[nodiscard]] const std::vector<Seen>& seen();
    [[nodiscard]] std::size_t count(std::uint8_t type, std::uint32_t detail);
    void forget() { m_seen.clear(); }

    [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb.get(); }
    [[nodiscard]] xcb_window_t root() const { return m_root; }

private:
    void fake(std::uint8_t type, std::uint32_t detail, std::int16_t x = 0, std::int16_t y = 0);
    void takeIn();

    std::unique_ptr<xcb_connection_t, std::function<void(xcb_connection_t*)>> m_xcb;
    xcb_window_t m_root = 0;
    std::vector<Seen> m_seen;
};

/// Gives the display another keyboard layout, as setxkbmap's arguments name it ("us,ru -option grp:menu_toggle").
void setLayout(const std::string& arguments);

} // namespace tapalong::test
