#pragma once

#include "ui/text/ShapedLine.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>

namespace tapalong {

/// Lines that follow each other. Positions count from the first character that was ever there, so that they outlast
/// what goes at the front.
class LineChain {
public:
    using Position = std::uint64_t;

    /// All that a line depends on beside the characters: where it begins, and where a line before it in its paragraph
    /// did, mostly the last one (`begin` itself where a paragraph starts).
    struct Start {
        Position begin = 0;
        Position contextBegin = 0;

        bool operator==(const Start&) const = default;
    };

    struct Line {
        Start start;
        Position end = 0;          ///< after its line break, where there is one
        Position dependsUntil = 0; ///< of this line and all before it in the chain
        Position contextOfNext = 0;
        bool endsParagraph = false;
        mutable std::weak_ptr<const ShapedLine> shaped{}; ///< kept by whoever draws it
    };

    [[nodiscard]] bool isEmpty() const { return m_lines.empty(); }
    [[nodiscard]] std::size_t size() const { return m_lines.size(); }
    [[nodiscard]] Line& operator[](std::size_t index) { return m_lines[index]; }
    [[nodiscard]] const Line& operator[](std::size_t index) const { return m_lines[index]; }
    [[nodiscard]] const Line& front() const { return m_lines.front(); }
    [[nodiscard]] const Line& back() const { return m_lines.back(); }

    /// Of the line that comes after these; a paragraph's at `first` when there are none.
    [[nodiscard]] Start next(Position first) const;
    void append(Line line);
    /// Puts `before` in front of these lines.
    void join(LineChain before);

    void clear() { m_lines.clear(); }
    /// Lets go, from the end, what a change from `position` on may have changed.
    void forgetFrom(Position position);
    /// Lets go the lines that begin before `position`, and says how many.
    std::size_t forgetUntil(Position position);

private:
    std::deque<Line> m_lines;
};

} // namespace tapalong
