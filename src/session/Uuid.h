#pragma once

#include "platform/RandomSource.h"

#include <compare>
#include <cstdint>

namespace tapalong {

/// A random (version 4) UUID.
struct Uuid {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    [[nodiscard]] static Uuid random(RandomSource& source) {
        constexpr std::uint64_t versionMask = 0xF000;
        constexpr std::uint64_t version4 = 0x4000;
        constexpr std::uint64_t variantMask = 0xC000000000000000;
        constexpr std::uint64_t variant1 = 0x8000000000000000;
        return {(source.next() & ~versionMask) | version4, (source.next() & ~variantMask) | variant1};
    }

    // NOLINTNEXTLINE(modernize-use-nullptr): what the compiler itself writes for `<` compares with a plain 0
    auto operator<=>(const Uuid&) const = default;
};

} // namespace tapalong
