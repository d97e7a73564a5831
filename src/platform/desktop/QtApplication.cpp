#include "platform/desktop/QtApplication.h"

#include "platform/desktop/AppearanceSource.h"
#include "platform/desktop/QtWindows.h"
#include "platform/desktop/TerminationGuard.h"

#include <QGuiApplication>

namespace tapalong {

QtApplication::QtApplication(QtWindows& windows, const AppearanceSource& appearance, TerminationGuard& terminationGuard)
    : m_windows(windows), m_appearance(appearance), m_terminationGuard(terminationGuard) {}

bool QtApplication::isActive() const {
    return QGuiApplication::focusWindow() != nullptr;
}

void QtApplication::activateIgnoringOtherApps() {
    if (auto* const window = m_windows.frontWindow()) {
        window->quickView().raise();
        window->takeKeyboard();
    }
}

void QtApplication::setPresentationOptions(PresentationOptions options) {
    m_presentationOptions = options;
    m_windows.setOnlyFrontTakesPointer((options & Presentation::disableProcessSwitching) != 0);
    disablesSessionTermination() ? m_terminationGuard.hold() : m_terminationGuard.release();
}

bool QtApplication::disablesSessionTermination() const {
    return (m_presentationOptions & Presentation::disableSessionTermination) != 0;
}

std::optional<Appearance> QtApplication::effectiveAppearance() const {
    return m_appearance.appearance();
}

} // namespace tapalong
