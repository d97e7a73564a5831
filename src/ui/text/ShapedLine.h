#pragma once

#include "settings/Color.h"

#include <QByteArray>
#include <QList>
#include <QPointF>
#include <QRawFont>
#include <QString>

#include <limits>
#include <optional>
#include <vector>

namespace tapalong {

/// Glyphs of one font in one colour. Measures are in layout units, from the piece's left edge and the baseline.
struct GlyphPart {
    QRawFont font;
    QList<quint32> glyphs;
    QList<QPointF> positions;
    Color color;
    // Where several characters share a glyph, the stripe of it that belongs to this one.
    double clipLeft = -std::numeric_limits<double>::infinity();
    double clipRight = std::numeric_limits<double>::infinity();
};

/// What is drawn as one picture: a character with its marks, a run of joined letters, or an emoji.
struct LinePiece {
    double x = 0;   ///< of the left edge, in points from the line's
    QByteArray key; ///< pieces of one face with equal keys look the same
    std::vector<GlyphPart> parts;
    QString emoji; ///< in place of parts
    std::optional<Color> emojiInk;
};

/// A line ready to be drawn, what is at the left first in reading order.
struct ShapedLine {
    std::vector<LinePiece> pieces;
    std::optional<double> cursorX; ///< points
};

} // namespace tapalong
