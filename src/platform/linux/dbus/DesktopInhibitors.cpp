#include "platform/linux/dbus/DesktopInhibitors.h"

#include <QDBusObjectPath>
#include <QVariantMap>

#include <utility>

namespace tapalong {

namespace {

constexpr quint32 logOut = 1;
constexpr quint32 switchUser = 2;
const auto reason = QStringLiteral("A child is playing");

Inhibitor::Request requestToSessionManager() {
    const auto call = [](const char* method) {
        return QDBusMessage::createMethodCall(QStringLiteral("org.gnome.SessionManager"),
                                              QStringLiteral("/org/gnome/SessionManager"),
                                              QStringLiteral("org.gnome.SessionManager"), QString::fromLatin1(method));
    };
    constexpr quint32 noWindow = 0;
    auto inhibit = call("Inhibit");
    inhibit << QStringLiteral("tapalong") << noWindow << reason << (logOut | switchUser);
    // A session manager is there already or must not be started.
    inhibit.setAutoStartService(false);
    return {inhibit,
            [call](const QVariant& handle) {
                auto giveBack = call("Uninhibit");
                giveBack << handle;
                return std::optional(giveBack);
            },
            Inhibitor::noLimit};
}

Inhibitor::Request requestToPortal() {
    const auto service = QStringLiteral("org.freedesktop.portal.Desktop");
    const QString noWindow;
    auto inhibit =
        QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/portal/desktop"),
                                       QStringLiteral("org.freedesktop.portal.Inhibit"), QStringLiteral("Inhibit"));
    inhibit << noWindow << (logOut | switchUser) << QVariantMap{{QStringLiteral("reason"), reason}};
    return {inhibit,
            [service](const QVariant& handle) {
                return std::optional(QDBusMessage::createMethodCall(service, handle.value<QDBusObjectPath>().path(),
                                                                    QStringLiteral("org.freedesktop.portal.Request"),
                                                                    QStringLiteral("Close")));
            },
            Inhibitor::noLimit};
}

} // namespace

DesktopInhibitors::DesktopInhibitors(const QDBusConnection& sessionBus, BusOpener::Open openSystem,
                                     PowerKeyInhibitors::Answered powerKeyAnswered)
    : m_powerKeys(std::move(openSystem), std::move(powerKeyAnswered)) {
    if (sessionBus.isConnected()) {
        m_sessionManager.emplace(sessionBus, requestToSessionManager());
        m_portal.emplace(sessionBus, requestToPortal());
    }
}

void DesktopInhibitors::hold() {
    for (auto* const each : {&m_sessionManager, &m_portal}) {
        if (*each) {
            (*each)->hold();
        }
    }
    m_powerKeys.hold();
}

void DesktopInhibitors::release() {
    for (auto* const each : {&m_sessionManager, &m_portal}) {
        if (*each) {
            (*each)->release();
        }
    }
    m_powerKeys.release();
}

} // namespace tapalong
