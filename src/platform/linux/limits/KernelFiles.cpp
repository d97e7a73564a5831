#include "platform/linux/limits/KernelFiles.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>

namespace tapalong {

std::optional<std::string> KernelFiles::text(const std::filesystem::path& name) const {
    // Its length is not known before it is read: the kernel writes it then.
    std::ifstream file(m_root / name);
    if (!file) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<std::string> KernelFiles::runningPrograms() const {
    std::vector<std::string> names;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(m_root, ignored)) {
        const auto number = entry.path().filename();
        const bool isProcess = number.string().find_first_not_of("0123456789") == std::string::npos;
        // One that ends while we look has no name any more.
        if (auto name = isProcess ? text(number / "comm") : std::nullopt) {
            std::erase(*name, '\n');
            names.push_back(std::move(*name));
        }
    }
    return names;
}

} // namespace tapalong
