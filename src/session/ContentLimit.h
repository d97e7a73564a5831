#pragma once

#include "session/TypedCharacter.h"

#include <cstdint>

namespace tapalong {

/// How many of the oldest characters go when `content` has grown past `limit`: none while it has not, else three
/// tenths, and a little more where a line ends within the next tenth, so that the screen keeps whole lines.
[[nodiscard]] std::size_t charactersToDrop(const TypedContent& content, std::int64_t limit);

} // namespace tapalong
