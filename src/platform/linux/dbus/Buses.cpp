#include "platform/linux/dbus/Buses.h"

#include <QFileInfo>
#include <QThread>

#include <memory>
#include <utility>

namespace tapalong {

QDBusConnection presentSessionBus() {
    const auto runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const bool isPresent = qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
                           (!runtimeFolder.isEmpty() && QFileInfo::exists(runtimeFolder + QStringLiteral("/bus")));
    return isPresent ? QDBusConnection::sessionBus() : QDBusConnection(QString());
}

QDBusConnection openSystemBus() {
    // Under a name of its own: the toolkit locks all its shared connections while it opens one of them.
    const auto name = QStringLiteral("tapalong.system");
    auto bus = QDBusConnection::connectToBus(QDBusConnection::SystemBus, name);
    if (!bus.isConnected()) {
        // Else the next try would be handed the same failure.
        QDBusConnection::disconnectFromBus(name);
    }
    return bus;
}

void BusOpener::start(std::function<void(const QDBusConnection&)> opened) {
    const auto bus = std::make_shared<QDBusConnection>(QString());
    auto* const thread = QThread::create([open = m_open, bus] { *bus = open(); });
    QObject::connect(thread, &QThread::finished, this, [bus, opened = std::move(opened)] { opened(*bus); });
    // Not a child of ours: we may go while it still waits.
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

} // namespace tapalong
