#pragma once

#include "platform/Geometry.h"

#include <optional>
#include <string_view>

namespace tapalong {

/// Posted on the notification centre when the main screen may have become another one or got another frame, and when
/// there is none any more or one again.
inline constexpr std::string_view screenParametersChangedNotification = "screenParametersChanged";

class Screens {
public:
    virtual ~Screens() = default;

    /// None while no display is attached.
    [[nodiscard]] virtual std::optional<Rect> mainScreenFrame() const = 0;

    /// Where the pointer is, on whichever screen.
    [[nodiscard]] virtual Point mouseLocation() const = 0;
};

} // namespace tapalong
