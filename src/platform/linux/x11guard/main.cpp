// Closes what a grab of the keyboard leaves open, for as long as the program that started it lives and wants it so:
// until the end of standard input. That end comes in every case, also when the program is killed, so there is one way
// back for all of them, and it runs in a process that holds nothing else and has little to fail with.
//
//     descriptor 0   its end is the order to put everything back and to leave
//     descriptor 1   gets the line "closed" once the server has done all that was asked

#include "platform/linux/x11guard/ServerKeysGuard.h"

#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <string_view>

namespace {

using namespace std::chrono_literals;
using tapalong::ServerKeysGuard;

// Another program that insists on its own keymap must not keep both of us and the server busy.
constexpr auto leastBetweenCloses = 50ms;

void ignoreSignals() {
    for (const int each : {SIGHUP, SIGINT, SIGPIPE, SIGQUIT, SIGTERM, SIGTSTP}) {
        std::signal(each, SIG_IGN);
    }
}

constexpr std::chrono::milliseconds forEver = -1ms;

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

void report(bool isClosed) {
    if (isClosed) {
        constexpr std::string_view word = "closed\n";
        [[maybe_unused]] const auto written = write(STDOUT_FILENO, word.data(), word.size());
    }
}

void keepClosedUntilInputEnds(ServerKeysGuard& guard) {
    bool hasEnded = false;
    while (!hasEnded && guard.isConnected()) {
        if (guard.hasNews()) {
            (void)guard.close();
            hasEnded = inputEnds(leastBetweenCloses);
        } else {
            hasEnded = inputEnds(forEver, guard.descriptor());
        }
    }
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
    report(guard.close());
    keepClosedUntilInputEnds(guard);
    guard.reopen();
    return 0;
}
