// Closes what a grab of the keyboard leaves open, for as long as the program that started it lives and wants it so:
// until the end of standard input. That end comes in every case, also when the program is killed, so there is one way
// back for all of them, and it runs in a process that holds nothing else and has little to fail with.
//
//     descriptor 0   its end is the order to put everything back and to leave
//     descriptor 1   gets the line "closed" once the server has done all that was asked, "open" when it refuses a
//                    part, and so on each time that this changes

#include "platform/linux/x11guard/ServerKeysGuard.h"

#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <optional>
#include <string_view>
#include <thread>

namespace {

using namespace std::chrono_literals;
using tapalong::ServerKeysGuard;

// Another program that insists on its own keymap must not keep both of us and the server busy.
constexpr std::chrono::milliseconds leastBetweenCloses = 50ms;
// What is refused for good, such as a device that another program holds, is not told of when it can be had.
constexpr std::chrono::milliseconds betweenTries = 2s;
constexpr std::chrono::milliseconds forEver = -1ms;

void ignoreSignals() {
    for (const int each : {SIGHUP, SIGINT, SIGPIPE, SIGQUIT, SIGTERM, SIGTSTP}) {
        std::signal(each, SIG_IGN);
    }
}

/// Waits for the end of standard input, at most so long, and no longer than until `other` can be read too.
bool inputEnds(std::chrono::milliseconds atMost, int other = -1) {
    std::array<pollfd, 2> awaited{
        {{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0}, {.fd = other, .events = POLLIN, .revents = 0}}};
    if (poll(awaited.data(), awaited.size(), static_cast<int>(atMost.count())) <= 0 || awaited[0].revents == 0) {
        return false;
    }
    std::array<char, 64> anything{};
    return read(STDIN_FILENO, anything.data(), anything.size()) <= 0;
}

void say(bool isClosed) {
    constexpr std::string_view closed = "closed\n";
    constexpr std::string_view open = "open\n";
    const auto word = isClosed ? closed : open;
    [[maybe_unused]] const auto written = write(STDOUT_FILENO, word.data(), word.size());
}

/// A device that has just left refuses all, and the next look does not find it any more.
bool closeAll(ServerKeysGuard& guard) {
    if (guard.close()) {
        return true;
    }
    std::this_thread::sleep_for(leastBetweenCloses);
    return guard.close();
}

/// Waits until there is a reason to close again. False when the input has ended instead.
bool isToCloseAgain(ServerKeysGuard& guard, bool isClosed) {
    if (inputEnds(leastBetweenCloses)) {
        return false;
    }
    while (!guard.hasNews() && guard.isConnected()) {
        if (inputEnds(isClosed ? forEver : betweenTries, guard.descriptor())) {
            return false;
        }
        if (!isClosed) {
            break;
        }
    }
    return guard.isConnected();
}

void keepClosedUntilInputEnds(ServerKeysGuard& guard) {
    std::optional<bool> said;
    bool isClosed = false;
    do {
        isClosed = closeAll(guard);
        if (said != isClosed) {
            say(isClosed);
            said = isClosed;
        }
    } while (isToCloseAgain(guard, isClosed));
}

} // namespace

int main() {
    ignoreSignals();
    // An order to kill whatever is called like the program is no order to kill the guard together with it.
    prctl(PR_SET_NAME, "x11-keys-guard");
    ServerKeysGuard guard;
    if (!guard.isConnected()) {
        return 1;
    }
    keepClosedUntilInputEnds(guard);
    guard.reopen();
    // Without the server nothing of that was done, and the program sees to a successor.
    return guard.isConnected() ? 0 : 1;
}
