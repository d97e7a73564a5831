#pragma once

#include "desktop/siege/client/Server.h"

namespace tapalong::siege {

/// Another program that has asked for the keys and clicks of every keyboard and mouse by itself, wherever on the screen
/// nobody else takes them. (Raw events, which no program can be denied, it does not ask for.)
class DeviceListener {
public:
    DeviceListener();

    /// Appends what came of physical devices since the last call.
    void collect(std::vector<std::string>& sightings);

private:
    Server m_server;
};

} // namespace tapalong::siege
