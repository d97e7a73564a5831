#pragma once

#include "platform/desktop/WindowTraits.h"

#include <QPointF>
#include <QSizeF>

#include <memory>
#include <optional>

class QObject;
class QScreen;

namespace tapalong {

class Accessibility;
class EventMonitors;
class EventTaps;
class KeyboardLocks;
class NoticeBoard;

/// What the display systems do each in their own way: input, and the windows that must hold against the desktop.
class DesktopInput {
public:
    virtual ~DesktopInput() = default;

    [[nodiscard]] virtual Accessibility& accessibility() = 0;
    [[nodiscard]] virtual EventMonitors& eventMonitors() = 0;
    [[nodiscard]] virtual EventTaps& eventTaps() = 0;
    [[nodiscard]] virtual KeyboardLocks& keyboardLocks() = 0;

    /// In the toolkit's screen coordinates; none while nobody knows.
    [[nodiscard]] virtual std::optional<QPointF> pointer() const = 0;

    /// Of a screen in points, with the fraction that the toolkit rounds away.
    [[nodiscard]] virtual QSizeF sizeOf(const QScreen& screen) const = 0;

    /// The password field that got the keyboard focus, null when it lost it.
    virtual void secureFieldFocused(QObject* field) = 0;

    /// Whether something on this desktop makes more of touchpad gestures than scrolling and zooming, where we could not
    /// stop it.
    [[nodiscard]] virtual bool desktopMakesGestures() const = 0;

    /// Whether the display server itself acts on chords that we could not keep from it.
    [[nodiscard]] virtual bool serverKeysStayOpen() const = 0;

    /// Fills in how windows are made here; this object must outlive them.
    virtual void describeWindows(WindowTraits& traits) = 0;
};

/// For the display system that the QGuiApplication runs on, or the one below it where that is an X server on a Wayland
/// desktop. What it cannot do goes to `notices`.
[[nodiscard]] std::unique_ptr<DesktopInput> makeDesktopInput(NoticeBoard& notices);

} // namespace tapalong
