#include "session/ContentLimit.h"

#include "base/Fatal.h"

#include <algorithm>

namespace tapalong {

std::size_t charactersToDrop(const TypedContent& content, std::int64_t limit) {
    const auto count = static_cast<std::int64_t>(content.size());
    if (count <= limit) {
        return 0;
    }
    std::int64_t drop = 0;
    verify(!__builtin_mul_overflow(count, std::int64_t{30}, &drop), "three tenths of the content must be countable");
    drop /= 100;
    const std::int64_t searchEnd = std::min(drop + count / 10, count);
    verify(drop <= searchEnd, "the search for a line end must not run backwards");
    const auto begin = content.begin() + drop;
    const auto end = content.begin() + searchEnd;
    const auto lineEnd =
        std::find_if(begin, end, [](const TypedCharacter& typed) { return typed.character.isLineBreak(); });
    return static_cast<std::size_t>(lineEnd == end ? drop : lineEnd - content.begin() + 1);
}

} // namespace tapalong
