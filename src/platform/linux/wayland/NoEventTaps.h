#pragma once

#include "platform/EventTaps.h"

namespace tapalong {

/// For a desktop on which no program can take the keyboard: no tap is ever had.
class NoEventTaps final : public EventTaps {
public:
    [[nodiscard]] std::optional<TapHandle> createTap(TapLocation, TapPlacement, TapOptions, EventMask,
                                                     Callback) override {
        return std::nullopt;
    }
    void enableTap(TapHandle, bool) override {}
    [[nodiscard]] bool isTapEnabled(TapHandle) const override { return false; }
    [[nodiscard]] RunLoopSource createRunLoopSource(TapHandle) override { return {}; }
    void addSource(RunLoopSource) override {}
    void removeSource(RunLoopSource) override {}
};

} // namespace tapalong
