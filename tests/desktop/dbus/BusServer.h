#pragma once

#include "desktop/support/ServerProcess.h"

#include <QDBusConnection>

namespace tapalong::test {

/// A message bus of the test's own.
class BusServer {
public:
    BusServer();

    [[nodiscard]] QString address() const { return QString::fromStdString(m_server.line()); }

    /// A new connection each time, as another program has one. May be called on any thread.
    [[nodiscard]] QDBusConnection connect() const;

    /// While suspended, the bus answers nobody.
    void suspend() const { m_server.suspend(); }
    void resume() const { m_server.resume(); }

private:
    ServerProcess m_server;
};

} // namespace tapalong::test
