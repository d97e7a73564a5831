#pragma once

#include <QRect>
#include <QSize>

class QScreen;
class QWindow;

namespace tapalong {

/// The least size in whole points of a window that paints all of so many pixels. Where they are not a whole number of
/// points that is more than they need: the software renderer leaves the last point of a window black when the window's
/// pixels are less than its points.
[[nodiscard]] QSize pointsThatCover(QSize pixels, double pixelsPerPoint);

/// Puts an unmanaged window over all of the screen, which is those `pixels`, and cuts off what of it would stick out.
void coverScreen(QWindow& window, const QScreen& screen, const QRect& pixels);

} // namespace tapalong
