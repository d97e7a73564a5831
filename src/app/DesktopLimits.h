#pragma once

#include "platform/linux/dbus/PowerKeyInhibitors.h"
#include "platform/linux/limits/InputDevices.h"

#include <set>

namespace tapalong {

class DesktopInput;
class LimitBoard;

/// Finds out what of this computer lies below the lock on the keyboard. The arguments outlive it and its board's looks.
class DesktopLimits {
public:
    DesktopLimits(LimitBoard& board, const DesktopInput& input, PowerKeyInhibitors& powerKeys);
    DesktopLimits(const DesktopLimits&) = delete;
    DesktopLimits& operator=(const DesktopLimits&) = delete;

    /// Whether the login service left the key to us when it was asked last.
    void powerKeyAnswered(PowerKey key, bool granted);

private:
    void look();

    LimitBoard& m_board;
    const DesktopInput& m_input;
    PowerKeyInhibitors& m_powerKeys;
    InputDevices m_devices;
    std::set<PowerKey> m_refused;
};

} // namespace tapalong
