#pragma once

#include "platform/linux/x11/GuardProcess.h"
#include "platform/linux/x11/X11Connection.h"

#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tapalong {

/// What keys do at the X server itself, past every grab: virtual terminals, zapping, breaking grabs, accessibility hot
/// keys, bindings to a single device. Closed and put back by a process of its own (tapalong-x11-guard), so that it is
/// put back however ours ends.
///
/// Waiting for the guard is the main thread's, and the whole program's with it: it must have closed before a session
/// counts as locked, and put back before one counts as ended. That is a few milliseconds each; the times below are
/// those of a machine that is very busy, or of a guard that is stopped.
class ServerKeys {
public:
    /// The guard that was built and installed together with the running program; empty when nobody knows where.
    [[nodiscard]] static std::string guardBesideProgram();

    explicit ServerKeys(std::string guard = guardBesideProgram());
    ~ServerKeys() { reopen(); }
    ServerKeys(const ServerKeys&) = delete;
    ServerKeys& operator=(const ServerKeys&) = delete;

    /// Puts back what a session left whose program and guard were killed together; nothing where there is none. Waits
    /// for replies of the server, and where there is something to put back as close() and reopen() do together, at most
    /// a second and a half.
    void putBackLeftOver(const X11Connection& connection);

    /// Waits until it is done, at most half a second; what is late counts when it comes, and a guard that fails gets a
    /// successor every two seconds. The first successor of one that had closed everything is waited for in the same
    /// way, out of the main loop. Nothing while closed.
    void close();

    /// Puts everything back as it was at close(), locked keys and the layout included. Waits until it is done, at most
    /// half a second, and as long again for a successor when the guard has failed. One that is late finishes by itself.
    void reopen();

    /// False while open, and while the guard cannot be started or the server refuses it a part.
    [[nodiscard]] bool areClosed() const { return m_areClosed; }

    /// `changed` runs when areClosed() has changed between close() and reopen().
    void whenChanged(std::function<void()> changed) { m_changed = std::move(changed); }

    /// Whether the next close() can be expected to succeed: the guard is there, and did not fail the last time.
    [[nodiscard]] bool canBeClosed() const;

private:
    void startGuard();
    void startGuardAndWait();
    void hearGuard();
    void replaceGuard();
    [[nodiscard]] bool endGuard();

    std::string m_guardProgram;
    bool m_areWanted = false; ///< closed
    std::unique_ptr<GuardProcess> m_guard;
    std::vector<std::unique_ptr<GuardProcess>> m_lateGuards; ///< at putting back; each to be taken leave of at its end
    std::optional<QSocketNotifier> m_guardSpeaks;
    QObject m_listener; ///< not the notifier itself: hearing it may end it
    QTimer m_untilNextGuard;
    std::function<void()> m_changed;
    bool m_areClosed = false;
    bool m_hasFailed = false; ///< when they were to be closed last
};

} // namespace tapalong
