#include "PrivateServer.h"

#include "base/Fatal.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tapalong::test {

namespace {

void runServer(const std::filesystem::path& logFile) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int log = open(logFile.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    const std::string sink = std::string("module-null-sink rate=48000 channels=2 sink_name=") + sinkName;
    execlp("pulseaudio", "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
           "--realtime=no", "--high-priority=no", "-L", "module-native-protocol-unix", "-L", sink.c_str(), nullptr);
    perror("pulseaudio");
    _exit(127);
}

} // namespace

PrivateHome::PrivateHome() {
    // Not below the build folder: the path of a socket holds 107 bytes at most.
    std::string pattern = (std::filesystem::temp_directory_path() / "tapalong-sound-XXXXXX").string();
    verify(mkdtemp(pattern.data()) != nullptr, "the folder for temporary files can be written");
    m_folder = pattern;
    for (const char* variable : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_STATE_HOME"}) {
        setenv(variable, m_folder.c_str(), 1);
    }
    for (const char* variable : {"PULSE_SERVER", "PULSE_RUNTIME_PATH", "PULSE_CLIENTCONFIG", "PULSE_COOKIE",
                                 "PULSE_SINK", "PULSE_SOURCE", "PULSE_LATENCY_MSEC", "DISPLAY"}) {
        unsetenv(variable);
    }
}

PrivateHome::~PrivateHome() {
    std::error_code error;
    std::filesystem::remove_all(m_folder, error);
}

PrivateServer::PrivateServer(const PrivateHome& home) : m_logFile(home.folder() / "server.log") {
    m_process = fork();
    verify(m_process >= 0, "a process can be started");
    if (m_process == 0) {
        runServer(m_logFile);
    }
}

PrivateServer::~PrivateServer() {
    kill();
}

void PrivateServer::freeze() {
    ::kill(m_process, SIGSTOP);
    int status = 0;
    waitpid(m_process, &status, WUNTRACED);
}

void PrivateServer::thaw() {
    ::kill(m_process, SIGCONT);
}

void PrivateServer::kill() {
    if (m_process > 0) {
        ::kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = -1;
    }
}

std::string PrivateServer::log() const {
    std::ifstream file(m_logFile);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace tapalong::test
