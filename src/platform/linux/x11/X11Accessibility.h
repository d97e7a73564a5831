#pragma once

#include "platform/Accessibility.h"

namespace tapalong {

/// An X server that has the keyboard itself (see isXwayland) lets any client take it; there is nothing to ask the user.
class X11Accessibility final : public Accessibility {
public:
    [[nodiscard]] bool isProcessTrusted() override { return true; }
    bool isProcessTrustedWithPrompt() override { return true; }
};

} // namespace tapalong
