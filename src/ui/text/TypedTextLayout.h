#pragma once

#include "session/TypedCharacter.h"
#include "ui/text/LineChain.h"
#include "ui/text/LineWindow.h"
#include "ui/text/ShapedLine.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <utility>

namespace tapalong {

/// The lines of the typed text. After an edit only those lines are laid out again that it can have changed; the rest
/// stays, and the result is that of laying out everything. Measures in points.
///
/// Where a line begins depends on all lines of its paragraph before it. What goes at the front of a long paragraph, and
/// a new width or size, may therefore change everything, nearly all of it far above what is seen. So an update lays
/// out a few lines only, and the rest is left to further ones of the same text. Until then there is a gap between lines
/// from the first character on, which are final, and lines up to the end of the text, which are those of before or of a
/// start at a likely place; lines that begin at the same place after the same line are the same, and so the two meet.
class TypedTextLayout {
public:
    TypedTextLayout();

    // Each takes effect with the next update.
    void setFontSize(double size);
    void setWidth(double width);
    void setCursorShown(bool shown);
    /// How many lines are seen when the end of the text is; 0 for all of them, however many.
    void setLinesInView(std::size_t count);

    /// Follows the text: characters come and go at its end, go at its front, or all go. Cheap for such an edit;
    /// any other is a new text. `characters` must live unchanged until the next update or the last use of the lines.
    void update(const TypedContent& characters);

    [[nodiscard]] bool isComplete() const { return !m_hasGap; }
    /// Closes the gap now. How many lines there are may change by that.
    void complete();

    /// An estimate while there is a gap.
    [[nodiscard]] std::size_t lineCount() const { return m_front.size() + m_gapLines + m_tail.size(); }
    /// From which on the lines up to the end are there.
    [[nodiscard]] std::size_t firstLineOfEnd() const { return m_hasGap ? m_front.size() + m_gapLines : 0; }
    /// Of all lines with the space between them.
    [[nodiscard]] double height() const;
    /// From one line's top to the next one's.
    [[nodiscard]] double pitch() const;
    [[nodiscard]] const SessionFace& face() const;
    [[nodiscard]] double emojiScale() const { return m_style->emojiScale(); }
    [[nodiscard]] const EmojiArt& emojiArt() const { return m_art; }

    struct Range {
        std::size_t begin; ///< in the characters
        std::size_t end;   ///< after the line break, where there is one; the cursor counts as a character

        bool operator==(const Range&) const = default;
    };
    // Of a line that is there: not in the gap.
    [[nodiscard]] Range line(std::size_t index) const;
    /// What to draw; shaped when it is first asked for, from the characters of the last update, and kept for as long
    /// as somebody holds it.
    [[nodiscard]] std::shared_ptr<const ShapedLine> shaped(std::size_t index);
    /// Stays with the line while its number changes with what goes at the front.
    [[nodiscard]] std::uint64_t identity(std::size_t index) const { return at(index).start.begin; }

    /// How many lines were laid out so far: what an edit costs.
    [[nodiscard]] std::uint64_t linesLaidOut() const { return m_linesLaidOut; }

private:
    using Position = LineChain::Position;
    using Line = LineChain::Line;

    struct Edit {
        std::size_t dropped = 0; ///< at the front
        std::size_t kept = 0;    ///< of what followed
    };

    struct RecentWindow {
        LineChain::Start start;
        std::unique_ptr<LineWindow> window;
    };

    [[nodiscard]] Edit difference(const TypedContent& characters) const;
    void remember(const Edit& edit);
    void forgetLines();
    void cutFront();
    void layOutTail();
    [[nodiscard]] Position likelyStart() const;
    void expectGap();
    void layOutMore(std::size_t lines);
    void extendFront();
    void closeGap();
    [[nodiscard]] Line layOutLine(LineChain::Start start);
    [[nodiscard]] const Line& at(std::size_t index) const;
    [[nodiscard]] std::unique_ptr<LineWindow> window(LineChain::Start start) const;
    [[nodiscard]] ShapedLine shape(const Line& line) const;
    [[nodiscard]] TypedSequence text() const { return {*m_characters, m_cursorShown}; }
    [[nodiscard]] Position textEnd() const { return m_base + text().size(); }

    EmojiArt m_art;
    double m_fontSize = 72;
    double m_width = 0;
    std::size_t m_linesInView = 0;
    bool m_cursorShown = false;
    bool m_styleChanged = true;
    bool m_cursorWasShown = false;
    std::unique_ptr<LineStyle> m_style;

    const TypedContent* m_characters = nullptr;
    std::deque<std::uint64_t> m_ids; ///< of the characters at the last update; half of each is random enough
    Position m_base = 0;             ///< of the first character
    bool m_hasGap = false;
    LineChain m_front; ///< before the gap; empty when there is none
    std::size_t m_gapLines = 0;
    LineChain m_tail;
    std::deque<RecentWindow> m_recent; ///< the last ones laid out, to be shaped next
    std::uint64_t m_linesLaidOut = 0;
};

} // namespace tapalong
