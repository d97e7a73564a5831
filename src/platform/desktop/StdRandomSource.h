#pragma once

#include "platform/RandomSource.h"

#include <random>

namespace tapalong {

/// Seeded by the system, anew in each process.
class StdRandomSource final : public RandomSource {
public:
    StdRandomSource();

    [[nodiscard]] std::uint64_t uniform(std::uint64_t bound) override;
    [[nodiscard]] std::uint64_t next() override { return m_engine(); }

private:
    std::mt19937_64 m_engine;
};

} // namespace tapalong
