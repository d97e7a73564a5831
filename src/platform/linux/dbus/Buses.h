#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace tapalong {

/// The login session's bus, not connected where there is none: asking the toolkit for it there would start one, which
/// would outlive us.
[[nodiscard]] QDBusConnection presentSessionBus();

/// The system's own bus.
[[nodiscard]] QDBusConnection openSystemBus();

/// Opens a bus beside the main thread: where its daemon does not answer, the one who opens it waits for half a minute.
class BusOpener final : public QObject {
public:
    using Open = std::function<QDBusConnection()>; ///< runs on a thread of its own

    explicit BusOpener(Open open) : m_open(std::move(open)) {}

    /// `opened` runs on the main thread, connected or not, unless this object goes before.
    void start(std::function<void(const QDBusConnection&)> opened);

private:
    Open m_open;
};

} // namespace tapalong
