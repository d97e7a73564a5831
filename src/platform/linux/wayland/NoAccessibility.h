#pragma once

#include "platform/Accessibility.h"

namespace tapalong {

/// For a desktop on which no program can take the keyboard, and there is nobody to ask for it.
class NoAccessibility final : public Accessibility {
public:
    [[nodiscard]] bool isProcessTrusted() override { return false; }
    bool isProcessTrustedWithPrompt() override { return false; }
};

} // namespace tapalong
