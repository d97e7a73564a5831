#include "platform/linux/x11/X11Pointer.h"

#include "platform/linux/x11/X11Connection.h"

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

QPointF inPoints(QPointF pixel) {
    for (const auto* const screen : QGuiApplication::screens()) {
        const QPointF point = inPointsOf(*screen, pixel);
        const QRect area = screen->geometry();
        if (point.x() >= area.x() && point.y() >= area.y() && point.x() < area.x() + area.width() &&
            point.y() < area.y() + area.height()) {
            return point;
        }
    }
    // Rounding can leave the last pixels of a screen out of its size in points.
    const auto* const mainScreen = QGuiApplication::primaryScreen();
    return mainScreen != nullptr ? inPointsOf(*mainScreen, pixel) : pixel;
}

} // namespace

std::optional<QPointF> pointerPosition(const X11Connection& connection) {
    if (!connection.isUsable()) {
        return QCursor::pos();
    }
    auto* const xcb = connection.xcb();
    const auto pointer = own(xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, connection.root()), nullptr));
    if (!pointer || pointer->same_screen == 0) {
        return std::nullopt;
    }
    return inPoints(QPointF(pointer->root_x, pointer->root_y));
}

} // namespace tapalong
