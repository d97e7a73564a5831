#pragma once

#include <QDBusConnection>

#include <sys/types.h>

#include <string>

namespace tapalong::test {

/// A message bus of the test's own. Ends with this object, and with the test program should that be killed.
class BusServer {
public:
    /// Stops the program when no bus can be had: no test can say anything then.
    BusServer();
    ~BusServer();
    BusServer(const BusServer&) = delete;
    BusServer& operator=(const BusServer&) = delete;

    [[nodiscard]] QString address() const { return QString::fromStdString(m_address); }

    /// A new connection each time, as another program has one. May be called on any thread.
    [[nodiscard]] QDBusConnection connect() const;

    /// While stopped, the bus answers nobody.
    void stop() const;
    void resume() const;

private:
    pid_t m_process = -1;
    std::string m_address;
};

} // namespace tapalong::test
