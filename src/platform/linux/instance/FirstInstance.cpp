#include "platform/linux/instance/FirstInstance.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <thread>
#include <utility>

namespace tapalong {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto patience = 1s;
constexpr auto betweenAttempts = 10ms;
constexpr char answer = '+';

// Packets and not a stream, so that nobody else's socket is taken for ours.
int newSocket() {
    return socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

/// Calls `bind` or `connect` with the socket's address; what they return.
template <class Call> int withAddress(Call call, int socket, const std::string& display) {
    const std::string name = "tapalong/" + std::to_string(getuid()) + '/' + display;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    // The zero in front of the name makes it one of the abstract namespace.
    if (name.size() >= sizeof address.sun_path) {
        errno = ENAMETOOLONG;
        return -1;
    }
    std::copy(name.begin(), name.end(), address.sun_path + 1);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    return call(socket, reinterpret_cast<const sockaddr*>(&address), length);
}

/// Anybody on this computer may take any abstract name, and connect to it.
bool isOurUsers(const Socket& connection) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(connection.descriptor(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == getuid();
}

enum class Reply : std::uint8_t {
    shown,
    none,     ///< in time
    gone,     ///< it has just left, or does not listen yet
    stranger, ///< not our user's, or not our program's
};

Reply ask(const std::string& display, Clock::time_point deadline) {
    const Socket connection(newSocket());
    if (withAddress(connect, connection.descriptor(), display) != 0) {
        return errno == ECONNREFUSED ? Reply::gone : Reply::stranger;
    }
    if (!isOurUsers(connection)) {
        return Reply::stranger;
    }
    pollfd awaited{.fd = connection.descriptor(), .events = POLLIN, .revents = 0};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    if (poll(&awaited, 1, std::max(static_cast<int>(left.count()), 0)) <= 0) {
        return Reply::none;
    }
    char received = 0;
    return recv(connection.descriptor(), &received, 1, 0) == 1 && received == answer ? Reply::shown : Reply::gone;
}

/// To be called when somebody has connected.
void answerNext(const Socket& listener, const std::function<void()>& show) {
    const Socket asker(accept4(listener.descriptor(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (asker.isOpen() && isOurUsers(asker)) {
        show();
        // Whoever waits no longer needs no answer.
        (void)send(asker.descriptor(), &answer, 1, MSG_NOSIGNAL);
    }
}

} // namespace

FirstInstance::Claim FirstInstance::claim() {
    const auto deadline = Clock::now() + patience;
    m_listener.reset(newSocket());
    while (withAddress(bind, m_listener.descriptor(), m_display) != 0) {
        const Reply reply = errno == EADDRINUSE ? ask(m_display, deadline) : Reply::stranger;
        if (reply == Reply::shown || reply == Reply::none) {
            m_listener.reset();
            return reply == Reply::shown ? Claim::answered : Claim::unanswered;
        }
        if (reply == Reply::stranger || Clock::now() >= deadline) {
            m_listener.reset();
            return Claim::first;
        }
        std::this_thread::sleep_for(betweenAttempts);
    }
    if (listen(m_listener.descriptor(), SOMAXCONN) != 0) {
        m_listener.reset();
    }
    return Claim::first;
}

void FirstInstance::serve(std::function<void()> show) {
    if (m_listener.isOpen()) {
        m_notifier = std::make_unique<QSocketNotifier>(m_listener.descriptor(), QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                         [this, show = std::move(show)] { answerNext(m_listener, show); });
    }
}

} // namespace tapalong
