#pragma once

#include "platform/Platform.h"
#include "platform/Windows.h"

#include <memory>

namespace tapalong {

/// The full-screen window of one session. Key events that reach it unhandled end here: typing is watched by the
/// lockdown's monitors, not by the window.
class SessionWindow final : public WindowResponder {
public:
    /// Makes the window; it is not shown yet.
    SessionWindow(Rect contentRect, StyleMask style, BackingStore backing, bool defer, const Platform& platform);

    [[nodiscard]] bool canBecomeKey() const override { return true; }
    [[nodiscard]] bool canBecomeMain() const override { return true; }
    void keyDown(const InputEvent&) override {}
    void flagsChanged(const InputEvent&) override {}

    [[nodiscard]] Window& window() const { return *m_window; }

private:
    std::shared_ptr<Window> m_window;
};

} // namespace tapalong
