#include "settings/ScreenCorner.h"

#include <algorithm>

namespace tapalong {

namespace {

struct CornerText {
    std::string_view rawValue;
    std::string_view label;
};

constexpr std::array<CornerText, 4> texts{{
    {"topLeft", "Top Left"},
    {"topRight", "Top Right"},
    {"bottomLeft", "Bottom Left"},
    {"bottomRight", "Bottom Right"},
}};

const CornerText& textsOf(ScreenCorner corner) {
    return texts.at(static_cast<std::size_t>(corner));
}

} // namespace

std::string_view rawValue(ScreenCorner corner) {
    return textsOf(corner).rawValue;
}

std::string_view label(ScreenCorner corner) {
    return textsOf(corner).label;
}

std::optional<ScreenCorner> cornerFromRawValue(std::string_view raw) {
    const auto* const found = std::find_if(allCorners.begin(), allCorners.end(),
                                           [raw](ScreenCorner corner) { return rawValue(corner) == raw; });
    return found != allCorners.end() ? std::optional(*found) : std::nullopt;
}

} // namespace tapalong
