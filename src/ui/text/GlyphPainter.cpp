#include "ui/text/GlyphPainter.h"

#include <QGlyphRun>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace tapalong {

namespace {

constexpr double farAway = 1e6;

/// Fonts that consist of pictures have this table; asked for an outline, they forget their pictures' size.
bool isBitmapFont(const QRawFont& font) {
    return !font.fontTable("CBLC").isEmpty() || !font.fontTable("sbix").isEmpty();
}

struct Shape {
    QPainterPath path; ///< of an outline font's glyphs, in pixels
    QGlyphRun bitmaps; ///< of a bitmap font's
    QRectF bounds;
    QRectF clip;
    QColor color;
};

Shape shapeOf(const GlyphPart& part, const Paint& paint) {
    Shape shape;
    shape.color = shownColor(part.color, paint.primary);
    const double left = std::max(part.clipLeft * paint.unit + paint.phase, -farAway);
    const double right = std::min(part.clipRight * paint.unit + paint.phase, farAway);
    shape.clip = QRectF(left, -farAway, right - left, 2 * farAway);
    const bool isBitmap = isBitmapFont(part.font);
    for (qsizetype i = 0; i < part.glyphs.size(); ++i) {
        QTransform toPixels;
        toPixels.translate(paint.phase, 0).scale(paint.unit, paint.unit);
        toPixels.translate(part.positions[i].x(), part.positions[i].y());
        if (isBitmap) {
            shape.bounds |= toPixels.mapRect(part.font.boundingRect(part.glyphs[i]));
        } else {
            shape.path.addPath(toPixels.map(part.font.pathForGlyph(part.glyphs[i])));
        }
    }
    if (isBitmap) {
        shape.bitmaps.setRawFont(part.font);
        shape.bitmaps.setGlyphIndexes(part.glyphs);
        shape.bitmaps.setPositions(part.positions);
    } else {
        shape.path.setFillRule(Qt::WindingFill);
        shape.bounds = shape.path.boundingRect();
    }
    shape.bounds &= shape.clip;
    return shape;
}

PaintedPiece paintText(const LinePiece& piece, const Paint& paint) {
    std::vector<Shape> shapes;
    QRectF bounds;
    for (const GlyphPart& part : piece.parts) {
        shapes.push_back(shapeOf(part, paint));
        bounds |= shapes.back().bounds;
    }
    const QRect pixels = bounds.toAlignedRect();
    if (pixels.isEmpty()) {
        return {};
    }
    PaintedPiece painted{QImage(pixels.size(), QImage::Format_ARGB32_Premultiplied), pixels.topLeft()};
    painted.image.fill(Qt::transparent);
    QPainter painter(&painted.image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.translate(-pixels.topLeft());
    for (const Shape& shape : shapes) {
        painter.setClipRect(shape.clip);
        painter.fillPath(shape.path, shape.color);
        if (!shape.bitmaps.isEmpty()) {
            painter.save();
            painter.translate(paint.phase, 0);
            painter.scale(paint.unit, paint.unit);
            painter.setPen(shape.color);
            painter.drawGlyphRun({}, shape.bitmaps);
            painter.restore();
        }
    }
    return painted;
}

PaintedPiece paintEmoji(const LinePiece& piece, const Paint& paint, const EmojiArt& art) {
    const QColor ink = piece.emojiInk ? shownColor(*piece.emojiInk, paint.primary) : paint.primary;
    const QImage picture = art.picture(piece.emoji, ink);
    const int top = static_cast<int>(std::lround(-art.ascent() * paint.emojiUnit));
    const QSize size(std::max(1, static_cast<int>(std::lround(picture.width() * paint.emojiUnit))),
                     std::max(1, static_cast<int>(std::lround(picture.height() * paint.emojiUnit))));
    return {picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation), {0, top}};
}

} // namespace

QColor shownColor(const Color& color, const QColor& primary) {
    if (const auto srgb = color.srgb()) {
        const auto part = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
        return QColor::fromRgbF(part(srgb->red), part(srgb->green), part(srgb->blue), part(srgb->opacity));
    }
    return primary;
}

PaintedPiece paintPiece(const LinePiece& piece, const Paint& paint, const EmojiArt& art) {
    return piece.emoji.isEmpty() ? paintText(piece, paint) : paintEmoji(piece, paint, art);
}

} // namespace tapalong
