#include "ui/text/SessionFace.h"

#include "base/Fatal.h"
#include "views/WrappingHStack.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace tapalong {

namespace {

// Any letter spacing switches off the ligatures that would give two letters one colour; Arabic's own stay. The
// smallest that counts, a 64th of a unit, is not seen.
constexpr double noLigatures = 1.0 / 64;

double widthOf(const QString& text, const QFont& font) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setUseDesignMetrics(true);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(1e6);
    layout.endLayout();
    return line.naturalTextWidth();
}

} // namespace

QString SessionFace::emojiFamily() {
    static const QString family = [] {
        const QString wanted = QStringLiteral("Noto Color Emoji");
        return QFontDatabase::families().contains(wanted) ? wanted : QString();
    }();
    return family;
}

QStringList SessionFace::textFamilies() {
    // In Debian's package the medium weight is a family of its own: Quicksand at weight 500 is the thinner regular.
    QStringList families{QStringLiteral("Quicksand Medium"), QStringLiteral("Comfortaa")};
    return families << QGuiApplication::font().families();
}

QFont::Weight SessionFace::weight() {
    // Comfortaa has no medium; of its two the bold is nearer, with stems of 0.104 em where the other's have 0.078 and
    // Quicksand Medium's 0.099.
    static const QFont::Weight weight = [] {
        const QStringList present = QFontDatabase::families();
        const bool isFallback =
            !present.contains(QStringLiteral("Quicksand Medium")) && present.contains(QStringLiteral("Comfortaa"));
        return isFallback ? QFont::Bold : QFont::Medium;
    }();
    return weight;
}

SessionFace::SessionFace(double size) : m_size(size) {
    verify(std::isfinite(size) && size > 0, "the font size is a positive number");
    const int whole = std::max(1, static_cast<int>(std::lround(std::min(size, 4096.0))));
    m_scale = size / whole;
    m_font.setFamilies(textFamilies());
    m_font.setPixelSize(whole);
    m_font.setWeight(weight());
    m_font.setHintingPreference(QFont::PreferNoHinting);
    m_font.setLetterSpacing(QFont::AbsoluteSpacing, noLigatures);
    m_standIn = m_font;
    m_standIn.setLetterSpacing(QFont::AbsoluteSpacing, 0);
    m_standIn.setStyleStrategy(QFont::NoFontMerging);
    const QFontMetricsF metrics(m_font);
    m_ascent = metrics.ascent() * m_scale;
    m_descent = metrics.descent() * m_scale;
}

QFont SessionFace::standInFont(const QString& standIn, double advance) const {
    QFont font = m_standIn;
    const double natural = widthOf(standIn, font);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 1);
    const double spacings = widthOf(standIn, font) - natural; // one for each glyph that the fonts make of it
    font.setLetterSpacing(QFont::AbsoluteSpacing, (advance / m_scale - natural) / std::max(spacings, 1.0));
    return font;
}

double SessionFace::pitch() const {
    return lineHeight() + WrappingHStack::lineSpacing(m_size);
}

} // namespace tapalong
