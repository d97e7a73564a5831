#include "platform/linux/x11/X11ScreenPixels.h"

#include "platform/linux/x11/X11Connection.h"

#include <QScreen>
#include <xcb/randr.h>

#include <cmath>
#include <utility>

namespace tapalong {

QRect X11ScreenPixels::of(const QScreen& screen) const {
    const QRect points = screen.geometry();
    const double ratio = screen.devicePixelRatio();
    if (ratio == 1) {
        return points;
    }
    Known& known = m_known[&screen];
    if (std::exchange(known.points, points) != points || std::exchange(known.ratio, ratio) != ratio) {
        known.pixels = look(points, ratio);
    }
    return known.pixels;
}

QSizeF X11ScreenPixels::sizeInPoints(const QScreen& screen) const {
    return QSizeF(of(screen).size()) / screen.devicePixelRatio();
}

QRect X11ScreenPixels::look(const QRect& points, double ratio) const {
    if (m_connection.isUsable()) {
        auto* const xcb = m_connection.xcb();
        const auto reply =
            own(xcb_randr_get_monitors_reply(xcb, xcb_randr_get_monitors(xcb, m_connection.root(), 1), nullptr));
        auto monitors =
            reply ? xcb_randr_get_monitors_monitors_iterator(reply.get()) : xcb_randr_monitor_info_iterator_t{};
        for (; monitors.rem > 0; xcb_randr_monitor_info_next(&monitors)) {
            const auto& monitor = *monitors.data;
            const QRect pixels(monitor.x, monitor.y, monitor.width, monitor.height);
            if (pixels.topLeft() == points.topLeft() && std::abs(pixels.width() / ratio - points.width()) < 1 &&
                std::abs(pixels.height() / ratio - points.height()) < 1) {
                return pixels;
            }
        }
    }
    return {points.topLeft(), (QSizeF(points.size()) * ratio).toSize()};
}

} // namespace tapalong
