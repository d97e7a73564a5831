#pragma once

#include "session/TypedContent.h"
#include "session/Uuid.h"
#include "settings/Color.h"
#include "text/Character.h"

namespace tapalong {

/// One character on the screen. It is replaced, never changed.
struct TypedCharacter {
    Character character;
    Color color;
    Uuid id; ///< tells equal characters apart

    TypedCharacter(Character typed, Color chosen, Uuid unique)
        : character(std::move(typed)), color(chosen), id(unique) {}
};

} // namespace tapalong
