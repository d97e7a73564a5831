// How well each colour of the palette stands out: its contrast ratio (WCAG 2) on white and on the session's dark
// background, as the program draws it there. 3 is what that standard asks of large text.

#include "session/RainbowColors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace tapalong {
namespace {

constexpr SrgbColor white{1, 1, 1};
constexpr SrgbColor dark{0.07, 0.07, 0.1};

double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const SrgbColor& color) {
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

double contrast(const SrgbColor& one, const SrgbColor& other) {
    const auto [less, more] = std::minmax({luminance(one), luminance(other)});
    return (more + 0.05) / (less + 0.05);
}

/// A full turn of the palette.
std::array<SrgbColor, 9> palette(bool forLightBackground) {
    RainbowColors::reset();
    std::array<SrgbColor, 9> colors{};
    for (SrgbColor& each : colors) {
        each = RainbowColors::next(forLightBackground).srgb().value();
    }
    return colors;
}

void run() {
    const auto onWhite = palette(true);
    const auto onDark = palette(false);
    double leastOnWhite = 21;
    double leastOnDark = 21;
    std::printf("contrast        on white     on the dark background\n");
    for (std::size_t i = 0; i < onWhite.size(); ++i) {
        const double withWhite = contrast(onWhite.at(i), white);
        const double withDark = contrast(onDark.at(i), dark);
        leastOnWhite = std::min(leastOnWhite, withWhite);
        leastOnDark = std::min(leastOnDark, withDark);
        std::printf("colour %zu    %s %5.2f    %s %5.2f\n", i + 1, Color(onWhite.at(i)).hexString().c_str(), withWhite,
                    Color(onDark.at(i)).hexString().c_str(), withDark);
    }
    std::printf("least               %5.2f            %5.2f\n", leastOnWhite, leastOnDark);
}

} // namespace
} // namespace tapalong

int main() {
    tapalong::run();
    return 0;
}
