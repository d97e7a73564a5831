#include "platform/linux/x11/GuardProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <utility>

namespace tapalong {

namespace {

struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;

    ~Pipe() {
        closeUnlessGone(readEnd);
        closeUnlessGone(writeEnd);
    }

    static void closeUnlessGone(int& end) {
        if (end >= 0) {
            close(std::exchange(end, -1));
        }
    }

    // No other process that we start may hold an end: the guard would wait for that one too.
    [[nodiscard]] bool open() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            return false;
        }
        readEnd = ends[0];
        writeEnd = ends[1];
        return true;
    }
};

std::optional<pid_t> spawn(const std::string& program, int input, int output) {
    posix_spawn_file_actions_t files{};
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    // What ends us by a signal to the terminal's or the session's processes must not end the guard first.
    posix_spawnattr_t attributes{};
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK);
    sigset_t blocked{};
    sigemptyset(&blocked);
    for (const int each : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
        sigaddset(&blocked, each);
    }
    posix_spawnattr_setsigmask(&attributes, &blocked);
    std::string name = "x11-keys-guard"; // not ours: see the guard's main()
    const std::array<char*, 2> arguments{name.data(), nullptr};
    pid_t process = -1;
    const int error = posix_spawn(&process, program.c_str(), &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error == 0 ? std::optional(process) : std::nullopt;
}

/// A line is written at once, so all of it is there. Empty at the end.
std::string readLine(int descriptor) {
    std::string line;
    for (char next = 0; read(descriptor, &next, 1) > 0 && next != '\n';) {
        line += next;
    }
    return line;
}

/// Waits for its end. Where nobody can say how that was, it counts as a failure.
bool hasSucceeded(pid_t process) {
    int status = 0;
    pid_t ended = -1;
    do {
        ended = waitpid(process, &status, 0);
    } while (ended < 0 && errno == EINTR);
    return ended == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

std::unique_ptr<GuardProcess> GuardProcess::start(const std::string& program) {
    Pipe input;
    Pipe output;
    if (!input.open() || !output.open()) {
        return nullptr;
    }
    const auto process = spawn(program, input.readEnd, output.writeEnd);
    if (!process) {
        return nullptr;
    }
    return std::unique_ptr<GuardProcess>(
        new GuardProcess(*process, std::exchange(input.writeEnd, -1), std::exchange(output.readEnd, -1)));
}

GuardProcess::~GuardProcess() {
    endInput();
    Pipe::closeUnlessGone(m_output);
    if (m_process > 0) {
        waitpid(m_process, nullptr, WNOHANG);
    }
}

GuardProcess::Word GuardProcess::listen(std::chrono::milliseconds atMost) {
    if (m_process < 0) {
        return Word::ended;
    }
    pollfd awaited{.fd = m_output, .events = POLLIN, .revents = 0};
    if (poll(&awaited, 1, static_cast<int>(atMost.count())) <= 0) {
        return Word::none;
    }
    if (const auto line = readLine(m_output); !line.empty()) {
        return line == "closed" ? Word::closed : Word::refused;
    }
    // Its output is closed, so it has left or is about to.
    return hasSucceeded(std::exchange(m_process, -1)) ? Word::ended : Word::failed;
}

void GuardProcess::endInput() {
    Pipe::closeUnlessGone(m_input);
}

} // namespace tapalong
