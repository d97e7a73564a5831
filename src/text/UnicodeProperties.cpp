#include "text/UnicodeProperties.h"

#include "text/UnicodeTables.h"

#include <algorithm>

namespace tapalong {
namespace {

constexpr char32_t firstBeyondAscii = 0x80;

/// The last entry that starts at or before the scalar; null when all start after it.
template <typename Table>
const typename Table::value_type* lastStartingAtOrBefore(const Table& table, char32_t scalar) {
    const auto after =
        std::upper_bound(table.begin(), table.end(), scalar,
                         [](char32_t wanted, const typename Table::value_type& entry) { return wanted < entry.first; });
    return after == table.begin() ? nullptr : &*(after - 1);
}

template <typename Table> const typename Table::value_type* rangeAround(const Table& table, char32_t scalar) {
    const auto* range = lastStartingAtOrBefore(table, scalar);
    return range != nullptr && scalar <= range->last ? range : nullptr;
}

template <typename Value, typename Table> Value valueIn(const Table& table, char32_t scalar) {
    const auto* range = rangeAround(table, scalar);
    return range != nullptr ? range->value : Value{};
}

} // namespace

std::string_view unicodeVersion() {
    return unicode_tables::unicodeVersion;
}

GraphemeBreak graphemeBreakOf(char32_t scalar) {
    if (scalar >= U' ' && scalar <= U'~') {
        return GraphemeBreak::other;
    }
    return valueIn<GraphemeBreak>(unicode_tables::graphemeBreaks, scalar);
}

ConjunctBreak conjunctBreakOf(char32_t scalar) {
    if (scalar < firstBeyondAscii) {
        return ConjunctBreak::none;
    }
    return valueIn<ConjunctBreak>(unicode_tables::conjunctBreaks, scalar);
}

bool isExtendedPictographic(char32_t scalar) {
    return scalar >= firstBeyondAscii && rangeAround(unicode_tables::extendedPictographic, scalar) != nullptr;
}

bool isDefaultIgnorable(char32_t scalar) {
    return scalar >= firstBeyondAscii && rangeAround(unicode_tables::defaultIgnorable, scalar) != nullptr;
}

bool isWhiteSpace(char32_t scalar) {
    return rangeAround(unicode_tables::whiteSpace, scalar) != nullptr;
}

std::uint8_t combiningClassOf(char32_t scalar) {
    if (scalar < firstBeyondAscii) {
        return 0;
    }
    return valueIn<std::uint8_t>(unicode_tables::combiningClasses, scalar);
}

std::u32string_view canonicalDecompositionOf(char32_t scalar) {
    if (scalar < firstBeyondAscii) {
        return {};
    }
    const auto* entry = lastStartingAtOrBefore(unicode_tables::decompositions, scalar);
    if (entry == nullptr || entry->first != scalar) {
        return {};
    }
    return {&unicode_tables::decompositionScalars[entry->offset], entry->length};
}

} // namespace tapalong
