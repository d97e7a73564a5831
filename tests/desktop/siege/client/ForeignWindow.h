#pragma once

#include "desktop/siege/client/Server.h"

namespace tapalong::siege {

/// A window of another program that opens while somebody else has the screen, filled with a colour that nothing else
/// has. Whatever its kind and wherever it is put on a screen of 1280 x 1200, it covers the middle; only the one in a
/// corner is small.
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

    /// Kinds: "ordinary", "self-activating", "self-focusing", "self-raising", "keep-above", "dialog", "notification",
    /// "notification in a corner", "dock", "full-screen", "unmanaged" and "unmanaged self-raising". The ones that insist do so when told to.
    ForeignWindow(const Server& server, std::string kind);
    ~ForeignWindow();
    ForeignWindow(const ForeignWindow&) = delete;
    ForeignWindow& operator=(const ForeignWindow&) = delete;

    void insist() const;
    [[nodiscard]] bool hasFocus() const;
    [[nodiscard]] bool isSmall() const;
    /// Where it can be seen that the window shows.
    [[nodiscard]] Point spot() const;
    /// Takes in the input that came since the last call.
    [[nodiscard]] Input takeInput() const;

    static constexpr std::uint32_t colour = 0xE0218A;

private:
    [[nodiscard]] xcb_rectangle_t frame() const;
    void describe() const;

    const Server& m_server;
    const std::string m_kind;
    xcb_window_t m_window = XCB_NONE;
};

} // namespace tapalong::siege
