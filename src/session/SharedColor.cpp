#include "session/SharedColor.h"

#include <algorithm>
#include <deque>

namespace tapalong {

namespace {

const Color& kept(const Color& color) {
    static std::deque<Color> colors; // what points into a deque stays good while it grows
    const auto known = std::find(colors.begin(), colors.end(), color);
    return known != colors.end() ? *known : colors.emplace_back(color);
}

} // namespace

SharedColor::SharedColor(const Color& color) : m_color(&kept(color)) {}

} // namespace tapalong
