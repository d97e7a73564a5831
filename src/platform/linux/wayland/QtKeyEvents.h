#pragma once

#include "platform/InputEvent.h"

#include <cstdint>
#include <optional>
#include <set>

class QKeyEvent;

namespace tapalong {

/// Turns the toolkit's key events into ours. The toolkit's carry the modifiers from before the key; ours those from
/// after it, which needs a memory of what is held.
class QtKeyEvents {
public:
    /// None for the releases that the toolkit makes up between the repetitions of a held key, and for a Caps Lock key
    /// that changes nothing.
    [[nodiscard]] std::optional<InputEvent> translate(const QKeyEvent& event);

    /// The keyboard is lost: what is released elsewhere is not seen.
    void forgetHeldKeys() { m_heldModifiers.clear(); }

    /// The same for one event alone.
    [[nodiscard]] static InputEvent translateAlone(const QKeyEvent& event);

private:
    [[nodiscard]] std::optional<InputEvent> translateModifier(const QKeyEvent& event, std::int64_t code);
    [[nodiscard]] std::optional<InputEvent> translateCapsLock(const QKeyEvent& event, std::int64_t code);

    std::set<std::int64_t> m_heldModifiers; ///< virtual key codes
    bool m_unlocksOnRelease = false;
};

} // namespace tapalong
