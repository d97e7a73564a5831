#include "text/GraphemeBreak.h"

#include "text/UnicodeProperties.h"
#include "text/Utf8.h"

#include <cstdint>

namespace tapalong {
namespace {

bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

bool isControl(GraphemeBreak value) {
    return value == GraphemeBreak::control || value == GraphemeBreak::cr || value == GraphemeBreak::lf;
}

bool continuesHangulSyllable(GraphemeBreak before, GraphemeBreak after) {
    using enum GraphemeBreak;
    switch (before) {
    case l:
        return after == l || after == v || after == lv || after == lvt;
    case lv:
    case v:
        return after == v || after == t;
    case lvt:
    case t:
        return after == t;
    default:
        return false;
    }
}

/// A cluster that grows scalar by scalar, remembering what the rules ask about the scalars before a boundary.
/// None of them looks beyond the cluster's start: what they look at never has a boundary inside.
class GrowingCluster {
public:
    explicit GrowingCluster(char32_t first) { append(first); }

    /// Whether the scalar belongs to this cluster; appends it then.
    bool take(char32_t scalar) {
        if (!hasNoBoundaryBefore(scalar)) {
            return false;
        }
        append(scalar);
        return true;
    }

private:
    enum class Emoji : std::uint8_t { none, extended, joining };
    enum class Conjunct : std::uint8_t { none, consonant, linked };

    // The comments name the rules of UAX 29.
    [[nodiscard]] bool hasNoBoundaryBefore(char32_t scalar) const {
        using enum GraphemeBreak;
        const GraphemeBreak next = graphemeBreakOf(scalar);
        if (isControl(m_last) || isControl(next)) { // GB3, GB4, GB5
            return m_last == cr && next == lf;
        }
        return continuesHangulSyllable(m_last, next)                            // GB6, GB7, GB8
               || next == extend || next == zwj || next == spacingMark          // GB9, GB9a
               || m_last == prepend                                             // GB9b
               || continuesConjunct(scalar)                                     // GB9c
               || (m_emoji == Emoji::joining && isExtendedPictographic(scalar)) // GB11
               || (next == regionalIndicator && m_hasUnpairedFlag);             // GB12, GB13
    }

    [[nodiscard]] bool continuesConjunct(char32_t scalar) const {
        return m_conjunct == Conjunct::linked && conjunctBreakOf(scalar) == ConjunctBreak::consonant;
    }

    void append(char32_t scalar) {
        m_last = graphemeBreakOf(scalar);
        m_hasUnpairedFlag = m_last == GraphemeBreak::regionalIndicator && !m_hasUnpairedFlag;
        appendToEmoji(scalar);
        appendToConjunct(scalar);
    }

    void appendToEmoji(char32_t scalar) {
        if (isExtendedPictographic(scalar)) {
            m_emoji = Emoji::extended;
        } else if (m_emoji == Emoji::extended && m_last == GraphemeBreak::zwj) {
            m_emoji = Emoji::joining;
        } else if (m_emoji != Emoji::extended || m_last != GraphemeBreak::extend) {
            m_emoji = Emoji::none;
        }
    }

    void appendToConjunct(char32_t scalar) {
        using enum Conjunct;
        // By what the cluster ended in, then by the new scalar's value: none, consonant, linker, extend.
        static constexpr Conjunct after[3][4] = {
            {none, consonant, none, none},        // none
            {none, consonant, linked, consonant}, // consonant
            {none, consonant, linked, linked},    // linked
        };
        m_conjunct = after[static_cast<std::size_t>(m_conjunct)][static_cast<std::size_t>(conjunctBreakOf(scalar))];
    }

    GraphemeBreak m_last = GraphemeBreak::other;
    Emoji m_emoji = Emoji::none;
    Conjunct m_conjunct = Conjunct::none;
    bool m_hasUnpairedFlag = false; // an odd number of regional indicators at the end
};

} // namespace

std::size_t firstClusterLength(std::string_view utf8) {
    if (utf8.empty()) {
        return 0;
    }
    if (isAscii(utf8[0]) && (utf8.size() == 1 || isAscii(utf8[1]))) {
        return utf8.starts_with("\r\n") ? 2 : 1;
    }
    const DecodedScalar first = decodeFirst(utf8);
    GrowingCluster cluster(first.scalar);
    std::size_t length = first.length;
    while (length < utf8.size()) {
        const DecodedScalar next = decodeFirst(utf8.substr(length));
        if (!cluster.take(next.scalar)) {
            break;
        }
        length += next.length;
    }
    return length;
}

std::vector<std::string_view> clusters(std::string_view utf8) {
    std::vector<std::string_view> found;
    while (!utf8.empty()) {
        const std::size_t length = firstClusterLength(utf8);
        found.push_back(utf8.substr(0, length));
        utf8.remove_prefix(length);
    }
    return found;
}

} // namespace tapalong
