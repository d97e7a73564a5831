#pragma once

#include "app/DesktopInput.h"
#include "platform/linux/x11/SecureInput.h"
#include "platform/linux/x11/X11Accessibility.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11EventMonitors.h"
#include "platform/linux/x11/X11EventTaps.h"
#include "platform/linux/x11/X11FocusKeeper.h"
#include "platform/linux/x11/X11KeyboardLocks.h"
#include "platform/linux/x11/X11ScreenPixels.h"
#include "platform/linux/x11/X11WindowKeeper.h"

namespace tapalong {

class DesktopX11 final : public DesktopInput {
public:
    explicit DesktopX11(NoticeBoard& notices);

    [[nodiscard]] Accessibility& accessibility() override { return m_accessibility; }
    [[nodiscard]] EventMonitors& eventMonitors() override { return m_eventMonitors; }
    [[nodiscard]] EventTaps& eventTaps() override { return m_eventTaps; }
    [[nodiscard]] KeyboardLocks& keyboardLocks() override { return m_keyboardLocks; }
    [[nodiscard]] std::optional<QPointF> pointer() const override;
    [[nodiscard]] QSizeF sizeOf(const QScreen& screen) const override { return m_screenPixels.sizeInPoints(screen); }
    void secureFieldFocused(QObject* field) override { m_secureInput.setSecureField(field); }
    [[nodiscard]] bool desktopMakesGestures() const override;
    [[nodiscard]] bool serverKeysStayOpen() const override { return !m_eventTaps.canCloseServerKeys(); }
    void describeWindows(WindowTraits& traits) override;

private:
    void keepOnTop(QWindow& window);

    X11Connection m_connection;
    X11ScreenPixels m_screenPixels{m_connection};
    X11KeyboardLocks m_keyboardLocks{m_connection};
    SecureInput m_secureInput;
    X11EventMonitors m_eventMonitors{m_connection};
    X11EventTaps m_eventTaps{m_connection, m_eventMonitors, m_secureInput};
    X11FocusKeeper m_focusKeeper{m_eventTaps};
    X11Accessibility m_accessibility;
    std::unique_ptr<X11WindowKeeper> m_windowKeeper;
};

} // namespace tapalong
