#pragma once

#include "session/TypedCharacter.h"

#include <cstddef>

namespace tapalong {

/// What is laid out: the typed characters and, where it is shown, the cursor as the last of all.
struct TypedSequence {
    const TypedContent& characters;
    bool hasCursor = false;

    [[nodiscard]] std::size_t size() const { return characters.size() + (hasCursor ? 1 : 0); }
    [[nodiscard]] bool isCursor(std::size_t index) const { return index >= characters.size(); }
    [[nodiscard]] bool isLineBreak(std::size_t index) const {
        return !isCursor(index) && characters[index].character.isLineBreak();
    }
    [[nodiscard]] bool isBlank(std::size_t index) const {
        return !isCursor(index) && characters[index].character.utf8() == " ";
    }
};

} // namespace tapalong
