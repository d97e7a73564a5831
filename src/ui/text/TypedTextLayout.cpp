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

void TypedTextLayout::update(const TypedContent& characters) {
    Edit edit = difference(characters);
    m_characters = &characters;
    if (std::exchange(m_styleChanged, false)) {
        m_recent.clear();
        m_style = std::make_unique<LineStyle>(m_fontSize, m_width, m_art);
        m_lines.clear();
    }
    const bool grown = edit.kept < characters.size();
    const bool shrunk = edit.dropped + edit.kept < m_ids.size();
    const bool cursorChanged = std::exchange(m_cursorWasShown, m_cursorShown) != m_cursorShown;
    remember(edit);
    if (grown || shrunk || cursorChanged || edit.dropped > 0) {
        m_recent.clear();
    }
    if (grown || shrunk || cursorChanged) {
        const Position firstChanged = m_base + edit.kept;
        while (!m_lines.empty() && m_lines.back().dependsUntil > firstChanged) {
            m_lines.pop_back();
        }
    }
    if (textEnd() == m_base) {
        m_lines.clear();
        return;
    }
    layOutFront();
    layOutTail();
}

TypedTextLayout::Edit TypedTextLayout::difference(const TypedContent& characters) const {
    if (characters.empty() || m_ids.empty()) {
        return {m_ids.size(), 0};
    }
    const auto first = std::find(m_ids.begin(), m_ids.end(), characters.front().id);
    const auto dropped = static_cast<std::size_t>(first - m_ids.begin());
    std::size_t kept = std::min(m_ids.size() - dropped, characters.size());
    // What stands before two that are the same is the same: characters come and go at the end only.
    while (kept > 0 && m_ids[dropped + kept - 1] != characters[kept - 1].id) {
        --kept;
    }
    return {dropped, kept};
}

void TypedTextLayout::remember(const Edit& edit) {
    m_base += edit.dropped;
    m_ids.erase(m_ids.begin(), m_ids.begin() + static_cast<std::ptrdiff_t>(edit.dropped));
    m_ids.resize(edit.kept);
    for (std::size_t i = edit.kept; i < m_characters->size(); ++i) {
        m_ids.push_back((*m_characters)[i].id);
    }
}

/// Lays out from the first character until a line begins where an old one did, after a line that began where the old
/// one's did: from there on nothing can differ.
void TypedTextLayout::layOutFront() {
    if (m_lines.empty() || (m_lines.front().begin == m_base && m_lines.front().startsParagraph)) {
        return;
    }
    std::deque<Line> old = std::exchange(m_lines, {});
    Position begin = m_base;
    Position contextBegin = begin;
    Position oldContextBegin = always;
    bool startsParagraph = true;
    while (!old.empty()) {
        while (!old.empty() && old.front().begin < begin) {
            oldContextBegin = old.front().begin;
            old.pop_front();
        }
        const bool sameStart =
            !old.empty() && old.front().begin == begin && old.front().startsParagraph == startsParagraph;
        if (sameStart && (startsParagraph || oldContextBegin == contextBegin)) {
            break;
        }
        if (old.empty()) {
            break;
        }
        m_lines.push_back(layOutLine(begin, startsParagraph, contextBegin));
        contextBegin = begin;
        begin = m_lines.back().end;
        startsParagraph = m_lines.back().endsParagraph;
    }
    Position dependsUntil = m_lines.empty() ? 0 : m_lines.back().dependsUntil;
    for (Line& line : old) {
        line.dependsUntil = dependsUntil = std::max(dependsUntil, line.dependsUntil);
        m_lines.push_back(std::move(line));
    }
}

void TypedTextLayout::layOutTail() {
    Position begin = m_base;
    Position contextBegin = begin;
    bool startsParagraph = true;
    if (!m_lines.empty()) {
        contextBegin = m_lines.back().begin;
        begin = m_lines.back().end;
        startsParagraph = m_lines.back().endsParagraph;
    }
    while (begin < textEnd() || startsParagraph) {
        m_lines.push_back(layOutLine(begin, startsParagraph, contextBegin));
        contextBegin = begin;
        begin = m_lines.back().end;
        startsParagraph = m_lines.back().endsParagraph;
    }
}

TypedTextLayout::Line TypedTextLayout::layOutLine(Position begin, bool startsParagraph, Position contextBegin) {
    const auto first = static_cast<std::size_t>(begin - m_base);
    const auto context = startsParagraph ? first : static_cast<std::size_t>(contextBegin - m_base);
    m_recent.emplace_back(begin, std::make_unique<LineWindow>(*m_style, text(), context, first));
    if (m_recent.size() > recentLines) {
        m_recent.pop_front();
    }
    const LineWindow& window = *m_recent.back().second;
    Line line;
    line.begin = begin;
    line.end = m_base + window.end();
    line.dependsUntil = window.dependsUntil() == LineWindow::everything ? always : m_base + window.dependsUntil();
    if (!m_lines.empty()) {
        line.dependsUntil = std::max(line.dependsUntil, m_lines.back().dependsUntil);
    }
    ++m_linesLaidOut;
    line.startsParagraph = startsParagraph;
    line.endsParagraph = window.endsParagraph();
    return line;
}

double TypedTextLayout::height() const {
    if (m_lines.empty()) {
        return 0;
    }
    return static_cast<double>(m_lines.size() - 1) * pitch() + face().lineHeight();
}

double TypedTextLayout::pitch() const {
    return m_style->face.pitch();
}

const SessionFace& TypedTextLayout::face() const {
    return m_style->face;
}

TypedTextLayout::Range TypedTextLayout::line(std::size_t index) const {
    const Line& found = m_lines[index];
    return {static_cast<std::size_t>(found.begin - m_base), static_cast<std::size_t>(found.end - m_base)};
}

ShapedLine TypedTextLayout::shape(std::size_t index) const {
    const Line& line = m_lines[index];
    for (const auto& [begin, window] : m_recent) {
        if (begin == line.begin) {
            return window->shaped();
        }
    }
    const auto first = static_cast<std::size_t>(line.begin - m_base);
    const auto context = line.startsParagraph ? first : static_cast<std::size_t>(m_lines[index - 1].begin - m_base);
    return LineWindow(*m_style, text(), context, first).shaped();
}

std::shared_ptr<const ShapedLine> TypedTextLayout::shaped(std::size_t index) {
    Line& found = m_lines.at(index);
    if (auto known = found.shaped.lock()) {
        return known;
    }
    auto made = std::make_shared<const ShapedLine>(shape(index));
    found.shaped = made;
    return made;
}

} // namespace tapalong
