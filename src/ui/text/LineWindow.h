#pragma once

#include "ui/text/EmojiArt.h"
#include "ui/text/SessionFace.h"
#include "ui/text/ShapedLine.h"
#include "ui/text/TypedSequence.h"

#include <QHash>
#include <QTextLayout>

#include <cstddef>
#include <limits>
#include <vector>

namespace tapalong {

/// The fonts of one size, with what the lines of that size share.
struct LineStyle {
    SessionFace face;
    double width; ///< points
    EmojiArt& art;
    QFont cursorFont;
    QHash<QString, QFont> emojiFonts{};

    LineStyle(double size, double width, EmojiArt& art);
    /// From the picture's pixels to points.
    [[nodiscard]] double emojiScale() const;
    /// The one in which an emoji takes part in the breaking and ordering of lines: signs of no meaning, as wide as its
    /// picture.
    [[nodiscard]] QFont emojiFont(const QString& emoji);
};

/// One line, broken and shaped by the text engine among its neighbours: the line before it and more than a line's
/// length after it. It is a function of the characters in that window and of nothing else, which is what makes
/// laying out a few lines after a key the same as laying out everything.
class LineWindow {
public:
    /// The line that starts at `begin`; `contextBegin` is the start of a line before it in the same paragraph, or
    /// `begin` at a paragraph's start.
    LineWindow(LineStyle& style, const TypedSequence& text, std::size_t contextBegin, std::size_t begin);

    /// More than a line can hold of ordinary letters.
    [[nodiscard]] static std::size_t lettersOfLine(const LineStyle& style);

    static constexpr std::size_t everything = std::numeric_limits<std::size_t>::max();

    /// After the line's last character, its line break included.
    [[nodiscard]] std::size_t end() const { return m_end; }
    [[nodiscard]] bool endsParagraph() const { return m_endsParagraph; }
    /// After the last character that had a say; `everything` where it mattered that the text ends.
    [[nodiscard]] std::size_t dependsUntil() const { return m_dependsUntil; }

    /// Whether the next line's context is this one's too: this line has no letter, and what stands before it has.
    [[nodiscard]] bool carriesContextOn() const;

    [[nodiscard]] ShapedLine shaped() const;

private:
    struct Cluster {
        std::size_t typed; ///< the first of its characters
        int begin;         ///< in the laid-out text
        int length;
        bool isEmoji;
    };

    void findParagraphEnd();
    [[nodiscard]] bool layOut();
    void gatherClusters();
    void addCluster(std::size_t typed, std::string_view utf8);
    void addStandIn(const QString& standIn, const QFont& font);
    bool setContextLine();
    [[nodiscard]] std::size_t typedAt(int position) const;
    [[nodiscard]] bool hasLetter(std::size_t from, std::size_t to) const;
    void hangBlanks();
    void finish();

    LineStyle& m_style;
    const TypedSequence m_text;
    std::size_t m_context;
    const std::size_t m_begin;
    std::size_t m_lookAhead;
    std::size_t m_horizon = 0;
    bool m_seesEnd = false; ///< of the paragraph
    std::size_t m_end = 0;
    std::size_t m_dependsUntil = 0;
    bool m_endsParagraph = false;

    QString m_string;
    std::vector<Cluster> m_clusters;
    QList<QTextLayout::FormatRange> m_formats;
    QTextLayout m_layout;
    QTextLine m_line;
};

} // namespace tapalong
