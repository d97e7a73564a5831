#pragma once

#include "base/Observable.h"
#include "platform/Application.h"

#include <optional>

namespace tapalong {

/// Whether the desktop is dark or light; announces its changes.
class AppearanceSource : public ObservableObject {
public:
    virtual ~AppearanceSource() = default;

    [[nodiscard]] virtual std::optional<Appearance> appearance() const = 0;
};

} // namespace tapalong
