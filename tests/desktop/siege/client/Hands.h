#pragma once

#include "desktop/siege/client/Server.h"

#include <set>

namespace tapalong::siege {

/// Presses and moves real keys, buttons and pointer (XTest) as tokens say: "+38" and "-38" a key by its X key code,
/// "b+2" and "b-2" a button, "m400,300" the pointer.
class Hands {
public:
    void play(const std::string& token);

    /// Lets go of everything and undoes locks (Caps Lock, Num Lock, layout), so that one chord is not another's.
    void rest();
    void tap(std::uint8_t keycode);

private:
    void fake(std::uint8_t type, std::uint8_t detail, std::int16_t x = 0, std::int16_t y = 0);

    Server m_server;
    std::set<std::uint8_t> m_keys;
    std::set<std::uint8_t> m_buttons;
};

} // namespace tapalong::siege
