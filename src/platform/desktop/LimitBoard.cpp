#include "platform/desktop/LimitBoard.h"

namespace tapalong {

std::vector<InputLimit> LimitBoard::openLimits() const {
    return {m_open.begin(), m_open.end()};
}

void LimitBoard::lookAgain() {
    for (const auto& look : m_looks) {
        look();
    }
}

void LimitBoard::set(InputLimit limit, bool isOpen) {
    if (m_open.contains(limit) == isOpen) {
        return;
    }
    sendObjectWillChange();
    if (isOpen) {
        m_open.insert(limit);
    } else {
        m_open.erase(limit);
    }
}

} // namespace tapalong
