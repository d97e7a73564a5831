#pragma once

#include <cstdint>
#include <string>

namespace tapalong {

/// The values that a slider can take.
struct SliderRange {
    double lower = 0;
    double upper = 0;
    double step = 0;

    /// The value of the range that is nearest to `value`.
    [[nodiscard]] double snapped(double value) const;
};

/// The values that a stepper can take. One press goes one step, but never past an end.
struct StepperRange {
    std::int64_t lower = 0;
    std::int64_t upper = 0;
    std::int64_t step = 0;

    [[nodiscard]] bool canIncrement(std::int64_t value) const { return value < upper; }
    [[nodiscard]] bool canDecrement(std::int64_t value) const { return value > lower; }
    [[nodiscard]] std::int64_t incremented(std::int64_t value) const;
    [[nodiscard]] std::int64_t decremented(std::int64_t value) const;
};

inline constexpr SliderRange fontSizeRange{24, 200, 4};              // points
inline constexpr SliderRange dwellTimeRange{0.5, 5.0, 0.5};          // seconds
inline constexpr StepperRange maxCharactersRange{1000, 50000, 1000}; // characters

/// As in "1.5s".
[[nodiscard]] std::string dwellTimeLabel(double seconds);
/// As in "72 pt"; the value is cut to a whole number. One that is not finite, or has no whole number of 64 bits,
/// stops the program.
[[nodiscard]] std::string fontSizeLabel(double points);

} // namespace tapalong
