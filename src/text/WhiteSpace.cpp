#include "text/WhiteSpace.h"

#include "text/UnicodeProperties.h"
#include "text/Utf8.h"

#include <cstddef>

namespace tapalong {

std::string_view trimmed(std::string_view utf8) {
    std::size_t position = 0;
    std::size_t begin = utf8.size();
    std::size_t end = utf8.size();
    while (position < utf8.size()) {
        const DecodedScalar next = decodeFirst(utf8.substr(position));
        if (!isWhiteSpace(next.scalar)) {
            begin = begin < utf8.size() ? begin : position;
            end = position + next.length;
        }
        position += next.length;
    }
    return utf8.substr(begin, end - begin);
}

} // namespace tapalong
