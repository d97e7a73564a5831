#pragma once

#include "platform/linux/x11/XcbHeaders.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tapalong {

/// An input device, by the server's number for it.
struct Device {
    std::uint16_t id = 0;
    bool isMaster = false; ///< one of those that all programs share, which the others move and type for
    bool hasKeys = false;
    bool hasButtons = false;
};

/// Masters first: what is set on a master is set on its devices too, which then get their own. None when the server
/// does not say.
[[nodiscard]] std::optional<std::vector<Device>> inputDevices(xcb_connection_t* xcb);

} // namespace tapalong
