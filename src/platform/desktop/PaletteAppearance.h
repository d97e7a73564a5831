#pragma once

#include "platform/Application.h"

namespace tapalong {

/// The appearance by the toolkit's own colours, for desktops that do not say which they prefer.
[[nodiscard]] Appearance paletteAppearance();

} // namespace tapalong
