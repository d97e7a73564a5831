#pragma once

#include "desktop/siege/client/Server.h"

namespace tapalong::siege {

/// A window of another program that opens while somebody else has the screen, filled with a colour of its own.
/// Whatever its kind and wherever it is put on a screen of 1280 x 1200, it covers the middle; only the one in a corner
/// is small, and the full-screen one once it is no longer full-screen.
class ForeignWindow {
public:
    /// A place on the screen.
    struct Point {
        std::int16_t x = 0;
        std::int16_t y = 0;
    };
    struct Input {
        int keys = 0;
        int clicks = 0;
    };

    /// Kinds: "desktop", "ordinary", "self-activating", "self-focusing", "self-raising", "keep-above", "dialog",
    /// "notification", "notification in a corner", "dock", "full-screen", "unmanaged" and "unmanaged self-raising". The
    /// ones that insist do so when told to. Each closes when it is asked to.
    ForeignWindow(const Server& server, std::string kind, std::uint32_t colour);
    ~ForeignWindow();
    ForeignWindow(const ForeignWindow&) = delete;
    ForeignWindow& operator=(const ForeignWindow&) = delete;

    void insist() const;
    [[nodiscard]] bool hasFocus() const;
    [[nodiscard]] bool isSmall() const;
    /// Where it can be seen that the window shows.
    [[nodiscard]] Point spot() const;
    [[nodiscard]] xcb_window_t window() const { return m_window; }
    [[nodiscard]] std::uint32_t colour() const { return m_colour; }
    /// Takes in the input, and the request to close, that came since the last call.
    [[nodiscard]] Input takeInput() const;

private:
    [[nodiscard]] xcb_rectangle_t frame() const;
    void describe() const;

    const Server& m_server;
    const std::string m_kind;
    const std::uint32_t m_colour;
    xcb_window_t m_window = XCB_NONE;
};

} // namespace tapalong::siege
