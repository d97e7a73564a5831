#pragma once

#include "ui/text/ShapedLine.h"

#include <QStringView>
#include <QTextLayout>

#include <vector>

namespace tapalong {

/// Cuts a laid-out line into the pieces that are drawn on their own: the smaller they are the more often they recur.
class LinePieces {
public:
    /// `scale` takes the line's units to points.
    LinePieces(QTextLine line, double scale) : m_line(line), m_scale(scale) {}

    // In reading order; `position` is where the text stands in the layout.
    void addText(QStringView text, int position, const Color& color);
    void addEmoji(int position, int length, const QString& cluster, const Color& ink);

    [[nodiscard]] std::vector<LinePiece> take();

private:
    struct Stripe {
        double start;          ///< x of the character's first edge in reading order
        std::size_t firstPart; ///< in the open piece
    };

    [[nodiscard]] std::vector<GlyphPart> glyphsOf(int position, int length, const Color& color) const;
    [[nodiscard]] bool sharesGlyphs(const std::vector<GlyphPart>& parts) const;
    void closePiece();
    void shareGlyphs();

    const QTextLine m_line;
    const double m_scale;
    std::vector<LinePiece> m_pieces;
    std::vector<GlyphPart> m_open;
    std::vector<Stripe> m_sharing; ///< the open piece's last character, after those that show the same glyphs
    int m_lastScript = 0;
};

} // namespace tapalong
