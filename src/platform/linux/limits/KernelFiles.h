#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tapalong {

/// The kernel's own account of the computer.
class KernelFiles {
public:
    explicit KernelFiles(std::filesystem::path root = "/proc") : m_root(std::move(root)) {}

    /// A file's text; none where there is no such file or it may not be read.
    [[nodiscard]] std::optional<std::string> text(const std::filesystem::path& name) const;

    /// The names of the programs that run now, as far as they may be seen; the kernel cuts them after 15 bytes.
    [[nodiscard]] std::vector<std::string> runningPrograms() const;

private:
    std::filesystem::path m_root;
};

} // namespace tapalong
