#include "ui/text/LineWindow.h"

#include "text/GraphemeBreak.h"
#include "ui/text/Emoji.h"
#include "ui/text/LinePieces.h"

#include <QTextOption>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace tapalong {

namespace {

/// Letters on an em's width of line: more than a reader's face has, so that one window is nearly always enough.
constexpr double lettersPerEm = 3;
constexpr std::size_t shortestLookAhead = 24;
constexpr std::size_t longestLookAhead = 4096; // a line of more is thousands of marks on one letter
/// What follows a line's end must reach this far for the end to be certain: letters change shape by what follows.
constexpr std::size_t margin = 8;
constexpr qsizetype knownEmojiFonts = 4096;          // what an emoji keyboard can type fits in
constexpr double emojiEm = 150.0 / EmojiArt::emSize; // the font's own proportion: its pictures exceed the em

QTextOption option(QTextOption::WrapMode mode) {
    QTextOption result;
    result.setWrapMode(mode);
    result.setTextDirection(Qt::LeftToRight);
    result.setUseDesignMetrics(true);
    return result;
}

} // namespace

LineStyle::LineStyle(double size, double lineWidth, EmojiArt& emojiArt)
    : face(size), width(lineWidth), art(emojiArt),
      cursorFont(face.standInFont(QChar(cursorStandIn), face.cursorAdvance())) {}

double LineStyle::emojiScale() const {
    // An emoji never reaches beyond the line that it stands in.
    return std::min(
        {face.size() * emojiEm / EmojiArt::emSize, face.ascent() / art.ascent(), face.descent() / art.descent()});
}

QFont LineStyle::emojiFont(const QString& emoji) {
    const auto found = emojiFonts.constFind(emoji);
    if (found != emojiFonts.cend()) {
        return *found;
    }
    if (emojiFonts.size() >= knownEmojiFonts) {
        emojiFonts.clear();
    }
    return *emojiFonts.insert(emoji, face.standInFont(emoji, art.advance(emoji) * emojiScale()));
}

std::size_t LineWindow::lettersOfLine(const LineStyle& style) {
    constexpr double most = 1000;
    return std::max(shortestLookAhead,
                    static_cast<std::size_t>(std::min(lettersPerEm * style.width / style.face.size(), most)));
}

LineWindow::LineWindow(LineStyle& style, const TypedSequence& text, std::size_t contextBegin, std::size_t begin)
    : m_style(style), m_text(text), m_begin(begin), m_lookAhead(lettersOfLine(style)) {
    m_context = begin - std::min(begin - contextBegin, m_lookAhead);
    while (!layOut()) {
        m_lookAhead *= 2;
    }
}

void LineWindow::findParagraphEnd() {
    const std::size_t limit = std::min(m_text.size(), m_begin + m_lookAhead);
    m_horizon = m_begin;
    while (m_horizon < limit && !m_text.isLineBreak(m_horizon)) {
        ++m_horizon;
    }
    m_seesEnd = m_horizon == m_text.size() || m_text.isLineBreak(m_horizon);
}

void LineWindow::addStandIn(const QString& standIn, const QFont& font) {
    QTextLayout::FormatRange range;
    range.start = static_cast<int>(m_string.size());
    range.length = static_cast<int>(standIn.size());
    range.format.setFont(font);
    const bool extends = !m_formats.isEmpty() && m_formats.last().start + m_formats.last().length == range.start &&
                         m_formats.last().format == range.format;
    if (extends) {
        m_formats.last().length += range.length;
    } else {
        m_formats.append(range);
    }
    m_string.append(standIn);
}

void LineWindow::addCluster(std::size_t typed, std::string_view utf8) {
    const auto begin = static_cast<int>(m_string.size());
    const bool isEmoji = !SessionFace::emojiFamily().isEmpty() && showsAsEmoji(utf8);
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    if (isEmoji) {
        addStandIn(text, m_style.emojiFont(text));
    } else {
        m_string.append(text);
    }
    m_clusters.push_back({typed, begin, static_cast<int>(m_string.size()) - begin, isEmoji});
}

void LineWindow::gatherClusters() {
    m_string.clear();
    m_clusters.clear();
    m_formats.clear();
    std::string utf8;
    std::vector<std::size_t> starts; // of the typed characters, in bytes
    const std::size_t end = std::min(m_horizon, m_text.characters.size());
    for (std::size_t i = m_context; i < end; ++i) {
        starts.push_back(utf8.size());
        utf8 += m_text.characters[i].character.utf8();
    }
    // Characters that were typed one by one may make one together: a letter and its mark, the halves of a flag.
    std::size_t typed = 0;
    std::size_t byte = 0;
    for (const std::string_view cluster : clusters(utf8)) {
        while (typed < starts.size() && starts[typed] < byte) {
            ++typed;
        }
        addCluster(m_context + typed, cluster);
        byte += cluster.size();
    }
    if (m_horizon == m_text.size() && m_text.hasCursor) {
        const auto begin = static_cast<int>(m_string.size());
        addStandIn(QChar(cursorStandIn), m_style.cursorFont);
        m_clusters.push_back({m_text.characters.size(), begin, 1, false});
    }
}

std::size_t LineWindow::typedAt(int position) const {
    const auto found = std::lower_bound(m_clusters.begin(), m_clusters.end(), position,
                                        [](const Cluster& cluster, int at) { return cluster.begin < at; });
    return found == m_clusters.end() ? m_horizon : found->typed;
}

