#include "platform/linux/x11/QtConnection.h"

#include <QGuiApplication>

namespace tapalong {

xcb_connection_t* qtConnection() {
    const auto* application =
        qGuiApp != nullptr ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return application != nullptr ? application->connection() : nullptr;
}

bool isFocusOurs(xcb_connection_t* ownConnection) {
    auto* qt = qtConnection();
    const auto focus = own(xcb_get_input_focus_reply(ownConnection, xcb_get_input_focus(ownConnection), nullptr));
    if (qt == nullptr || !focus) {
        return false;
    }
    // The server gives the windows of each connection numbers of one range.
    const auto* setup = xcb_get_setup(qt);
    return (focus->focus & ~setup->resource_id_mask) == setup->resource_id_base;
}

} // namespace tapalong
