#pragma once

#include <string_view>
#include <vector>

namespace tapalong::clips {

/// One overtone of a sound, which dies away by itself.
struct Partial {
    double ratio;        ///< its frequency as a multiple of the pitch
    double gain;         ///< against the other partials; the whole is scaled to one peak in the end
    double decaySeconds; ///< time until it has fallen to 1/e
    double phase = 0.0;  ///< turns; different ones keep the peaks of many partials from adding up
};

/// How one clip sounds. Times are seconds from the clip's start.
struct Recipe {
    std::string_view name;
    double seconds;
    double attackSeconds;               ///< ramp up from zero
    double releaseSeconds;              ///< ramp down to zero at the end
    double (*pitch)(double seconds);    ///< hertz
    double (*loudness)(double seconds); ///< 0 to 1
    std::vector<Partial> partials;
    double level = 1.0; ///< of the common peak: less for a sound that is louder than the others at the same peak
};

/// The six key sounds, in the order of the settings window.
[[nodiscard]] const std::vector<Recipe>& allRecipes();

} // namespace tapalong::clips
