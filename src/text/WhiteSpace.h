#pragma once

#include <string_view>

namespace tapalong {

/// The text without the characters of the Unicode property White_Space at its ends; points into it.
[[nodiscard]] std::string_view trimmed(std::string_view utf8);

} // namespace tapalong
