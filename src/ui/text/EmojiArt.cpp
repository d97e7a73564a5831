#include "ui/text/EmojiArt.h"

#include "ui/text/SessionFace.h"

#include <QGlyphRun>
#include <QPainter>
#include <QTextLayout>

#include <cmath>

namespace tapalong {

namespace {

constexpr qsizetype knownAdvances = 4096; // what an emoji keyboard can type fits in
constexpr double wide = 1e6;

/// Asking for the emoji style is done with; left in, it falls to another font and keeps the rest from composing.
QString bare(QString cluster) {
    return cluster.remove(QChar(0xFE0F));
}

QTextLine laidOut(QTextLayout& layout) {
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(wide);
    layout.endLayout();
    return line;
}

} // namespace

EmojiArt::EmojiArt() {
    m_font.setFamilies(QStringList(SessionFace::emojiFamily()) + SessionFace::textFamilies());
    m_font.setPixelSize(emSize);
    m_font.setHintingPreference(QFont::PreferNoHinting);
    QTextLayout layout(QStringLiteral("\U0001F600"), m_font);
    const QTextLine line = laidOut(layout);
    m_ascent = line.ascent();
    m_descent = line.descent();
}

double EmojiArt::advance(const QString& cluster) {
    const auto known = m_advances.constFind(cluster);
    if (known != m_advances.cend()) {
        return *known;
    }
    QTextLayout layout(bare(cluster), m_font);
    const double advance = laidOut(layout).naturalTextWidth();
    if (m_advances.size() >= knownAdvances) {
        m_advances.clear();
    }
    m_advances.insert(cluster, advance);
    return advance;
}

QImage EmojiArt::picture(const QString& cluster, const QColor& ink) const {
    QTextLayout layout(bare(cluster), m_font);
    const QTextLine line = laidOut(layout);
    const int width = std::max(1, static_cast<int>(std::ceil(line.naturalTextWidth())));
    const int height = std::max(1, static_cast<int>(std::ceil(m_ascent + m_descent)));
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(ink);
    for (const QGlyphRun& run : layout.glyphRuns()) {
        painter.drawGlyphRun(QPointF(0, m_ascent - line.ascent()), run);
    }
    return image;
}

} // namespace tapalong
