#pragma once

#include "desktop/siege/client/Server.h"

namespace tapalong::siege {

/// Where a desktop's daemons put their shortcuts.
enum class GrabLevel : std::uint8_t {
    core,   ///< on the core keyboard and pointer, as most do
    slaves, ///< on each physical device, which an active grab of the core keyboard does not stop
};

/// A desktop daemon with shortcuts of its own: media keys, Super, Print and the like on keys; the extra buttons of a
/// mouse.
class Daemon {
public:
    explicit Daemon(GrabLevel level);

    /// Appends what came through a shortcut since the last call.
    void collect(std::vector<std::string>& sightings);

private:
    void grabOnCore(xcb_keycode_t keycode);
    void grabOnSlaves(std::uint8_t grabType, std::uint32_t detail);
    [[nodiscard]] std::vector<xcb_keycode_t> shortcutKeys() const;

    Server m_server;
    GrabLevel m_level;
    std::vector<xcb_input_device_id_t> m_keyboards;
    std::vector<xcb_input_device_id_t> m_pointers;
};

} // namespace tapalong::siege
