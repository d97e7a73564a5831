#include "desktop/support/DisplayServer.h"

#include "base/Fatal.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace tapalong::test {

namespace {

[[noreturn]] void becomeServer(int displayNumberTo) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const std::string fd = std::to_string(displayNumberTo);
    const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(null, STDOUT_FILENO);
    dup2(null, STDERR_FILENO);
    execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset",
           nullptr);
    _exit(127);
}

std::string readLine(int fd) {
    std::string line;
    std::array<char, 1> letter{};
    while (read(fd, letter.data(), 1) == 1 && letter[0] != '\n') {
        line += letter[0];
    }
    return line;
}

} // namespace

DisplayServer::DisplayServer() {
    std::array<int, 2> ends{};
    verify(pipe(ends.data()) == 0, "a pipe can be had");
    m_process = fork();
    if (m_process == 0) {
        close(ends[0]);
        becomeServer(ends[1]);
    }
    close(ends[1]);
    const std::string number = readLine(ends[0]);
    close(ends[0]);
    verify(m_process > 0 && !number.empty(), "the tests on a display need the program Xvfb");
    m_display = ":" + number;
}

DisplayServer::~DisplayServer() {
    kill(m_process, SIGTERM);
    waitpid(m_process, nullptr, 0);
}

} // namespace tapalong::test
