#pragma once

#include "platform/Application.h"
#include "platform/desktop/LogOutRequests.h"

namespace tapalong {

class AppearanceSource;
class QtWindows;
class TerminationGuard;

/// This process as the desktop sees it. The arguments outlive it.
class QtApplication final : public Application {
public:
    QtApplication(QtWindows& windows, const AppearanceSource& appearance, TerminationGuard& terminationGuard);

    [[nodiscard]] bool isActive() const override;
    void activateIgnoringOtherApps() override;
    /// Of the options, what the session's window does not do by itself: while the session's termination is disabled, a
    /// log-out is refused and the guard holds; while the switching of processes is, no other window of ours takes
    /// clicks.
    void setPresentationOptions(PresentationOptions options) override;
    [[nodiscard]] std::optional<Appearance> effectiveAppearance() const override;

    [[nodiscard]] PresentationOptions presentationOptions() const { return m_presentationOptions; }

private:
    [[nodiscard]] bool disablesSessionTermination() const;

    QtWindows& m_windows;
    const AppearanceSource& m_appearance;
    TerminationGuard& m_terminationGuard;
    PresentationOptions m_presentationOptions = Presentation::none;
    LogOutRequests m_logOutRequests{[this] { return disablesSessionTermination(); }};
};

} // namespace tapalong
