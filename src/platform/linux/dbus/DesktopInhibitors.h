#pragma once

#include "platform/desktop/TerminationGuard.h"
#include "platform/linux/dbus/Inhibitor.h"
#include "platform/linux/dbus/PowerKeyInhibitors.h"

#include <optional>

namespace tapalong {

/// Asks the session manager and the portal of the desktop, where they are, not to log out and not to switch to another
/// user, and the login service to leave the power keys alone.
class DesktopInhibitors final : public TerminationGuard {
public:
    DesktopInhibitors(const QDBusConnection& sessionBus, BusOpener::Open openSystem,
                      PowerKeyInhibitors::Answered powerKeyAnswered);

    void hold() override;
    void release() override;

    [[nodiscard]] PowerKeyInhibitors& powerKeys() { return m_powerKeys; }

private:
    // None without a bus of the session.
    std::optional<Inhibitor> m_sessionManager;
    std::optional<Inhibitor> m_portal;
    PowerKeyInhibitors m_powerKeys;
};

} // namespace tapalong
