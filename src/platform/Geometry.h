#pragma once

namespace tapalong {

/// A point in points (device-independent pixels). Screen points have their origin at the bottom-left corner of the
/// main screen, y growing upwards.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

/// A rectangle in the same coordinates; (x, y) is its bottom-left corner.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double minX() const { return x; }
    [[nodiscard]] double minY() const { return y; }
    [[nodiscard]] double maxX() const { return x + width; }
    [[nodiscard]] double maxY() const { return y + height; }

    /// The pixels of a screen begin at its top-left corner: its left and top edges are its own, its right and bottom
    /// edges belong to the next screen.
    [[nodiscard]] bool contains(Point p) const {
        return p.x >= minX() && p.x < maxX() && p.y > minY() && p.y <= maxY();
    }

    bool operator==(const Rect&) const = default;
};

} // namespace tapalong
