#pragma once

#include <filesystem>
#include <system_error>

namespace tapalong {

/// Where the running program lies, and with it what was built and installed together with it. Empty when the system
/// does not say; then it is to be done without, since a file looked for by its name alone would be anybody's.
[[nodiscard]] inline std::filesystem::path programFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path{} : program.parent_path();
}

} // namespace tapalong
