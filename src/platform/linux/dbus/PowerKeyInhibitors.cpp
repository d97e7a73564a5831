#include "platform/linux/dbus/PowerKeyInhibitors.h"

#include <array>
#include <optional>
#include <utility>

namespace tapalong {

namespace {

/// Each is asked for on its own: the service refuses a whole list for one word that it does not know, or that this user
/// may not have.
constexpr std::array keys{"handle-power-key", "handle-suspend-key", "handle-hibernate-key", "handle-reboot-key",
                          "handle-lid-switch"};

Inhibitor::Request requestFor(const char* key) {
    auto inhibit = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    inhibit << QString::fromLatin1(key) << QStringLiteral("Tapalong") << QStringLiteral("A child is playing")
            << QStringLiteral("block");
    // The handle is a file: it is given back by closing it.
    return {inhibit, [](const QVariant&) { return std::optional<QDBusMessage>(); }, Inhibitor::usualLimit};
}

} // namespace

PowerKeyInhibitors::PowerKeyInhibitors(BusOpener::Open open, Inhibitor::Answered powerKeyAnswered)
    : m_opener(std::move(open)), m_powerKeyAnswered(std::move(powerKeyAnswered)) {}

void PowerKeyInhibitors::hold() {
    if (!std::exchange(m_isWanted, true)) {
        needBus();
    }
}

void PowerKeyInhibitors::release() {
    m_isWanted = false;
    follow();
}

void PowerKeyInhibitors::probe() {
    // While they are wanted, the wish itself has been answered or will be.
    if (!m_isWanted) {
        m_isProbing = true;
        needBus();
    }
}

void PowerKeyInhibitors::needBus() {
    if (m_bus == Bus::open) {
        follow();
    } else if (m_bus == Bus::closed) {
        m_bus = Bus::opening;
        m_opener.start([this](const QDBusConnection& bus) { busOpened(bus); });
    }
}

void PowerKeyInhibitors::busOpened(const QDBusConnection& bus) {
    if (!bus.isConnected()) {
        m_bus = Bus::closed;
        powerKeyAnswered(false);
        return;
    }
    m_bus = Bus::open;
    for (const auto* key : keys) {
        const bool isPowerKey = m_inhibitors.empty();
        m_inhibitors.push_back(std::make_unique<Inhibitor>(
            bus, requestFor(key),
            isPowerKey ? [this](bool granted) { powerKeyAnswered(granted); } : Inhibitor::Answered()));
    }
    follow();
}

void PowerKeyInhibitors::follow() {
    for (const auto& each : m_inhibitors) {
        const bool isPowerKey = each == m_inhibitors.front();
        m_isWanted || (m_isProbing && isPowerKey) ? each->hold() : each->release();
    }
}

void PowerKeyInhibitors::powerKeyAnswered(bool granted) {
    m_isProbing = false;
    if (m_powerKeyAnswered) {
        m_powerKeyAnswered(granted);
    }
    follow();
}

} // namespace tapalong
