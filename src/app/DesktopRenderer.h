#pragma once

#include <string_view>

namespace tapalong {

/// Lets the processor draw where there is no graphics card: its stand-in for one costs many times more per key. To be
/// called after the QGuiApplication is made and before any window. A choice of the user's in the environment holds.
void chooseRenderer();

/// Whether OpenGL's renderer of that name is one: the others are programs, and draw with the processor too.
[[nodiscard]] bool isGraphicsCard(std::string_view openGlRenderer);

} // namespace tapalong