/// Puts what comes before into a line of its own, so that it is shaped with the rest but has no say in the breaking.
bool LineWindow::setContextLine() {
    const auto first = std::find_if(m_clusters.begin(), m_clusters.end(),
                                    [this](const Cluster& cluster) { return cluster.typed >= m_begin; });
    if (first == m_clusters.end() || first->typed != m_begin) {
        return false;
    }
    m_layout.setTextOption(option(QTextOption::WrapAnywhere));
    QTextLine line = m_layout.createLine();
    auto columns = static_cast<int>(first - m_clusters.begin());
    int fewest = 1;
    int most = first->begin;
    while (fewest <= most) { // the text engine may count several clusters as one, or one as several
        line.setNumColumns(columns);
        if (line.textLength() == first->begin) {
            return true;
        }
        if (line.textLength() < first->begin) {
            fewest = columns + 1;
        } else {
            most = columns - 1;
        }
        columns = (fewest + most) / 2;
    }
    return false;
}

bool LineWindow::layOut() {
    findParagraphEnd();
    if (m_horizon == m_begin) {
        finish();
        return true;
    }
    gatherClusters();
    m_layout.setText(m_string);
    m_layout.setFont(m_style.face.font());
    m_layout.setFormats(m_formats);
    m_layout.setCacheEnabled(true);
    m_layout.beginLayout();
    if (m_context < m_begin && !setContextLine()) {
        m_layout.endLayout();
        m_context = m_begin;
        return layOut();
    }
    m_layout.setTextOption(option(QTextOption::WrapAtWordBoundaryOrAnywhere));
    m_line = m_layout.createLine();
    m_line.setLineWidth(m_style.width / m_style.face.scale());
    m_line.setPosition({0, 0});
    m_layout.endLayout();
    finish();
    if (m_seesEnd || m_end + margin <= m_horizon || m_lookAhead >= longestLookAhead) {
        return true;
    }
    hangBlanks();
    return m_end > m_horizon;
}

void LineWindow::finish() {
    m_end = m_horizon == m_begin ? m_begin : std::max(m_begin + 1, typedAt(m_line.textStart() + m_line.textLength()));
    m_endsParagraph = m_seesEnd && m_end == m_horizon && m_horizon < m_text.size();
    m_dependsUntil = m_horizon;
    if (m_seesEnd) {
        m_dependsUntil = m_horizon == m_text.size() ? everything : m_horizon + 1;
    }
    if (m_endsParagraph) {
        ++m_end;
    }
}

/// Blanks beyond the edge stay with their line, however many: no need to shape them all.
void LineWindow::hangBlanks() {
    if (m_end != m_horizon || m_line.cursorToX(static_cast<int>(m_string.size())) <= m_line.width()) {
        return;
    }
    for (std::size_t i = m_horizon - margin; i < m_horizon; ++i) {
        if (!m_text.isBlank(i)) {
            return;
        }
    }
    while (m_end < m_text.size() && m_text.isBlank(m_end)) {
        ++m_end;
    }
    m_dependsUntil = m_end >= m_text.characters.size() ? everything : m_end + 1;
    if (m_end < m_text.size() && m_text.isLineBreak(m_end)) {
        m_endsParagraph = true;
        ++m_end;
    }
}

/// Of characters. By letters the text engine knows the script, and with it the font, of the signs that follow.
bool LineWindow::hasLetter(std::size_t from, std::size_t to) const {
    return std::any_of(m_clusters.begin(), m_clusters.end(), [&](const Cluster& cluster) {
        if (cluster.typed < from || cluster.typed >= to || cluster.isEmoji || cluster.length == 0) {
            return false;
        }
        const auto scalars = QStringView(m_string).mid(cluster.begin, cluster.length).toUcs4();
        return QChar::script(scalars.front()) > QChar::Script_Common;
    });
}

bool LineWindow::carriesContextOn() const {
    return m_context < m_begin && !hasLetter(m_begin, m_end) && hasLetter(m_context, m_begin);
}

ShapedLine LineWindow::shaped() const {
    ShapedLine result;
    if (m_clusters.empty() || !m_line.isValid()) {
        return result;
    }
    LinePieces pieces(m_line, m_style.face.scale());
    const int lineEnd = m_line.textStart() + m_line.textLength();
    for (const Cluster& cluster : m_clusters) {
        if (cluster.begin < m_line.textStart() || cluster.begin >= lineEnd) {
            continue;
        }
        if (m_text.isCursor(cluster.typed)) {
            result.cursorX = m_line.cursorToX(cluster.begin) * m_style.face.scale();
        } else if (cluster.isEmoji) {
            QString text;
            for (std::size_t i = cluster.typed; i < typedAt(cluster.begin + 1) && !m_text.isCursor(i); ++i) {
                text += QString::fromStdString(m_text.characters[i].character.utf8());
            }
            pieces.addEmoji(cluster.begin, cluster.length, text, m_text.characters[cluster.typed].color);
        } else {
            pieces.addText(QStringView(m_string).mid(cluster.begin, cluster.length), cluster.begin,
                           m_text.characters[cluster.typed].color);
        }
    }
    result.pieces = pieces.take();
    return result;
}

} // namespace tapalong
