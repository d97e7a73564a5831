#pragma once

#include "desktop/siege/client/Hands.h"

namespace tapalong::siege {

/// A full-screen window that grabs nothing: what the sweep finds there shows what it is able to find.
class PlainWindow {
public:
    PlainWindow();

    /// Brings back what a chord did away with: ends grabs of a menu or a switcher, returns to the first workspace, opens
    /// the window anew if it was closed, and gives it the screen and the focus. False when that does not succeed.
    [[nodiscard]] bool restore(Hands& hands);

    [[nodiscard]] xcb_window_t window() const { return m_window; }

private:
    void open();
    void takeIn();
    [[nodiscard]] bool keyboardIsFree() const;
    [[nodiscard]] bool isInFront() const;

    Server m_server;
    xcb_window_t m_window = XCB_NONE;
    bool m_isOpen = false;
};

} // namespace tapalong::siege
