#include "platform/linux/dbus/PowerKeyInhibitors.h"

#include <array>
#include <optional>
#include <utility>

namespace tapalong {

namespace {

/// Each is asked for on its own: the service refuses a whole list for one word that it does not know, or that this user
/// may not have.
struct Key {
    const char* name;
    std::optional<PowerKey> told;
};
constexpr std::array keys{Key{"handle-power-key", PowerKey::power}, Key{"handle-suspend-key", PowerKey::sleep},
                          Key{"handle-hibernate-key", PowerKey::hibernate}, Key{"handle-reboot-key", std::nullopt},
                          Key{"handle-lid-switch", std::nullopt}};
constexpr std::array toldKeys{PowerKey::power, PowerKey::sleep, PowerKey::hibernate};

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

PowerKeyInhibitors::PowerKeyInhibitors(BusOpener::Open open, Answered answered)
    : m_opener(std::move(open)), m_answered(std::move(answered)) {}

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
        m_probed = {toldKeys.begin(), toldKeys.end()};
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
        for (const auto key : toldKeys) {
            keyAnswered(key, false);
        }
        return;
    }
    m_bus = Bus::open;
    for (const auto& [name, told] : keys) {
        Inhibitor::Answered answered;
        if (told) {
            answered = [this, key = *told](bool granted) { keyAnswered(key, granted); };
        }
        m_held.push_back({told, std::make_unique<Inhibitor>(bus, requestFor(name), answered)});
    }
    follow();
}

void PowerKeyInhibitors::follow() {
    for (const auto& each : m_held) {
        const bool isProbed = each.key && m_probed.contains(*each.key);
        m_isWanted || isProbed ? each.inhibitor->hold() : each.inhibitor->release();
    }
}

void PowerKeyInhibitors::keyAnswered(PowerKey key, bool granted) {
    m_probed.erase(key);
    if (m_answered) {
        m_answered(key, granted);
    }
    follow();
}

} // namespace tapalong
