#include "platform/linux/x11/X11Pointer.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11ScreenPixels.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace tapalong {

namespace {

/// The toolkit scales each screen about its own corner, which keeps its place among the pixels.
QPointF inPointsOf(const QScreen& screen, QPointF pixel) {
    const QPointF corner = screen.geometry().topLeft();
    return corner + (pixel - corner) / screen.devicePixelRatio();
}

QPointF inPoints(QPoint pixel, const X11ScreenPixels& pixels) {
    for (const auto* const screen : QGuiApplication::screens()) {
        if (pixels.of(*screen).contains(pixel)) {
            return inPointsOf(*screen, pixel);
        }
    }
    // Where no screen is: while one is going, say.
    const auto* const mainScreen = QGuiApplication::primaryScreen();
    return mainScreen != nullptr ? inPointsOf(*mainScreen, pixel) : pixel;
}

} // namespace

std::optional<QPointF> pointerPosition(const X11Connection& connection, const X11ScreenPixels& screens) {
    if (!connection.isUsable()) {
        return QCursor::pos();
    }
    auto* const xcb = connection.xcb();
    const auto pointer = own(xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, connection.root()), nullptr));
    if (!pointer || pointer->same_screen == 0) {
        return std::nullopt;
    }
    return inPoints(QPoint(pointer->root_x, pointer->root_y), screens);
}

} // namespace tapalong
