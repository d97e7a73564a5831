#include "text/Normalization.h"

#include "text/UnicodeProperties.h"
#include "text/Utf8.h"

#include <algorithm>

namespace tapalong {
namespace {

// Hangul syllables are laid out so regularly that the standard gives this arithmetic in place of a table.
constexpr char32_t firstSyllable = 0xAC00;
constexpr char32_t firstLeading = 0x1100;
constexpr char32_t firstVowel = 0x1161;
constexpr char32_t beforeFirstTrailing = 0x11A7; // trailing consonants count from 1: 0 is none
constexpr char32_t vowelCount = 21;
constexpr char32_t trailingCount = 28;
constexpr char32_t syllableCount = 19 * vowelCount * trailingCount;

void appendHangulSyllable(std::u32string& text, char32_t index) {
    text.push_back(firstLeading + index / (vowelCount * trailingCount));
    text.push_back(firstVowel + index / trailingCount % vowelCount);
    if (index % trailingCount != 0) {
        text.push_back(beforeFirstTrailing + index % trailingCount);
    }
}

void appendDecomposed(std::u32string& text, char32_t scalar) {
    if (scalar >= firstSyllable && scalar < firstSyllable + syllableCount) {
        appendHangulSyllable(text, scalar - firstSyllable);
        return;
    }
    const std::u32string_view decomposition = canonicalDecompositionOf(scalar);
    if (decomposition.empty()) {
        text.push_back(scalar);
    } else {
        text += decomposition;
    }
}

bool isStarter(char32_t scalar) {
    return combiningClassOf(scalar) == 0;
}

/// Marks that follow one another stand in the order of their classes; those of one class keep theirs.
void orderMarks(std::u32string& text) {
    auto start = text.begin();
    while (start != text.end()) {
        start = std::find_if_not(start, text.end(), isStarter);
        const auto end = std::find_if(start, text.end(), isStarter);
        std::stable_sort(start, end, [](char32_t a, char32_t b) { return combiningClassOf(a) < combiningClassOf(b); });
        start = end;
    }
}

} // namespace

std::u32string canonicallyDecomposed(std::string_view utf8) {
    std::u32string text;
    for (const char32_t scalar : decoded(utf8)) {
        appendDecomposed(text, scalar);
    }
    orderMarks(text);
    return text;
}

bool canonicallyEqual(std::string_view utf8, std::string_view otherUtf8) {
    return utf8 == otherUtf8 || canonicallyDecomposed(utf8) == canonicallyDecomposed(otherUtf8);
}

} // namespace tapalong
