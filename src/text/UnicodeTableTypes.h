#pragma once

#include "text/UnicodeProperties.h"

#include <cstdint>

namespace tapalong::unicode_tables {

/// Both ends belong to it.
struct Range {
    char32_t first;
    char32_t last;
};

template <typename Value> struct ValueRange {
    char32_t first;
    char32_t last;
    Value value;
};

/// Where one code point's full decomposition stands in the array of all of them.
struct Decomposition {
    char32_t first;
    std::uint16_t offset;
    std::uint16_t length;
};

} // namespace tapalong::unicode_tables
