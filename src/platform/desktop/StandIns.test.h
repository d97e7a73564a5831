#pragma once

#include "platform/desktop/AppearanceSource.h"
#include "platform/desktop/TerminationGuard.h"

#include <string>

namespace tapalong {

/// A desktop that is light.
class LightDesktop final : public AppearanceSource {
public:
    [[nodiscard]] std::optional<Appearance> appearance() const override { return Appearance::aqua; }
};

/// Guards nothing and writes down what it is asked.
class RecordingGuard final : public TerminationGuard {
public:
    void hold() override { calls += "hold "; }
    void release() override { calls += "release "; }

    std::string calls;
};

} // namespace tapalong
