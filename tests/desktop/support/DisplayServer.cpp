#include "desktop/support/DisplayServer.h"

#include <fcntl.h>
#include <unistd.h>

namespace tapalong::test {

namespace {

void becomeServer(int displayNumberTo) {
    const std::string fd = std::to_string(displayNumberTo);
    const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(null, STDOUT_FILENO);
    dup2(null, STDERR_FILENO);
    execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset",
           nullptr);
}

} // namespace

DisplayServer::DisplayServer() : m_server(becomeServer, "the tests on a display need the program Xvfb") {}

} // namespace tapalong::test
