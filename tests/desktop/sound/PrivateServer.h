#pragma once

#include <filesystem>
#include <string>
#include <sys/types.h>

namespace tapalong::test {

/// The name of the silent sink of a PrivateServer.
inline constexpr const char* sinkName = "tapalong_test";

/// A home and a runtime folder of this process's own, in which it finds no sound server but a PrivateServer, and keeps
/// its cookie. Removed at the end.
class PrivateHome {
public:
    PrivateHome();
    ~PrivateHome();
    PrivateHome(const PrivateHome&) = delete;
    PrivateHome& operator=(const PrivateHome&) = delete;

    [[nodiscard]] const std::filesystem::path& folder() const { return m_folder; }

private:
    std::filesystem::path m_folder;
};

/// A real pulseaudio with one silent sink, in the home given. It dies with this process at the latest.
class PrivateServer {
public:
    explicit PrivateServer(const PrivateHome& home);
    ~PrivateServer();
    PrivateServer(const PrivateServer&) = delete;
    PrivateServer& operator=(const PrivateServer&) = delete;

    void freeze();
    void thaw();
    void kill(); ///< at once, as a crash would

    /// What it wrote, for the message of a failed test.
    [[nodiscard]] std::string log() const;

private:
    std::filesystem::path m_logFile;
    pid_t m_process = -1;
};

} // namespace tapalong::test
