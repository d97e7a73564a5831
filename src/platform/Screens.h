#pragma once

#include "platform/Geometry.h"

#include <optional>

namespace tapalong {

class Screens {
public:
    virtual ~Screens() = default;

    /// None while no display is attached.
    [[nodiscard]] virtual std::optional<Rect> mainScreenFrame() const = 0;

    /// Where the pointer is, on whichever screen.
    [[nodiscard]] virtual Point mouseLocation() const = 0;
};

} // namespace tapalong
