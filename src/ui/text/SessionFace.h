#pragma once

#include <QFont>

namespace tapalong {

/// The face of the typed text at one size: rounded, of medium weight. Text is laid out with whole-numbered font
/// sizes, as QFont has them; `scale()` takes such a unit to points.
class SessionFace {
public:
    /// The family that has colour emoji; empty when the desktop has none.
    [[nodiscard]] static QString emojiFamily();
    /// The text's families, most wanted first.
    [[nodiscard]] static QStringList textFamilies();
    /// To ask for, to get one that looks medium.
    [[nodiscard]] static QFont::Weight weight();

    /// Fatal unless the size is finite and positive.
    explicit SessionFace(double size);

    [[nodiscard]] double size() const { return m_size; }
    [[nodiscard]] const QFont& font() const { return m_font; }
    [[nodiscard]] double scale() const { return m_scale; }

    /// A font in which that text, one character, is as wide as asked, in points, whatever fonts there are. It asks
    /// nothing of the emoji font.
    [[nodiscard]] QFont standInFont(const QString& standIn, double advance) const;

    // In points. All lines share these, whatever other fonts they draw on.
    [[nodiscard]] double ascent() const { return m_ascent; }
    [[nodiscard]] double descent() const { return m_descent; }
    [[nodiscard]] double lineHeight() const { return m_ascent + m_descent; }
    /// From one line's top to the next line's.
    [[nodiscard]] double pitch() const;
    [[nodiscard]] double cursorAdvance() const { return m_size * 0.25; }
    [[nodiscard]] double cursorWidth() const { return m_size * 0.2; }

private:
    double m_size;
    double m_scale = 1;
    double m_ascent = 0;
    double m_descent = 0;
    QFont m_font;
    QFont m_standIn;
};

/// Stands for the cursor: the glyph that it is.
inline constexpr char16_t cursorStandIn = 0x258E;

} // namespace tapalong
