#pragma once

#include "desktop/siege/client/Server.h"

namespace tapalong::siege {

/// A window of another program that opens while somebody else has the screen, filled with a colour that nothing else
/// has. Whatever its kind and wherever it is put on a screen of 1280 x 1200, it covers the middle.
class ForeignWindow {
public:
    struct Input {
        int keys = 0;
        int clicks = 0;
    };

    /// Kinds: "ordinary", "self-activating", "self-focusing", "self-raising", "keep-above", "dialog", "notification",
    /// "dock", "full-screen", "unmanaged" and "unmanaged self-raising". The ones that insist do so when told to.
    ForeignWindow(const Server& server, std::string kind);
    ~ForeignWindow();
    ForeignWindow(const ForeignWindow&) = delete;
    ForeignWindow& operator=(const ForeignWindow&) = delete;

    void insist() const;
    [[nodiscard]] bool hasFocus() const;
    /// Takes in the input that came since the last call.
    [[nodiscard]] Input takeInput() const;

    static constexpr std::uint32_t colour = 0xE0218A;

private:
    void describe() const;

    const Server& m_server;
    const std::string m_kind;
    xcb_window_t m_window = XCB_NONE;
};

} // namespace tapalong::siege
