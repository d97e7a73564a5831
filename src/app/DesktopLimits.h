#pragma once

namespace tapalong {

class DesktopInput;
class LimitBoard;
class PowerKeyInhibitors;

/// Finds out what of this computer lies below the lock on the keyboard. The arguments outlive it and its board's looks.
class DesktopLimits {
public:
    DesktopLimits(LimitBoard& board, const DesktopInput& input, PowerKeyInhibitors& powerKeys);
    DesktopLimits(const DesktopLimits&) = delete;
    DesktopLimits& operator=(const DesktopLimits&) = delete;

    /// Whether the login service left the power key to us when it was asked last.
    void powerKeyAnswered(bool granted);

private:
    void look();

    LimitBoard& m_board;
    const DesktopInput& m_input;
    PowerKeyInhibitors& m_powerKeys;
    bool m_hasPowerKey = false;
};

} // namespace tapalong
