#pragma once

#include "platform/linux/dbus/Buses.h"
#include "platform/linux/dbus/Inhibitor.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace tapalong {

/// Asks the system's login service to leave the keys and the lid alone that switch the computer off or to sleep: they
/// reach it below the display server, whoever holds the keyboard.
class PowerKeyInhibitors final : public QObject {
public:
    /// `powerKeyAnswered` is told, now and then, whether the power key itself can be kept from switching off.
    PowerKeyInhibitors(BusOpener::Open open, Inhibitor::Answered powerKeyAnswered);

    void hold();
    void release();

    /// Finds out whether the power key could be had, by having it for a moment.
    void probe();

private:
    enum class Bus : std::uint8_t { closed, opening, open };

    void needBus();
    void busOpened(const QDBusConnection& bus);
    void follow();
    void powerKeyAnswered(bool granted);

    BusOpener m_opener;
    Inhibitor::Answered m_powerKeyAnswered;
    Bus m_bus = Bus::closed;
    bool m_isWanted = false;
    bool m_isProbing = false;
    std::vector<std::unique_ptr<Inhibitor>> m_inhibitors; ///< the power key's first; empty while the bus is not open
};

} // namespace tapalong
