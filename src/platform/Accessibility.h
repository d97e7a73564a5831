#pragma once

namespace tapalong {

/// Whether the user lets this process take the whole keyboard.
class Accessibility {
public:
    virtual ~Accessibility() = default;

    [[nodiscard]] virtual bool isProcessTrusted() = 0;

    /// Asks as above; while the answer is no, also brings up the system's own question, where the system has one.
    /// Returns at once, with the answer as it stands.
    virtual bool isProcessTrustedWithPrompt() = 0;
};

} // namespace tapalong
