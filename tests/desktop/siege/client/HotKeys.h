#pragma once

#include "desktop/siege/client/Server.h"

namespace tapalong::siege {

/// From now on the server's own hot keys work on every keyboard, as desktops switch them on for those who need them:
/// five Shifts are sticky keys, a Shift held for eight seconds is slow keys.
void switchHotKeysOn(const Server& server);

/// They do not, and what they have switched on is off again.
void switchHotKeysOff(const Server& server);

} // namespace tapalong::siege
