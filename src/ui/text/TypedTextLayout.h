#pragma once

#include "session/TypedCharacter.h"
#include "ui/text/LineWindow.h"
#include "ui/text/ShapedLine.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <utility>
#include <vector>

namespace tapalong {

/// The lines of the typed text. After an edit only those lines are laid out again that it can have changed; the rest
/// stays, and the result is that of laying out everything. Measures in points.
class TypedTextLayout {
public:
    TypedTextLayout();

    // Each takes effect with the next update.
    void setFontSize(double size);
    void setWidth(double width);
    void setCursorShown(bool shown);

    /// Follows the text: characters come and go at its end, go at its front, or all go. Cheap for such an edit;
    /// any other is a new text. `characters` must live unchanged until the next update or the last use of the lines.
    void update(const TypedContent& characters);

    [[nodiscard]] std::size_t lineCount() const { return m_lines.size(); }
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
    [[nodiscard]] Range line(std::size_t index) const;
    /// What to draw; shaped when it is first asked for, from the characters of the last update, and kept for as long
    /// as somebody holds it.
    [[nodiscard]] std::shared_ptr<const ShapedLine> shaped(std::size_t index);
    /// Stays with the line while its number changes with what goes at the front.
    [[nodiscard]] std::uint64_t identity(std::size_t index) const { return m_lines[index].begin; }

    /// How many lines were laid out so far: what an edit costs.
    [[nodiscard]] std::uint64_t linesLaidOut() const { return m_linesLaidOut; }

private:
    // Positions count from the first character that was ever there, so that they outlast what goes at the front.
    using Position = std::uint64_t;

    struct Line {
        Position begin = 0;
        Position end = 0;
        Position dependsUntil = 0; ///< of this line and all before it
        bool startsParagraph = false;
        bool endsParagraph = false;
        std::weak_ptr<const ShapedLine> shaped{};
    };

    struct Edit {
        std::size_t dropped = 0; ///< at the front
        std::size_t kept = 0;    ///< of what followed
    };

    [[nodiscard]] Edit difference(const TypedContent& characters) const;
    void remember(const Edit& edit);
    void layOutFront();
    void layOutTail();
    [[nodiscard]] Line layOutLine(Position begin, bool startsParagraph, Position contextBegin);
    [[nodiscard]] ShapedLine shape(std::size_t index) const;
    [[nodiscard]] TypedSequence text() const { return {*m_characters, m_cursorShown}; }
    [[nodiscard]] Position textEnd() const { return m_base + text().size(); }

    EmojiArt m_art;
    double m_fontSize = 72;
    double m_width = 0;
    bool m_cursorShown = false;
    bool m_styleChanged = true;
    bool m_cursorWasShown = false;
    std::unique_ptr<LineStyle> m_style;

    const TypedContent* m_characters = nullptr;
    std::deque<Uuid> m_ids; ///< of the characters at the last update
    Position m_base = 0;    ///< of the first character
    std::deque<Line> m_lines;
    std::deque<std::pair<Position, std::unique_ptr<LineWindow>>>
        m_recent; ///< the last ones laid out, to be shaped next
    std::uint64_t m_linesLaidOut = 0;
};

} // namespace tapalong
