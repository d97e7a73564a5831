#pragma once

#include "settings/Color.h"

#include <cstdint>

namespace tapalong {

/// The palette of rainbow mode. Its position belongs to the process: the next session goes on where the last one
/// stopped. Main thread only.
class RainbowColors {
public:
    /// How bright a palette colour looks; the brighter, the more it is darkened on a light background.
    enum class Luminance : std::uint8_t { low, medium, high };

    RainbowColors() = delete;

    /// The next colour; stops the program after 2^63 - 1 of them.
    [[nodiscard]] static Color next(bool forLightBackground);
    /// Starts the palette anew.
    static void reset();
    /// How many colours were handed out.
    [[nodiscard]] static std::int64_t index();
};

} // namespace tapalong
