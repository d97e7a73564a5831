#pragma once

#include "platform/linux/keyboard/XkbHandles.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tapalong {

/// Dead keys and the Compose key, by the table of the user's locale, which the environment names. Without a table no
/// sequence ever begins. The table is read once per process, at the first key: it is large, and
/// the program shall start fast.
class ComposeSequence {
public:
    struct Step {
        bool underWay = false;                 ///< the key belongs to a sequence that goes on: it types nothing
        std::optional<std::string> finished{}; ///< the text of the sequence that this key completed
    };

    /// The next key pressed. Modifiers do not disturb a sequence; a key that does not continue it ends it and then
    /// types for itself.
    Step press(xkb_keysym_t keysym);
    [[nodiscard]] bool isUnderWay() const;
    void reset();

private:
    XkbHandle<xkb_compose_state> m_state;
};

} // namespace tapalong
