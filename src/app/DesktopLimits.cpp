#include "app/DesktopLimits.h"

#include "app/DesktopInput.h"
#include "platform/desktop/LimitBoard.h"
#include "platform/linux/limits/KernelFiles.h"
#include "platform/linux/limits/SysRq.h"

namespace tapalong {

DesktopLimits::DesktopLimits(LimitBoard& board, const DesktopInput& input, PowerKeyInhibitors& powerKeys)
    : m_board(board), m_input(input), m_powerKeys(powerKeys) {
    board.whenLooking([this] { look(); });
}

void DesktopLimits::look() {
    const KernelFiles kernel;
    m_devices = inputDevices(kernel.text("bus/input/devices"));
    const auto sysRq = sysRqPowers(kernel.text("sys/kernel/sysrq"), kernel.text("cmdline").value_or(""));
    m_board.set(InputLimit::sysRqEndsPrograms, m_devices.hasSysRqKey && sysRq.endsPrograms);
    m_board.set(InputLimit::sysRqRestarts, m_devices.hasSysRqKey && sysRq.restarts);
    m_board.set(InputLimit::sysRqStopsSaving, m_devices.hasSysRqKey && sysRq.stopsSaving);
    m_board.set(InputLimit::touchpadGestures, m_devices.hasTouchpad && m_input.desktopMakesGestures());
    m_board.set(InputLimit::serverKeys, m_input.serverKeysStayOpen());
    m_powerKeys.probe();
}

void DesktopLimits::powerKeyAnswered(PowerKey key, bool granted) {
    if (granted) {
        m_refused.erase(key);
    } else {
        m_refused.insert(key);
    }
    m_board.set(InputLimit::powerButton, m_devices.hasPowerKey && m_refused.contains(PowerKey::power));
    m_board.set(InputLimit::sleepKey, (m_devices.hasSleepKey && m_refused.contains(PowerKey::sleep)) ||
                                          (m_devices.hasHibernateKey && m_refused.contains(PowerKey::hibernate)));
}

} // namespace tapalong
