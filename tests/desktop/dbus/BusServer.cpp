#include "desktop/dbus/BusServer.h"

#include "base/Fatal.h"

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <string_view>

namespace tapalong::test {

namespace {

/// Without the services of the machine, which a bus would start by itself when one of them is asked for.
constexpr std::string_view configuration = R"(<busconfig>
  <listen>unix:tmpdir=/tmp</listen>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>)";

/// The configuration as a file that goes with its last user.
int configurationFile() {
    const int file = memfd_create("configuration", 0);
    verify(file >= 0 &&
               write(file, configuration.data(), configuration.size()) == static_cast<ssize_t>(configuration.size()),
           "a file in memory can be written");
    return file;
}

[[noreturn]] void becomeServer(int addressTo) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const std::string address = "--print-address=" + std::to_string(addressTo);
    const std::string file = "--config-file=/proc/self/fd/" + std::to_string(configurationFile());
    execlp("dbus-daemon", "dbus-daemon", file.c_str(), "--nofork", "--nopidfile", address.c_str(), nullptr);
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

BusServer::BusServer() {
    std::array<int, 2> ends{};
    verify(pipe(ends.data()) == 0, "a pipe can be had");
    m_process = fork();
    if (m_process == 0) {
        close(ends[0]);
        becomeServer(ends[1]);
    }
    close(ends[1]);
    m_address = readLine(ends[0]);
    close(ends[0]);
    verify(m_process > 0 && !m_address.empty(), "the tests of services need the program dbus-daemon");
}

BusServer::~BusServer() {
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
}

QDBusConnection BusServer::connect() const {
    static std::atomic<int> count = 0;
    return QDBusConnection::connectToBus(address(), QStringLiteral("test.%1").arg(++count));
}

void BusServer::stop() const {
    kill(m_process, SIGSTOP);
    // Only when it stands may the test go on.
    waitpid(m_process, nullptr, WUNTRACED);
}

void BusServer::resume() const {
    kill(m_process, SIGCONT);
}

} // namespace tapalong::test
