#pragma once

#include "platform/InputEvent.h"

#include <cstdint>
#include <functional>
#include <memory>

class QKeyEvent;
class QQuickView;
class QScreen;
class QWindow;

namespace tapalong {

class HostedView;

/// Puts what shows the state of a hosted view into a window.
using ContentFactory = std::function<void(QQuickView&, const std::shared_ptr<HostedView>&)>;

/// How a window that covers the main screen is kept from the desktop.
enum class Cover : std::uint8_t {
    unmanaged,  ///< no window manager knows of it: none can close, move or hide it, and it is on every workspace
    fullScreen, ///< a full-screen window of the compositor, where there is no other way
};

/// What the windows of one desktop have in common.
struct WindowTraits {
    ContentFactory makeContent;
    Cover cover = Cover::unmanaged;
    /// Gives a borderless window the place and size at which it hides every pixel of the screen that it is on, and none
    /// of another's. Without it, the screen's geometry.
    std::function<void(QWindow&, const QScreen&)> coverScreen;
    /// Gives a shown window the keyboard.
    std::function<void(QWindow&)> takeKeyboard;
    /// A borderless window has been made and is not shown yet.
    std::function<void(QWindow&)> borderlessWindowMade;
    /// A key event of the toolkit as the rest of the program knows it.
    std::function<InputEvent(const QKeyEvent&)> translateKey;
};

} // namespace tapalong
