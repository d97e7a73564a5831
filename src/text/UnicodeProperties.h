#pragma once

#include <cstdint>
#include <string_view>

namespace tapalong {

/// The property Grapheme_Cluster_Break, value for value.
enum class GraphemeBreak : std::uint8_t {
    other,
    cr,
    lf,
    control,
    extend,
    zwj,
    regionalIndicator,
    prepend,
    spacingMark,
    l,
    v,
    t,
    lv,
    lvt,
};

/// The property Indic_Conjunct_Break. All is `none` with data older than Unicode 15.1.
enum class ConjunctBreak : std::uint8_t { none, consonant, linker, extend };

/// Of the data that the program was built with, as in "15.0.0".
[[nodiscard]] std::string_view unicodeVersion();

// All take any value; what is no code point has no property.
[[nodiscard]] GraphemeBreak graphemeBreakOf(char32_t scalar);
[[nodiscard]] ConjunctBreak conjunctBreakOf(char32_t scalar);
[[nodiscard]] bool isExtendedPictographic(char32_t scalar);
[[nodiscard]] bool isDefaultIgnorable(char32_t scalar);
[[nodiscard]] bool isWhiteSpace(char32_t scalar);
[[nodiscard]] std::uint8_t combiningClassOf(char32_t scalar);

/// The full canonical decomposition; empty for a scalar that is its own, and for Hangul syllables, which are
/// computed instead (Normalization.h).
[[nodiscard]] std::u32string_view canonicalDecompositionOf(char32_t scalar);

} // namespace tapalong
