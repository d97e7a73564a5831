#pragma once

#include "ui/text/EmojiArt.h"
#include "ui/text/ShapedLine.h"

#include <QColor>
#include <QImage>
#include <QPoint>

namespace tapalong {

/// A piece as pixels of the screen.
struct PaintedPiece {
    QImage image;  ///< premultiplied; null when there is nothing to see
    QPoint offset; ///< of its top left corner from the pixel that the piece's left edge and baseline meet in
};

/// How pieces of one look are painted.
struct Paint {
    double unit = 1;      ///< pixels to a layout unit
    double emojiUnit = 1; ///< pixels to a pixel of the emoji's picture
    double phase = 0;     ///< of the left edge within its pixel, 0 up to 1
    QColor primary{};     ///< the named colour of that name
};

/// Paints outlines as shapes and bitmaps scaled, both smooth at any size.
[[nodiscard]] PaintedPiece paintPiece(const LinePiece& piece, const Paint& paint, const EmojiArt& art);

/// The components of a typed colour, with the named ones as the desktop has them.
[[nodiscard]] QColor shownColor(const Color& color, const QColor& primary);

} // namespace tapalong
