#include "platform/desktop/QtApplication.h"

#include "platform/desktop/AppearanceSource.h"
#include "platform/desktop/QtWindows.h"

#include <QGuiApplication>

namespace tapalong {

QtApplication::QtApplication(const QtWindows& windows, const AppearanceSource& appearance)
    : m_windows(windows), m_appearance(appearance) {}

bool QtApplication::isActive() const {
    return QGuiApplication::focusWindow() != nullptr;
}

void QtApplication::activateIgnoringOtherApps() {
    if (auto* const window = m_windows.frontWindow()) {
        window->quickView().raise();
        window->takeKeyboard();
    }
}

std::optional<Appearance> QtApplication::effectiveAppearance() const {
    return m_appearance.appearance();
}

} // namespace tapalong
