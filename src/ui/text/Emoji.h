#pragma once

#include <string_view>

namespace tapalong {

/// Whether a character is to be looked for in the emoji font first. Fonts for text hold many of these signs too, in
/// one colour and thin, and would win as the first in the list.
[[nodiscard]] bool showsAsEmoji(std::string_view cluster);

} // namespace tapalong
