#pragma once

#include "desktop/support/XClient.h"
#include "desktop/x11/ServerState.h"
#include "platform/linux/x11/X11Connection.h"

#include <gtest/gtest.h>

#include <vector>

namespace tapalong::test {

inline constexpr std::uint8_t serversOwn = 0x86; // breaking grabs, changing the video mode
inline const std::vector<std::uint8_t> serverActions{XCB_XKB_SA_TYPE_TERMINATE,      XCB_XKB_SA_TYPE_SWITCH_SCREEN,
                                                     XCB_XKB_SA_TYPE_SET_CONTROLS,   XCB_XKB_SA_TYPE_LOCK_CONTROLS,
                                                     XCB_XKB_SA_TYPE_LOCK_PTR_BTN,   XCB_XKB_SA_TYPE_SET_PTR_DFLT,
                                                     XCB_XKB_SA_TYPE_ACTION_MESSAGE, serversOwn};
inline constexpr std::uint32_t accessibility = XCB_XKB_BOOL_CTRL_SLOW_KEYS | XCB_XKB_BOOL_CTRL_STICKY_KEYS |
                                               XCB_XKB_BOOL_CTRL_BOUNCE_KEYS | XCB_XKB_BOOL_CTRL_MOUSE_KEYS;

/// A server whose keymap and controls have all that is to be closed.
class ServerKeysTest : public testing::Test {
protected:
    ServerKeysTest() {
        setLayout("us,ru -option terminate:ctrl_alt_bksp,grab:break_actions,grp:menu_toggle");
        setControls(xcb, XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS, XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS);
    }

    ~ServerKeysTest() override { setControls(xcb, XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS | accessibility, 0); }

    X11Connection connection; // speaks XKB and XInput 2, as the asking below has to
    xcb_connection_t* xcb = connection.xcb();
    XClient other;
};

} // namespace tapalong::test
