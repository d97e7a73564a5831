#include "app/DesktopSignals.h"

#include "base/Fatal.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace tapalong {

namespace {

constexpr std::array endingSignals{SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t pipeForHandler = -1;

// Little is allowed inside a signal handler; writing to a pipe is.
extern "C" void tapalongHandleEndingSignal(int) {
    const int oldError = errno;
    const char anything = 0;
    [[maybe_unused]] const auto written = write(pipeForHandler, &anything, 1);
    errno = oldError;
}

} // namespace

DesktopSignals::DesktopSignals(std::function<void()> askedToEnd) {
    std::array<int, 2> ends{};
    verify(pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) == 0, "a pipe for signals must be had");
    m_readEnd = ends[0];
    m_writeEnd = ends[1];
    pipeForHandler = m_writeEnd;
    m_notifier = std::make_unique<QSocketNotifier>(m_readEnd, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this, askedToEnd = std::move(askedToEnd)] {
                         std::array<char, 16> drained{};
                         while (read(m_readEnd, drained.data(), drained.size()) > 0) {
                         }
                         askedToEnd();
                     });
    for (const int each : endingSignals) {
        std::signal(each, tapalongHandleEndingSignal);
    }
}

DesktopSignals::~DesktopSignals() {
    for (const int each : endingSignals) {
        std::signal(each, SIG_DFL);
    }
    m_notifier.reset();
    close(m_readEnd);
    close(m_writeEnd);
}

} // namespace tapalong
