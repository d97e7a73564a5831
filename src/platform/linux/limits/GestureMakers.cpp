#include "platform/linux/limits/GestureMakers.h"

#include <algorithm>
#include <array>

namespace tapalong {

namespace {

/// Those that do so under an X server; their names on the display begin so.
constexpr std::array windowManagers{"GNOME Shell", "Mutter"};

/// They read the touchpad beside the display server. As the kernel cuts their names.
constexpr std::array daemons{"touchegg", "libinput-gestur", "fusuma", "gebaard"};

} // namespace

bool makesGestures(const std::string& windowManager, const std::vector<std::string>& runningPrograms) {
    const bool byWindowManager = std::any_of(windowManagers.begin(), windowManagers.end(),
                                             [&](const char* name) { return windowManager.starts_with(name); });
    return byWindowManager || std::any_of(daemons.begin(), daemons.end(), [&](const char* name) {
               return std::find(runningPrograms.begin(), runningPrograms.end(), name) != runningPrograms.end();
           });
}

} // namespace tapalong
