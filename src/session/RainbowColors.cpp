#include "session/RainbowColors.h"

#include "base/Fatal.h"

#include <array>
#include <limits>

namespace tapalong {

namespace {

using Luminance = RainbowColors::Luminance;

struct PaletteEntry {
    double r;
    double g;
    double b;
    Luminance luminance;
};

constexpr std::array<PaletteEntry, 9> palette{{
    {0.93, 0.18, 0.18, Luminance::medium},
    {0.98, 0.45, 0.02, Luminance::medium},
    {0.99, 0.78, 0.05, Luminance::high},
    {0.55, 0.86, 0.15, Luminance::high},
    {0.18, 0.78, 0.25, Luminance::medium},
    {0.30, 0.78, 0.90, Luminance::high},
    {0.20, 0.50, 0.92, Luminance::low},
    {0.55, 0.32, 0.85, Luminance::low},
    {0.70, 0.30, 0.75, Luminance::low},
}};

constexpr std::array<double, 3> darkening{0.85, 0.72, 0.55}; // by Luminance

std::int64_t handedOut = 0;

} // namespace

Color RainbowColors::next(bool forLightBackground) {
    const auto& entry = palette.at(static_cast<std::size_t>(handedOut) % palette.size());
    verify(handedOut < std::numeric_limits<std::int64_t>::max(), "the count of rainbow colours must not overflow");
    ++handedOut;
    if (!forLightBackground) {
        return SrgbColor{entry.r, entry.g, entry.b};
    }
    const double factor = darkening.at(static_cast<std::size_t>(entry.luminance));
    return SrgbColor{entry.r * factor, entry.g * factor, entry.b * factor};
}

void RainbowColors::reset() {
    handedOut = 0;
}

std::int64_t RainbowColors::index() {
    return handedOut;
}

} // namespace tapalong
