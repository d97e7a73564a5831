#pragma once

#include <string>
#include <string_view>

namespace tapalong {

/// Normalization form D: fully decomposed, marks in canonical order. Pieces that are not UTF-8 count as U+FFFD.
[[nodiscard]] std::u32string canonicallyDecomposed(std::string_view utf8);

/// Whether Unicode takes the two for the same text, as with "é" in one scalar and in two.
[[nodiscard]] bool canonicallyEqual(std::string_view utf8, std::string_view otherUtf8);

} // namespace tapalong
