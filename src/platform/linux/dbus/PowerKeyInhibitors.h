#pragma once

#include "platform/linux/dbus/Buses.h"
#include "platform/linux/dbus/Inhibitor.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace tapalong {

/// The keys whose refusal is told.
enum class PowerKey : std::uint8_t { power, sleep, hibernate };

/// Asks the system's login service to leave the keys and the lid alone that switch the computer off or to sleep: they
/// reach it below the display server, whoever holds the keyboard.
class PowerKeyInhibitors final : public QObject {
public:
    using Answered = std::function<void(PowerKey key, bool granted)>;

    /// `answered` is told, now and then, whether a key can be kept from switching off or from putting to sleep.
    PowerKeyInhibitors(BusOpener::Open open, Answered answered);

    void hold();
    void release();

    /// Finds out whether each of those keys could be had, by having it for a moment.
    void probe();

private:
    enum class Bus : std::uint8_t { closed, opening, open };

    void needBus();
    void busOpened(const QDBusConnection& bus);
    void follow();
    void keyAnswered(PowerKey key, bool granted);

    struct Held {
        std::optional<PowerKey> key; ///< none for what is not told of
        std::unique_ptr<Inhibitor> inhibitor;
    };

    BusOpener m_opener;
    Answered m_answered;
    Bus m_bus = Bus::closed;
    bool m_isWanted = false;
    std::set<PowerKey> m_probed; ///< those not answered yet
    std::vector<Held> m_held;    ///< empty while the bus is not open
};

} // namespace tapalong
