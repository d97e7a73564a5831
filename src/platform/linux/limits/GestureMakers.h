#pragma once

#include <string>
#include <vector>

namespace tapalong {

/// Whether something on this desktop makes more of touchpad gestures than scrolling and zooming: the window manager of
/// that name, or one of the running programs.
[[nodiscard]] bool makesGestures(const std::string& windowManager, const std::vector<std::string>& runningPrograms);

} // namespace tapalong
