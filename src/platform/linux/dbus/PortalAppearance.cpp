#include "platform/linux/dbus/PortalAppearance.h"

#include "platform/desktop/PaletteAppearance.h"
#include "platform/linux/dbus/Buses.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace tapalong {

namespace {

const auto service = QStringLiteral("org.freedesktop.portal.Desktop");
const auto path = QStringLiteral("/org/freedesktop/portal/desktop");
const auto interface = QStringLiteral("org.freedesktop.portal.Settings");
const auto appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const auto schemeKey = QStringLiteral("color-scheme");

/// What a start may wait for the first answer. A portal that must itself be started first takes longer.
constexpr int firstAnswerLimit = 200; // milliseconds

/// Read wraps its answer twice, the signal once.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace

PortalAppearance::PortalAppearance() : PortalAppearance(presentSessionBus()) {}

PortalAppearance::PortalAppearance(const QDBusConnection& bus) {
    if (bus.isConnected()) {
        ask(bus);
    }
}

std::optional<Appearance> PortalAppearance::appearance() const {
    switch (m_scheme) {
    case ColorScheme::dark:
        return Appearance::darkAqua;
    case ColorScheme::light:
        return Appearance::aqua;
    case ColorScheme::noPreference:
        break;
    }
    return paletteAppearance();
}

void PortalAppearance::ask(const QDBusConnection& bus) {
    auto connection = bus;
    connection.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                       SLOT(settingChanged(QString, QString, QDBusVariant)));
    // Read, although it is deprecated: ReadOne is missing from portals that are still in use.
    auto read = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    read << appearanceSpace << schemeKey;
    const auto answer = connection.call(read, QDBus::Block, firstAnswerLimit);
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
        take(answer.arguments().constFirst());
        return;
    }
    auto* const watcher = new QDBusPendingCallWatcher(connection.asyncCall(read), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, &PortalAppearance::handleReply);
}

void PortalAppearance::handleReply(QDBusPendingCallWatcher* watcher) {
    const QDBusPendingReply<QVariant> reply = *watcher;
    if (!reply.isError()) {
        take(reply.value());
    }
    watcher->deleteLater();
}

void PortalAppearance::settingChanged(const QString& space, const QString& key, const QDBusVariant& value) {
    if (space == appearanceSpace && key == schemeKey) {
        take(value.variant());
    }
}

void PortalAppearance::take(const QVariant& value) {
    const auto number = unwrapped(value).toUInt();
    const auto scheme = number == 1 ? ColorScheme::dark : number == 2 ? ColorScheme::light : ColorScheme::noPreference;
    if (scheme != m_scheme) {
        sendObjectWillChange();
        m_scheme = scheme;
    }
}

} // namespace tapalong
