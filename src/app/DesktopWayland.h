#pragma once

#include "app/DesktopInput.h"
#include "platform/linux/wayland/NoAccessibility.h"
#include "platform/linux/wayland/NoEventTaps.h"
#include "platform/linux/wayland/SeenPointer.h"
#include "platform/linux/wayland/WaylandEventMonitors.h"

namespace tapalong {

class DesktopWayland final : public DesktopInput {
public:
    explicit DesktopWayland(NoticeBoard& notices);

    [[nodiscard]] Accessibility& accessibility() override { return m_accessibility; }
    [[nodiscard]] EventMonitors& eventMonitors() override { return m_eventMonitors; }
    [[nodiscard]] EventTaps& eventTaps() override { return m_eventTaps; }
    [[nodiscard]] KeyboardLocks& keyboardLocks() override { return m_eventMonitors.keyboardLocks(); }
    [[nodiscard]] std::optional<QPointF> pointer() const override { return m_seenPointer.position(); }
    /// The compositor's own, and whole.
    [[nodiscard]] QSizeF sizeOf(const QScreen& screen) const override;
    void secureFieldFocused(QObject*) override {} // without taps every key is the field's own
    /// The touchpad is the compositor's own.
    [[nodiscard]] bool desktopMakesGestures() const override { return true; }
    [[nodiscard]] bool serverKeysStayOpen() const override { return true; }
    void describeWindows(WindowTraits& traits) override;

private:
    SeenPointer m_seenPointer;
    WaylandEventMonitors m_eventMonitors;
    NoEventTaps m_eventTaps;
    NoAccessibility m_accessibility;
};

} // namespace tapalong
