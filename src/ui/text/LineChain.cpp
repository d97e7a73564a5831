#include "ui/text/LineChain.h"

#include <algorithm>
#include <utility>

namespace tapalong {

LineChain::Start LineChain::next(Position first) const {
    if (m_lines.empty()) {
        return {first, first};
    }
    const Line& last = m_lines.back();
    return {last.end, last.endsParagraph ? last.end : last.contextOfNext};
}

void LineChain::append(Line line) {
    if (!m_lines.empty()) {
        line.dependsUntil = std::max(line.dependsUntil, m_lines.back().dependsUntil);
    }
    m_lines.push_back(std::move(line));
}

void LineChain::join(LineChain before) {
    if (before.isEmpty()) {
        return;
    }
    const Position dependsUntil = before.back().dependsUntil;
    for (auto line = m_lines.begin(); line != m_lines.end() && line->dependsUntil < dependsUntil; ++line) {
        line->dependsUntil = dependsUntil;
    }
    m_lines.insert(m_lines.begin(), std::make_move_iterator(before.m_lines.begin()),
                   std::make_move_iterator(before.m_lines.end()));
}

void LineChain::forgetFrom(Position position) {
    while (!m_lines.empty() && m_lines.back().dependsUntil > position) {
        m_lines.pop_back();
    }
}

std::size_t LineChain::forgetUntil(Position position) {
    const auto first = std::find_if(m_lines.begin(), m_lines.end(),
                                    [position](const Line& line) { return line.start.begin >= position; });
    const auto count = static_cast<std::size_t>(first - m_lines.begin());
    m_lines.erase(m_lines.begin(), first);
    return count;
}

} // namespace tapalong
