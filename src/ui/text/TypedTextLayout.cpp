#include "ui/text/TypedTextLayout.h"

#include "base/Fatal.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tapalong {

namespace {

constexpr std::size_t recentLines = 4; // as many as a key lays out
constexpr auto always = std::numeric_limits<std::uint64_t>::max();

} // namespace

TypedTextLayout::TypedTextLayout() : m_style(std::make_unique<LineStyle>(m_fontSize, m_width, m_art)) {}

void TypedTextLayout::setFontSize(double size) {
    m_styleChanged |= std::exchange(m_fontSize, size) != size;
}

void TypedTextLayout::setWidth(double width) {
    m_styleChanged |= std::exchange(m_width, width) != width;
}

void TypedTextLayout::setCursorShown(bool shown) {
    m_cursorShown = shown;
}

void TypedTextLayout::setLinesInView(std::size_t count) {
    m_linesInView = count;
}

void TypedTextLayout::update(const TypedContent& characters) {
    const Edit edit = difference(characters);
    const bool moved = std::exchange(m_characters, &characters) != &characters;
    if (std::exchange(m_styleChanged, false)) {
        m_recent.clear();
        m_style = std::make_unique<LineStyle>(m_fontSize, m_width, m_art);
        forgetLines();
    }
    const bool cursorChanged = std::exchange(m_cursorWasShown, m_cursorShown) != m_cursorShown;
    const bool endChanged = edit.kept < characters.size() || edit.dropped + edit.kept < m_ids.size() || cursorChanged;
    remember(edit);
    if (endChanged || edit.dropped > 0 || moved) {
        m_recent.clear();
    }
    if (endChanged) {
        m_tail.forgetFrom(m_base + edit.kept);
        m_front.forgetFrom(m_base + edit.kept);
    }
    if (textEnd() == m_base) {
        forgetLines();
        return;
    }
    if (edit.dropped > 0) {
        cutFront();
    }
    layOutTail();
    layOutMore(m_linesInView);
}

TypedTextLayout::Edit TypedTextLayout::difference(const TypedContent& characters) const {
    if (characters.empty() || m_ids.empty()) {
        return {m_ids.size(), 0};
    }
    const auto first = std::find(m_ids.begin(), m_ids.end(), characters.front().id.low);
    const auto dropped = static_cast<std::size_t>(first - m_ids.begin());
    std::size_t kept = std::min(m_ids.size() - dropped, characters.size());
    // What stands before two that are the same is the same: characters come and go at the end only.
    while (kept > 0 && m_ids[dropped + kept - 1] != characters[kept - 1].id.low) {
        --kept;
    }
    return {dropped, kept};
}

void TypedTextLayout::remember(const Edit& edit) {
    m_base += edit.dropped;
    m_ids.erase(m_ids.begin(), m_ids.begin() + static_cast<std::ptrdiff_t>(edit.dropped));
    m_ids.resize(edit.kept);
    for (std::size_t i = edit.kept; i < m_characters->size(); ++i) {
        m_ids.push_back((*m_characters)[i].id.low);
    }
}

void TypedTextLayout::forgetLines() {
    m_front.clear();
    m_tail.clear();
    m_hasGap = false;
    m_gapLines = 0;
}

/// The lines that are left keep their breaks for now.
void TypedTextLayout::cutFront() {
    m_front.clear();
    m_tail.forgetUntil(m_base);
    m_hasGap = !m_tail.isEmpty() && m_tail.front().start != LineChain::Start{m_base, m_base};
    expectGap();
}

void TypedTextLayout::expectGap() {
    m_gapLines = 0;
    if (m_hasGap) {
        const Position end = m_tail.front().start.begin;
        const Position missing = end - m_front.next(m_base).begin;
        const Position known = std::max<Position>(textEnd() - end, 1); // none on the line after a last line break
        m_gapLines = static_cast<std::size_t>((missing * m_tail.size() + known - 1) / known);
    }
}

/// From where to lay out what is seen: enough before it for its lines to become those of a layout from the front, if
/// they ever do, and at the start of a paragraph where one is near, from which on they are the same for certain.
TypedTextLayout::Position TypedTextLayout::likelyStart() const {
    const Position first = m_front.next(m_base).begin;
    const std::size_t enough = 2 * m_linesInView * LineWindow::lettersOfLine(*m_style);
    if (m_linesInView == 0 || textEnd() - first <= 2 * enough) {
        return first;
    }
    const auto latest = static_cast<std::size_t>(textEnd() - m_base) - enough;
    for (std::size_t i = latest; i > latest - enough; --i) {
        if (text().isLineBreak(i - 1)) {
            return m_base + i;
        }
    }
    std::size_t start = latest;
    while (start > latest - enough && !text().isBlank(start - 1)) {
        --start;
    }
    return m_base + start;
}

