#pragma once

#include "base/Observable.h"

namespace tapalong {

/// Which locks of the keyboard are on, as far as is known; announced before each change. Whoever follows the keyboard
/// keeps it.
class KeyboardLocks : public ObservableObject {
public:
    [[nodiscard]] bool isCapsLockOn() const { return m_isCapsLockOn.get(); }

    void setCapsLockOn(bool isOn) {
        if (isOn != isCapsLockOn()) {
            m_isCapsLockOn.set(isOn);
        }
    }

private:
    Published<bool> m_isCapsLockOn{*this, false};
};

} // namespace tapalong
