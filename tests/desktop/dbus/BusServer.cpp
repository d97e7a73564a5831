#include "desktop/dbus/BusServer.h"

#include "base/Fatal.h"

#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <string>
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

void becomeServer(int addressTo) {
    const std::string address = "--print-address=" + std::to_string(addressTo);
    const std::string file = "--config-file=/proc/self/fd/" + std::to_string(configurationFile());
    execlp("dbus-daemon", "dbus-daemon", file.c_str(), "--nofork", "--nopidfile", address.c_str(), nullptr);
}

} // namespace

BusServer::BusServer() : m_server(becomeServer, "the tests of services need the program dbus-daemon") {}

QDBusConnection BusServer::connect() const {
    static std::atomic<int> count = 0;
    return QDBusConnection::connectToBus(address(), QStringLiteral("test.%1").arg(++count));
}

} // namespace tapalong::test
