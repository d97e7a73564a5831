#pragma once

#include <optional>
#include <string>

namespace tapalong {

/// What the computer has for hands.
struct InputDevices {
    bool hasPowerKey = false;
    bool hasSleepKey = false;
    bool hasHibernateKey = false;
    bool hasSysRqKey = false;
    bool hasTouchpad = false;

    bool operator==(const InputDevices&) const = default;
};

/// From the text of bus/input/devices. Where it may not be read, all of them count as there: better said than kept
/// silent.
[[nodiscard]] InputDevices inputDevices(const std::optional<std::string>& list);

} // namespace tapalong
