#pragma once

#include <QFont>
#include <QHash>
#include <QImage>
#include <QString>

namespace tapalong {

/// The pictures of the emoji font, each drawn at the size it was painted at. A text engine unpacks them again and
/// again, at each measuring too, which costs more than all else that a key does: so emoji are measured and drawn here
/// and never take part in the layout themselves.
class EmojiArt {
public:
    /// The size that the pictures are drawn at; all measures are in its pixels.
    static constexpr int emSize = 128;

    EmojiArt();

    /// How far the font reaches above and below the baseline.
    [[nodiscard]] double ascent() const { return m_ascent; }
    [[nodiscard]] double descent() const { return m_descent; }

    [[nodiscard]] double advance(const QString& cluster);
    /// As wide as the advance and as high as ascent and descent; premultiplied. Where the font has no picture, other
    /// fonts' signs in `ink`.
    [[nodiscard]] QImage picture(const QString& cluster, const QColor& ink) const;

private:
    QFont m_font;
    double m_ascent = 0;
    double m_descent = 0;
    QHash<QString, double> m_advances;
};

} // namespace tapalong
