#pragma once

#include "lockdown/KeyEvent.h"

#include <string>

namespace tapalong {

/// A key event in words: its character in quotes, or its kind.
inline std::string describe(const KeyEvent& event) {
    using Kind = KeyEvent::Kind;
    switch (event.kind) {
    case Kind::printable:
        return "'" + event.character.value().utf8() + "'";
    case Kind::space:
        return "space";
    case Kind::enter:
        return "enter";
    case Kind::deleteLast:
        return "delete";
    case Kind::tab:
        return "tab";
    case Kind::emoji:
        return "emoji";
    case Kind::celestial:
        return "celestial";
    case Kind::suppressed:
        break;
    }
    return "suppressed";
}

} // namespace tapalong
