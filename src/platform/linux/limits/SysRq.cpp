#include "platform/linux/limits/SysRq.h"

#include <charconv>

namespace tapalong {

namespace {

// The kernel's numbers for groups of chords.
constexpr unsigned every = 1; // alone it stands for all of them
constexpr unsigned keyboard = 4;
constexpr unsigned dumps = 8; // one of them crashes the kernel on purpose
constexpr unsigned remount = 32;
constexpr unsigned processSignals = 64;
constexpr unsigned reboot = 128;

unsigned groupsIn(const std::string& setting) {
    unsigned groups = every; // what cannot be understood is better said than kept silent
    std::from_chars(setting.data(), setting.data() + setting.size(), groups);
    return groups;
}

} // namespace

SysRqPowers sysRqPowers(const std::optional<std::string>& setting, const std::string& commandLine) {
    if (!setting) {
        return {};
    }
    const bool isForced = commandLine.find("sysrq_always_enabled") != std::string::npos;
    const unsigned groups = isForced ? every : groupsIn(*setting);
    const bool all = groups == every;
    return {.endsPrograms = all || (groups & (keyboard | processSignals)) != 0,
            .restarts = all || (groups & (dumps | reboot)) != 0,
            .stopsSaving = all || (groups & remount) != 0};
}

} // namespace tapalong
