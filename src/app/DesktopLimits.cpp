#include "app/DesktopLimits.h"

#include "app/DesktopInput.h"
#include "platform/desktop/LimitBoard.h"
#include "platform/linux/dbus/PowerKeyInhibitors.h"
#include "platform/linux/limits/InputDevices.h"
#include "platform/linux/limits/KernelFiles.h"
#include "platform/linux/limits/SysRq.h"

namespace tapalong {

DesktopLimits::DesktopLimits(LimitBoard& board, const DesktopInput& input, PowerKeyInhibitors& powerKeys)
    : m_board(board), m_input(input), m_powerKeys(powerKeys) {
    board.whenLooking([this] { look(); });
}

void DesktopLimits::look() {
    const KernelFiles kernel;
    const auto devices = inputDevices(kernel.text("bus/input/devices"));
    const auto sysRq = sysRqPowers(kernel.text("sys/kernel/sysrq"), kernel.text("cmdline").value_or(""));
    m_board.set(InputLimit::sysRqEndsPrograms, devices.hasSysRqKey && sysRq.endsPrograms);
    m_board.set(InputLimit::sysRqRestarts, devices.hasSysRqKey && sysRq.restarts);
    m_board.set(InputLimit::touchpadGestures, devices.hasTouchpad && m_input.desktopMakesGestures());
    m_board.set(InputLimit::serverKeys, m_input.serverKeysStayOpen());
    m_hasPowerKey = devices.hasPowerKey;
    m_powerKeys.probe();
}

void DesktopLimits::powerKeyAnswered(bool granted) {
    m_board.set(InputLimit::powerButton, m_hasPowerKey && !granted);
}

} // namespace tapalong
