#pragma once

#include <optional>
#include <string>

namespace tapalong {

/// What chords of Alt, SysRq and a third key do, straight in the kernel.
struct SysRqPowers {
    bool endsPrograms = false; ///< the terminal's, and so the desktop's, or all of them
    bool restarts = false;     ///< the computer: at once, by switching it off, or by a crash
    bool stopsSaving = false;  ///< makes every disk read-only until then

    bool operator==(const SysRqPowers&) const = default;
};

/// `setting` is the text of sys/kernel/sysrq, which a kernel without such chords does not have; `commandLine` is the
/// kernel's own, which can switch all of them on whatever the setting says.
[[nodiscard]] SysRqPowers sysRqPowers(const std::optional<std::string>& setting, const std::string& commandLine);

} // namespace tapalong
