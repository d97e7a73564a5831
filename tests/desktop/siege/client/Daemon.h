#pragma once

#include "desktop/siege/client/Server.h"

namespace tapalong::siege {

/// Where a desktop's daemons put their shortcuts.
enum class GrabLevel : std::uint8_t {
    core,   ///< on the core keyboard and pointer, as most do
    slaves, ///< on each physical keyboard and mouse, which an active grab of the core ones does not stop
};

/// A desktop daemon with shortcuts of its own: media keys, Super, Print and the like, and the extra buttons of
/// a mouse.
class Daemon {
public:
    explicit Daemon(GrabLevel level);

    /// Appends what came through a shortcut since the last call.
    void collect(std::vector<std::string>& sightings);

private:
    void grabOnCore();
    void grabOnSlaves();
    void grabKeysOf(xcb_input_device_id_t keyboard);
    void grabButtonsOf(xcb_input_device_id_t pointer);
    [[nodiscard]] std::vector<xcb_keycode_t> shortcutKeys() const;

    Server m_server;
};

} // namespace tapalong::siege
