#pragma once

#include <cstdint>

namespace tapalong {

/// Random numbers. Not for secrets.
class RandomSource {
public:
    virtual ~RandomSource() = default;

    /// Uniform in [0, bound); bound must be positive.
    [[nodiscard]] virtual std::uint64_t uniform(std::uint64_t bound) = 0;
    /// Uniform over all 64-bit values.
    [[nodiscard]] virtual std::uint64_t next() = 0;
};

} // namespace tapalong
