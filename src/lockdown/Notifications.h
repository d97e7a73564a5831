#pragma once

#include <string_view>

namespace tapalong {

/// Posted on the notification centre when the exit corner was held; the session view shows the exit overlay.
inline constexpr std::string_view showExitOverlayNotification = "showExitOverlay";
/// Posted by the exit overlay when it goes without success.
inline constexpr std::string_view hideExitOverlayNotification = "hideExitOverlay";

} // namespace tapalong
