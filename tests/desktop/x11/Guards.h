#pragma once

#include <stdlib.h> // NOLINT(modernize-deprecated-headers): mkdtemp()
#include <sys/types.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tapalong::test {

/// The processes that close the server's keys, children of this one.
[[nodiscard]] inline std::vector<pid_t> runningGuards() {
    std::vector<pid_t> found;
    std::ifstream children("/proc/self/task/" + std::to_string(getpid()) + "/children");
    for (pid_t child = 0; children >> child;) {
        std::string name;
        std::getline(std::ifstream("/proc/" + std::to_string(child) + "/comm") >> std::ws, name);
        if (name == "x11-keys-guard") {
            found.push_back(child);
        }
    }
    return found;
}

/// A program in place of the guard, which counts how often it is started and then does as a line of the shell says.
class FakeGuard {
public:
    explicit FakeGuard(const std::string& line) {
        std::ofstream(m_program) << "#!/bin/sh\necho x >> " << m_starts << "\n" << line << "\n";
        std::filesystem::permissions(m_program, std::filesystem::perms::owner_all);
    }
    ~FakeGuard() { std::filesystem::remove_all(m_folder); }
    FakeGuard(const FakeGuard&) = delete;
    FakeGuard& operator=(const FakeGuard&) = delete;

    [[nodiscard]] const std::string& program() const { return m_program; }

    [[nodiscard]] int starts() const {
        int count = 0;
        std::ifstream starts(m_starts);
        for (std::string line; std::getline(starts, line);) {
            ++count;
        }
        return count;
    }

    /// From now on `program` runs instead. One that runs already goes on.
    void becomes(const std::string& program) const {
        std::filesystem::remove(m_program);
        std::filesystem::create_symlink(program, m_program);
    }

private:
    static std::string newFolder() {
        auto name = (std::filesystem::temp_directory_path() / "tapalong-guard-XXXXXX").string();
        return mkdtemp(name.data());
    }

    std::string m_folder = newFolder();
    std::string m_program = m_folder + "/guard";
    std::string m_starts = m_folder + "/starts";
};

} // namespace tapalong::test
