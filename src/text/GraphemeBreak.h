#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tapalong {

/// Extended grapheme clusters as UAX 29 defines them: what a reader takes for one character. Pieces that are not UTF-8
/// count as U+FFFD.

/// In bytes; 0 only for an empty text. The text must start at a cluster's start.
[[nodiscard]] std::size_t firstClusterLength(std::string_view utf8);

/// All of them in order; they point into the text.
[[nodiscard]] std::vector<std::string_view> clusters(std::string_view utf8);

} // namespace tapalong
