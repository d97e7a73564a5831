#include "platform/linux/x11/X11ScreenCover.h"

#include "platform/linux/x11/QtConnection.h"

#include <QScreen>
#include <QWindow>
#include <xcb/shape.h>

#include <cmath>

namespace tapalong {

namespace {

int pointsThatCover(int pixels, double pixelsPerPoint) {
    const double points = pixels / pixelsPerPoint;
    const double whole = std::floor(points);
    return static_cast<int>(points == whole ? whole : std::ceil(points) + 1); // not about: the renderer cuts the same
}

// Else it would lie over a part of the next screen; and at the edge of all the server would take it for covered, and
// never tell when another window does cover it.
void cutTo(QWindow& window, QSize pixels, bool isWhole) {
    auto* const xcb = qtConnection();
    if (xcb == nullptr) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window.winId());
    if (isWhole) {
        xcb_shape_mask(xcb, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, id, 0, 0, XCB_NONE);
    } else {
        const xcb_rectangle_t all{0, 0, static_cast<std::uint16_t>(pixels.width()),
                                  static_cast<std::uint16_t>(pixels.height())};
        xcb_shape_rectangles(xcb, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED, id, 0, 0, 1,
                             &all);
    }
    xcb_flush(xcb);
}

} // namespace

QSize pointsThatCover(QSize pixels, double pixelsPerPoint) {
    return {pointsThatCover(pixels.width(), pixelsPerPoint), pointsThatCover(pixels.height(), pixelsPerPoint)};
}

void coverScreen(QWindow& window, const QScreen& screen, const QRect& pixels) {
    const double ratio = screen.devicePixelRatio();
    const QSize points = pointsThatCover(pixels.size(), ratio);
    window.setGeometry(QRect(screen.geometry().topLeft(), points));
    cutTo(window, pixels.size(), (QSizeF(points) * ratio).toSize() == pixels.size());
}

} // namespace tapalong
