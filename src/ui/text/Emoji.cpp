#include "ui/text/Emoji.h"

#include "text/UnicodeProperties.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>

namespace tapalong {

namespace {

constexpr char32_t emojiStyle = 0xFE0F;
constexpr char32_t textStyle = 0xFE0E;
constexpr char32_t firstPictographAbove = 0x1F000;

struct Range {
    char32_t first;
    char32_t last;
};

/// Emoji_Presentation=Yes below U+10000; the property is stable.
constexpr std::array earlyEmoji{
    Range{0x231A, 0x231B}, Range{0x23E9, 0x23EC}, Range{0x23F0, 0x23F0}, Range{0x23F3, 0x23F3}, Range{0x25FD, 0x25FE},
    Range{0x2614, 0x2615}, Range{0x2648, 0x2653}, Range{0x267F, 0x267F}, Range{0x2693, 0x2693}, Range{0x26A1, 0x26A1},
    Range{0x26AA, 0x26AB}, Range{0x26BD, 0x26BE}, Range{0x26C4, 0x26C5}, Range{0x26CE, 0x26CE}, Range{0x26D4, 0x26D4},
    Range{0x26EA, 0x26EA}, Range{0x26F2, 0x26F3}, Range{0x26F5, 0x26F5}, Range{0x26FA, 0x26FA}, Range{0x26FD, 0x26FD},
    Range{0x2705, 0x2705}, Range{0x270A, 0x270B}, Range{0x2728, 0x2728}, Range{0x274C, 0x274C}, Range{0x274E, 0x274E},
    Range{0x2753, 0x2755}, Range{0x2757, 0x2757}, Range{0x2795, 0x2797}, Range{0x27B0, 0x27B0}, Range{0x27BF, 0x27BF},
    Range{0x2B1B, 0x2B1C}, Range{0x2B50, 0x2B50}, Range{0x2B55, 0x2B55},
};

bool isEarlyEmoji(char32_t scalar) {
    return std::any_of(earlyEmoji.begin(), earlyEmoji.end(),
                       [scalar](const Range& range) { return range.first <= scalar && scalar <= range.last; });
}

bool isSkinTone(char32_t scalar) {
    return scalar >= 0x1F3FB && scalar <= 0x1F3FF;
}

bool isEmojiByDefault(char32_t scalar) {
    if (scalar < firstPictographAbove) {
        return isEarlyEmoji(scalar);
    }
    return isExtendedPictographic(scalar) || isSkinTone(scalar) ||
           graphemeBreakOf(scalar) == GraphemeBreak::regionalIndicator;
}

} // namespace

bool showsAsEmoji(std::string_view cluster) {
    if (cluster.size() == 1) {
        return false;
    }
    const auto scalars = decoded(cluster);
    if (scalars.find(textStyle) != std::u32string::npos) {
        return false;
    }
    return scalars.find(emojiStyle) != std::u32string::npos || isEmojiByDefault(scalars.front()) ||
           std::any_of(scalars.begin() + 1, scalars.end(), isSkinTone);
}

} // namespace tapalong
