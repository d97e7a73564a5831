#include "app/DesktopInput.h"

#include "app/DesktopWayland.h"
#include "app/DesktopX11.h"

#include <QGuiApplication>

namespace tapalong {

std::unique_ptr<DesktopInput> makeDesktopInput(NoticeBoard& notices) {
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        return std::make_unique<DesktopX11>(notices);
    }
    return std::make_unique<DesktopWayland>(notices);
}

} // namespace tapalong
