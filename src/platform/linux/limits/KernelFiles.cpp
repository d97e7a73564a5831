#include "platform/linux/limits/KernelFiles.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <system_error>

namespace tapalong {

std::optional<std::string> KernelFiles::text(const std::filesystem::path& name) const {
    // Its length is not known before it is read: the kernel writes it then.
    std::ifstream file(m_root / name);
    if (!file) {
        return std::nullopt;
    }
    // By the stream's own operation: iterators on its buffer throw where reading fails.
    std::string whole;
    std::array<char, 4096> part{};
    do {
        file.read(part.data(), part.size());
        whole.append(part.data(), static_cast<std::size_t>(file.gcount()));
    } while (file);
    return file.bad() ? std::nullopt : std::optional(whole);
}

std::vector<std::string> KernelFiles::runningPrograms() const {
    std::vector<std::string> names;
    // After an error it is at its end. A range-for would throw there.
    std::error_code error;
    std::filesystem::directory_iterator entry(m_root, error);
    for (; entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const auto number = entry->path().filename();
        const bool isProcess = number.string().find_first_not_of("0123456789") == std::string::npos;
        // One that ends while we look has no name any more, even if its file could still be opened.
        if (auto name = isProcess ? text(number / "comm") : std::nullopt) {
            std::erase(*name, '\n');
            names.push_back(std::move(*name));
        }
    }
    return names;
}

} // namespace tapalong
