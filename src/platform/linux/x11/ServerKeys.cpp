#include "platform/linux/x11/ServerKeys.h"

#include <sys/mman.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tapalong {

namespace {

using namespace std::chrono_literals;

// It takes a few milliseconds; more only on a machine that is busy or broken.
constexpr auto patience = 500ms;

} // namespace

std::string ServerKeys::guardBesideProgram() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return (program.parent_path() / "tapalong-x11-guard").string();
}

void ServerKeys::close() {
    if (m_snapshotFile >= 0) {
        return;
    }
    m_snapshotFile = memfd_create("tapalong-x11-guard", MFD_CLOEXEC);
    if (m_snapshotFile >= 0) {
        startGuard();
    }
}

void ServerKeys::reopen() {
    if (m_snapshotFile < 0) {
        return;
    }
    m_hasFailed = !std::exchange(m_areClosed, false);
    if (!endGuard()) {
        // It was killed. Another one finds in the snapshot what is to be put back.
        m_guard = GuardProcess::start(m_guardProgram, m_snapshotFile);
        (void)endGuard();
    }
    ::close(std::exchange(m_snapshotFile, -1));
}

bool ServerKeys::canBeClosed() const {
    return !m_hasFailed && access(m_guardProgram.c_str(), X_OK) == 0;
}

void ServerKeys::startGuard() {
    m_guard = GuardProcess::start(m_guardProgram, m_snapshotFile);
    if (!m_guard) {
        return;
    }
    m_guardSpeaks.emplace(m_guard->descriptor(), QSocketNotifier::Read);
    QObject::connect(
        &*m_guardSpeaks, &QSocketNotifier::activated, &m_listener, [this] { hearGuard(); }, Qt::QueuedConnection);
    m_areClosed = m_guard->listen(patience) == GuardProcess::Word::closed;
}

void ServerKeys::hearGuard() {
    if (!m_guard) {
        return;
    }
    switch (m_guard->listen(0ms)) {
    case GuardProcess::Word::none:
        break;
    case GuardProcess::Word::closed:
        m_areClosed = true;
        break;
    case GuardProcess::Word::ended:
    case GuardProcess::Word::killed:
        // One that was killed gets a successor, which goes on from the snapshot. One that failed would fail again.
        m_guardSpeaks.reset();
        m_guard.reset();
        if (std::exchange(m_areClosed, false)) {
            startGuard();
        }
        break;
    }
}

/// False when there was none any more, or none that did its work.
bool ServerKeys::endGuard() {
    m_guardSpeaks.reset();
    const auto guard = std::exchange(m_guard, nullptr);
    if (!guard) {
        return false;
    }
    guard->endInput();
    const auto end = std::chrono::steady_clock::now() + patience;
    for (auto left = patience; left > 0ms;
         left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now())) {
        const auto word = guard->listen(left);
        if (word == GuardProcess::Word::ended || word == GuardProcess::Word::killed) {
            return word == GuardProcess::Word::ended;
        }
    }
    return true; // late, but at it
}

} // namespace tapalong
