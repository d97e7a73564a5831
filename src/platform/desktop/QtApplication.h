#pragma once

#include "platform/Application.h"

namespace tapalong {

class AppearanceSource;
class QtWindows;

/// This process as the desktop sees it. The arguments outlive it.
class QtApplication final : public Application {
public:
    QtApplication(const QtWindows& windows, const AppearanceSource& appearance);

    [[nodiscard]] bool isActive() const override;
    void activateIgnoringOtherApps() override;
    void setPresentationOptions(PresentationOptions options) override { m_presentationOptions = options; }
    [[nodiscard]] std::optional<Appearance> effectiveAppearance() const override;

    [[nodiscard]] PresentationOptions presentationOptions() const { return m_presentationOptions; }

private:
    const QtWindows& m_windows;
    const AppearanceSource& m_appearance;
    PresentationOptions m_presentationOptions = Presentation::none;
};

} // namespace tapalong
