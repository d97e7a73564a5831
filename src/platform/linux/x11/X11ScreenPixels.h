#pragma once

#include <QRect>
#include <QSizeF>

#include <map>

class QScreen;

namespace tapalong {

class X11Connection;

/// Which of the server's pixels the toolkit's screens are. The toolkit keeps a screen's place in pixels but its size in
/// whole points, and with a scale such as 1.75 the screen may be most of a point larger than that.
class X11ScreenPixels {
public:
    explicit X11ScreenPixels(const X11Connection& connection) : m_connection(connection) {}

    /// As the server has it; what the toolkit's rounding makes of it while the server knows no such screen.
    [[nodiscard]] QRect of(const QScreen& screen) const;

    [[nodiscard]] QSizeF sizeInPoints(const QScreen& screen) const;

private:
    struct Known {
        QRect points;
        double ratio = 0;
        QRect pixels;
    };

    [[nodiscard]] QRect look(const QRect& points, double ratio) const;

    const X11Connection& m_connection;
    mutable std::map<const QScreen*, Known> m_known; ///< asked for at every sample of the pointer
};

} // namespace tapalong
