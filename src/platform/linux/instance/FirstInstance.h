#pragma once

#include "platform/linux/instance/Socket.h"

#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace tapalong {

/// Sees to it that a user runs the program once on a display: the first holds a name, and later ones that find it taken
/// ask the first to show itself. The name is that of a socket in the abstract namespace, which lies in no folder and
/// goes with its process, however that ends.
class FirstInstance {
public:
    enum class Claim : std::uint8_t {
        first,      ///< it is ours; also where it cannot be had, because who runs nothing else is not to be stopped
        answered,   ///< another one has it and shows itself
        unanswered, ///< another one has it and is stopped, or hangs
    };

    explicit FirstInstance(std::string display) : m_display(std::move(display)) {}

    /// Once; takes a second at most.
    [[nodiscard]] Claim claim();

    /// From now on later ones get an answer, after `show` has been called; those too that came meanwhile.
    void serve(std::function<void()> show);

private:
    const std::string m_display;
    Socket m_listener;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tapalong
