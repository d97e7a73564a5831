#include "desktop/support/ServerProcess.h"

#include "base/Fatal.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace tapalong::test {

namespace {

std::string readLine(int fd) {
    std::string line;
    std::array<char, 1> letter{};
    while (read(fd, letter.data(), 1) == 1 && letter[0] != '\n') {
        line += letter[0];
    }
    return line;
}

} // namespace

ServerProcess::ServerProcess(const std::function<void(int lineTo)>& become, const char* need) {
    std::array<int, 2> ends{};
    verify(pipe(ends.data()) == 0, "a pipe can be had");
    m_process = fork();
    if (m_process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        close(ends[0]);
        become(ends[1]);
        _exit(127);
    }
    close(ends[1]);
    m_line = readLine(ends[0]);
    close(ends[0]);
    verify(m_process > 0 && !m_line.empty(), need);
}

ServerProcess::~ServerProcess() {
    // Asked, not killed, since a server has files to remove; one that is suspended cannot hear.
    kill(m_process, SIGTERM);
    resume();
    waitpid(m_process, nullptr, 0);
}

void ServerProcess::suspend() const {
    kill(m_process, SIGSTOP);
    // Only when it stands may the test go on.
    waitpid(m_process, nullptr, WUNTRACED);
}

void ServerProcess::resume() const {
    kill(m_process, SIGCONT);
}

} // namespace tapalong::test
