#include "platform/linux/x11/QtConnection.h"

#include <QGuiApplication>

namespace tapalong {

xcb_connection_t* qtConnection() {
    const auto* application =
        qGuiApp != nullptr ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return application != nullptr ? application->connection() : nullptr;
}

bool isWindowOfQt(xcb_window_t window) {
    auto* xcb = qtConnection();
    if (xcb == nullptr) {
        return false;
    }
    const auto* setup = xcb_get_setup(xcb);
    return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

} // namespace tapalong
