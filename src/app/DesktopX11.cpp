#include "app/DesktopX11.h"

#include "platform/desktop/NoticeBoard.h"
#include "platform/linux/limits/GestureMakers.h"
#include "platform/linux/limits/KernelFiles.h"
#include "platform/linux/x11/WindowManagerName.h"
#include "platform/linux/x11/X11Pointer.h"
#include "platform/linux/x11/X11ScreenCover.h"

#include <QWindow>

namespace tapalong {

DesktopX11::DesktopX11(NoticeBoard& notices) {
    if (!m_connection.isUsable()) {
        notices.set("x11.unusable", "Lockdown Mode does not work on this display: its X server lacks what is needed "
                                    "to keep keys from other programs.");
    }
}

std::optional<QPointF> DesktopX11::pointer() const {
    return pointerPosition(m_connection, m_screenPixels);
}

bool DesktopX11::desktopMakesGestures() const {
    return m_connection.isUsable() &&
           makesGestures(windowManagerName(m_connection.xcb(), m_connection.root()), KernelFiles().runningPrograms());
}

void DesktopX11::describeWindows(WindowTraits& traits) {
    traits.cover = Cover::unmanaged;
    traits.coverScreen = [this](QWindow& window, const QScreen& screen) {
        coverScreen(window, screen, m_screenPixels.of(screen));
    };
    traits.takeKeyboard = takeKeyboard;
    traits.borderlessWindowMade = [this](QWindow& window) {
        keepOnTop(window);
        m_focusKeeper.keepFor(window);
    };
}

void DesktopX11::keepOnTop(QWindow& window) {
    QObject::connect(&window, &QWindow::visibleChanged, &window, [this, &window](bool isVisible) {
        // The old keeper first: there is one at a time.
        m_windowKeeper.reset();
        if (isVisible) {
            m_windowKeeper = std::make_unique<X11WindowKeeper>(m_connection, window);
        }
    });
}

} // namespace tapalong
