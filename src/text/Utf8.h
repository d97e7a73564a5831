#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tapalong {

/// Stands for each piece of a text that is not UTF-8.
inline constexpr char32_t replacementCharacter = 0xFFFD;

struct DecodedScalar {
    char32_t scalar = 0;
    std::size_t length = 0; ///< in bytes, never beyond the text's end; 0 only for an empty text
};

/// The scalar that the text starts with. Bytes that are not UTF-8 (stray, overlong, surrogates, above U+10FFFF, cut
/// off) give U+FFFD; its length is then the longest piece that begins a valid sequence, at least one byte.
[[nodiscard]] DecodedScalar decodeFirst(std::string_view utf8);

/// All scalars, by the same rule.
[[nodiscard]] std::u32string decoded(std::string_view utf8);

/// One to four bytes. Fatal for what is no Unicode scalar value.
[[nodiscard]] std::string encoded(char32_t scalar);

/// The text with U+FFFD for each piece that is not UTF-8.
[[nodiscard]] std::string repaired(std::string_view utf8);

} // namespace tapalong
