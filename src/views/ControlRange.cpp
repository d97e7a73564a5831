#include "views/ControlRange.h"

#include "base/Fatal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace tapalong {

double SliderRange::snapped(double value) const {
    const double bounded = std::clamp(value, lower, upper);
    return std::min(lower + std::round((bounded - lower) / step) * step, upper);
}

std::int64_t StepperRange::incremented(std::int64_t value) const {
    return canIncrement(value) ? std::clamp(value + step, lower, upper) : value;
}

std::int64_t StepperRange::decremented(std::int64_t value) const {
    return canDecrement(value) ? std::clamp(value - step, lower, upper) : value;
}

std::string dwellTimeLabel(double seconds) {
    std::array<char, 400> text{}; // the largest double has 309 digits before its point
    const int length = std::snprintf(text.data(), text.size(), "%.1fs", seconds);
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string fontSizeLabel(double points) {
    constexpr double limit = 9223372036854775808.0; // 2^63
    verify(std::isfinite(points) && points >= -limit && points < limit, "the font size must be a finite number");
    return std::to_string(static_cast<std::int64_t>(points)) + " pt";
}

} // namespace tapalong
