#pragma once

#include "session/SharedColor.h"
#include "session/TypedContent.h"
#include "session/Uuid.h"
#include "text/Character.h"

namespace tapalong {

/// One character on the screen. It is replaced, never changed.
struct TypedCharacter {
    Character character;
    SharedColor color;
    Uuid id; ///< tells equal characters apart

    TypedCharacter(Character typed, const Color& chosen, Uuid unique)
        : character(std::move(typed)), color(chosen), id(unique) {}
};

} // namespace tapalong