void TypedTextLayout::layOutTail() {
    if (m_hasGap && m_tail.size() < m_linesInView) {
        m_tail.clear();
    }
    LineChain::Start start = m_tail.next(m_base);
    const bool isNew = m_tail.isEmpty();
    if (isNew) {
        const Position likely = likelyStart();
        m_hasGap = likely > m_front.next(m_base).begin;
        start = {likely, likely};
        if (!m_hasGap) {
            m_tail = std::exchange(m_front, {});
            start = m_tail.next(m_base);
        }
    }
    while (start.begin < textEnd() || m_tail.isEmpty() || m_tail.back().endsParagraph) {
        m_tail.append(layOutLine(start));
        start = m_tail.next(m_base);
    }
    if (isNew) {
        expectGap();
    }
}

void TypedTextLayout::complete() {
    layOutMore(std::numeric_limits<std::size_t>::max());
}

void TypedTextLayout::layOutMore(std::size_t lines) {
    // Where the final lines come into view they all do.
    while (m_hasGap && (lines > 0 || m_linesInView == 0 || m_tail.size() < m_linesInView)) {
        extendFront();
        lines -= std::min<std::size_t>(lines, 1);
    }
}

void TypedTextLayout::extendFront() {
    const LineChain::Start start = m_front.next(m_base);
    m_gapLines += m_tail.forgetUntil(start.begin);
    if (m_tail.isEmpty() || m_tail.front().start == start) {
        closeGap();
        return;
    }
    m_front.append(layOutLine(start));
    m_gapLines -= std::min<std::size_t>(m_gapLines, 1);
}

void TypedTextLayout::closeGap() {
    m_tail.join(std::exchange(m_front, {}));
    m_hasGap = false;
    m_gapLines = 0;
    layOutTail();
}

std::unique_ptr<LineWindow> TypedTextLayout::window(LineChain::Start start) const {
    // The line before one whose paragraph was cut may be gone.
    const Position context = std::max(start.contextBegin, m_base);
    return std::make_unique<LineWindow>(*m_style, text(), static_cast<std::size_t>(context - m_base),
                                        static_cast<std::size_t>(start.begin - m_base));
}

TypedTextLayout::Line TypedTextLayout::layOutLine(LineChain::Start start) {
    RecentWindow& recent = m_recent.emplace_back();
    recent.start = start;
    recent.window = window(start);
    if (m_recent.size() > recentLines) {
        m_recent.pop_front();
    }
    const LineWindow& laidOut = *m_recent.back().window;
    Line line;
    line.start = start;
    line.end = m_base + laidOut.end();
    line.dependsUntil = laidOut.dependsUntil() == LineWindow::everything ? always : m_base + laidOut.dependsUntil();
    line.contextOfNext = laidOut.carriesContextOn() ? start.contextBegin : start.begin;
    line.endsParagraph = laidOut.endsParagraph();
    ++m_linesLaidOut;
    return line;
}

double TypedTextLayout::height() const {
    if (lineCount() == 0) {
        return 0;
    }
    return static_cast<double>(lineCount() - 1) * pitch() + face().lineHeight();
}

double TypedTextLayout::pitch() const {
    return m_style->face.pitch();
}

const SessionFace& TypedTextLayout::face() const {
    return m_style->face;
}

const LineChain::Line& TypedTextLayout::at(std::size_t index) const {
    if (index < m_front.size()) {
        return m_front[index];
    }
    const std::size_t before = m_front.size() + m_gapLines;
    verify(index >= before && index < lineCount(), "a line must have been laid out to be looked at");
    return m_tail[index - before];
}

TypedTextLayout::Range TypedTextLayout::line(std::size_t index) const {
    const Line& found = at(index);
    return {static_cast<std::size_t>(found.start.begin - m_base), static_cast<std::size_t>(found.end - m_base)};
}

ShapedLine TypedTextLayout::shape(const Line& line) const {
    const auto known = std::find_if(m_recent.begin(), m_recent.end(),
                                    [&](const RecentWindow& recent) { return recent.start == line.start; });
    if (known != m_recent.end()) {
        return known->window->shaped();
    }
    const auto made = window(line.start);
    return made->shaped();
}

std::shared_ptr<const ShapedLine> TypedTextLayout::shaped(std::size_t index) {
    const Line& found = at(index);
    if (auto known = found.shaped.lock()) {
        return known;
    }
    auto made = std::make_shared<const ShapedLine>(shape(found));
    found.shaped = made;
    return made;
}

} // namespace tapalong
