#pragma once

#include "clips/Recipe.h"

#include <cstdint>
#include <vector>

namespace tapalong::clips {

inline constexpr int sampleRate = 48'000;

/// A quarter of full scale (-12 dB): small children hold their ears close.
inline constexpr double peakLevel = 0.25;

/// The clip's samples, mono. The first and the last are zero; the loudest is at the recipe's share of peakLevel. The
/// same at every run.
[[nodiscard]] std::vector<std::int16_t> synthesise(const Recipe& recipe);

} // namespace tapalong::clips
