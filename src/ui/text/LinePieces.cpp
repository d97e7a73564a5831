#include "ui/text/LinePieces.h"

#include <QChar>
#include <QDataStream>
#include <QHash>
#include <QIODevice>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tapalong {

namespace {

constexpr double keyPrecision = 64; // the text engine's own

/// Fonts are told apart for as long as the program runs: a font that went could leave its address to another.
int fontNumber(const QRawFont& font) {
    static QHash<QRawFont, int> numbers;
    const auto found = numbers.constFind(font);
    if (found != numbers.cend()) {
        return *found;
    }
    const auto number = static_cast<int>(numbers.size());
    numbers.insert(font, number);
    return number;
}

/// Scripts whose letters touch: along a joining stroke or a headline. Zero for all others.
int joiningScript(QStringView text) {
    const char32_t scalar = text.toUcs4().value(0);
    if (!QChar::isLetter(scalar) && !QChar::isMark(scalar)) {
        return 0;
    }
    const auto script = QChar::script(scalar);
    switch (script) {
    case QChar::Script_Arabic:
    case QChar::Script_Syriac:
    case QChar::Script_Mandaic:
    case QChar::Script_Nko:
    case QChar::Script_Mongolian:
    case QChar::Script_Devanagari:
    case QChar::Script_Bengali:
    case QChar::Script_Gurmukhi:
        return static_cast<int>(script);
    default:
        return 0;
    }
}

bool isSpace(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.isSpace(); });
}

void writeColor(QDataStream& key, const Color& color) {
    if (const auto named = color.named()) {
        key << static_cast<quint8>(*named);
    } else {
        const auto srgb = color.srgb().value();
        key << quint8{0xFF} << srgb.red << srgb.green << srgb.blue << srgb.opacity;
    }
}

qint32 rounded(double value) {
    constexpr double far = 1e7;
    return static_cast<qint32>(std::lround(std::clamp(value, -far, far) * keyPrecision));
}

QByteArray keyOf(const std::vector<GlyphPart>& parts) {
    QByteArray bytes;
    QDataStream key(&bytes, QIODevice::WriteOnly);
    for (const GlyphPart& part : parts) {
        key << fontNumber(part.font) << rounded(part.clipLeft) << rounded(part.clipRight);
        writeColor(key, part.color);
        for (qsizetype i = 0; i < part.glyphs.size(); ++i) {
            key << part.glyphs[i] << rounded(part.positions[i].x()) << rounded(part.positions[i].y());
        }
    }
    return bytes;
}

double leftOf(const std::vector<GlyphPart>& parts) {
    double left = std::numeric_limits<double>::infinity();
    for (const GlyphPart& part : parts) {
        for (const QPointF& position : part.positions) {
            left = std::min(left, position.x());
        }
    }
    return left;
}

void moveBy(std::vector<GlyphPart>& parts, double dx) {
    for (GlyphPart& part : parts) {
        for (QPointF& position : part.positions) {
            position.rx() += dx;
        }
        part.clipLeft += dx;
        part.clipRight += dx;
    }
}

} // namespace

std::vector<GlyphPart> LinePieces::glyphsOf(int position, int length, const Color& color) const {
    std::vector<GlyphPart> parts;
    const double baseline = m_line.y() + m_line.ascent();
    for (const QGlyphRun& run : m_line.glyphRuns(position, length)) {
        if (run.isEmpty()) {
            continue;
        }
        GlyphPart part{run.rawFont(), run.glyphIndexes(), run.positions(), color};
        for (QPointF& glyph : part.positions) {
            glyph.ry() -= baseline;
        }
        parts.push_back(std::move(part));
    }
    return parts;
}

bool LinePieces::sharesGlyphs(const std::vector<GlyphPart>& parts) const {
    if (m_sharing.empty() || m_sharing.back().firstPart >= m_open.size() || parts.empty()) {
        return false;
    }
    const GlyphPart& last = m_open[m_sharing.back().firstPart];
    const GlyphPart& next = parts.front();
    return last.font == next.font && last.glyphs == next.glyphs && last.positions == next.positions;
}

void LinePieces::addText(QStringView text, int position, const Color& color) {
    if (isSpace(text)) {
        closePiece();
        return;
    }
    auto parts = glyphsOf(position, static_cast<int>(text.size()), color);
    const int script = joiningScript(text);
    if (!sharesGlyphs(parts)) {
        if (script != 0 && script == m_lastScript) {
            shareGlyphs();
        } else {
            closePiece();
        }
    }
    m_lastScript = script;
    m_sharing.push_back({m_line.cursorToX(position), m_open.size()});
    std::move(parts.begin(), parts.end(), std::back_inserter(m_open));
}

/// Where one glyph stands for several characters each has its colour on its share of the width.
void LinePieces::shareGlyphs() {
    for (std::size_t i = 1; i < m_sharing.size(); ++i) {
        const double border = m_sharing[i].start;
        GlyphPart& before = m_open[m_sharing[i - 1].firstPart];
        GlyphPart& after = m_open[m_sharing[i].firstPart];
        const bool leftToRight = m_sharing[i - 1].start < border;
        (leftToRight ? before.clipRight : before.clipLeft) = border;
        (leftToRight ? after.clipLeft : after.clipRight) = border;
    }
    m_sharing.clear();
}

void LinePieces::closePiece() {
    shareGlyphs();
    if (!m_open.empty()) {
        const double left = leftOf(m_open);
        moveBy(m_open, -left);
        LinePiece piece;
        piece.x = left * m_scale;
        piece.key = keyOf(m_open);
        piece.parts = std::exchange(m_open, {});
        m_pieces.push_back(std::move(piece));
    }
    m_lastScript = 0;
}

void LinePieces::addEmoji(int position, int length, const QString& cluster, const Color& ink) {
    closePiece();
    LinePiece piece;
    const auto standIn = glyphsOf(position, length, ink);
    piece.x = (standIn.empty() ? m_line.cursorToX(position) : leftOf(standIn)) * m_scale;
    piece.key = "emoji " + cluster.toUtf8();
    piece.emoji = cluster;
    piece.emojiInk = ink;
    m_pieces.push_back(std::move(piece));
}

std::vector<LinePiece> LinePieces::take() {
    closePiece();
    return std::exchange(m_pieces, {});
}

} // namespace tapalong
