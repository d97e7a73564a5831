#include "app/DesktopInput.h"

#include "app/DesktopWayland.h"
#include "app/DesktopX11.h"
#include "platform/linux/x11/QtConnection.h"
#include "platform/linux/x11/Xwayland.h"

#include <QGuiApplication>

namespace tapalong {

std::unique_ptr<DesktopInput> makeDesktopInput(NoticeBoard& notices) {
    auto* const server = QGuiApplication::platformName() == QLatin1String("xcb") ? qtConnection() : nullptr;
    // An X server on a Wayland desktop grants the keyboard and does not have it: nobody may take that for a lock.
    if (server != nullptr && !isXwayland(server)) {
        return std::make_unique<DesktopX11>(notices);
    }
    return std::make_unique<DesktopWayland>(notices);
}

} // namespace tapalong
