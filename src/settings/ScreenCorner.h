#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tapalong {

enum class ScreenCorner : std::uint8_t { topLeft, topRight, bottomLeft, bottomRight };

/// Every corner, in the order of every picker.
inline constexpr std::array allCorners{ScreenCorner::topLeft, ScreenCorner::topRight, ScreenCorner::bottomLeft,
                                       ScreenCorner::bottomRight};

/// What is stored: the case's name. Also its identity.
[[nodiscard]] std::string_view rawValue(ScreenCorner corner);
/// What is shown, as in "Top Left".
[[nodiscard]] std::string_view label(ScreenCorner corner);
/// None for anything but the four raw values, case-sensitive.
[[nodiscard]] std::optional<ScreenCorner> cornerFromRawValue(std::string_view rawValue);

} // namespace tapalong
