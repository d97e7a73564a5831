#include "app/DesktopX11.h"

#include "platform/desktop/NoticeBoard.h"
#include "platform/linux/limits/GestureMakers.h"
#include "platform/linux/limits/KernelFiles.h"
#include "platform/linux/x11/QtConnection.h"
#include "platform/linux/x11/WindowManagerName.h"
#include "platform/linux/x11/X11Pointer.h"
#include "platform/linux/x11/X11ScreenCover.h"

#include <QGuiApplication>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <chrono>

namespace tapalong {

namespace {

using namespace std::chrono_literals;

/// The toolkit asks for the focus with the time of the last input that it saw, and the server ignores a request that
/// is older than the present focus: so we could never take it back from a program that the child did not touch.
void takeKeyboard(QWindow& window) {
    const bool isUnmanaged = window.flags().testFlag(Qt::BypassWindowManagerHint);
    if (!isUnmanaged || !window.isExposed()) {
        window.requestActivate();
        return;
    }
    auto* const server = qtConnection();
    xcb_set_input_focus(server, XCB_INPUT_FOCUS_PARENT, static_cast<xcb_window_t>(window.winId()), XCB_CURRENT_TIME);
    xcb_flush(server);
}

} // namespace

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
        keepKeyboard(window);
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

// While a tap holds the keyboard no other program can use the focus, but it would have the keyboard the instant that the
// tap ends. The watchdog rests while the overlay shows, so this cannot be left to it.
void DesktopX11::keepKeyboard(QWindow& window) {
    // Not at the very moment, or another program that does the same would keep the server busy with the two of us.
    auto* const takeBack = new QTimer(&window);
    takeBack->setSingleShot(true);
    takeBack->setInterval(10ms);
    QObject::connect(takeBack, &QTimer::timeout, &window, [&window] {
        if (window.isVisible()) {
            takeKeyboard(window);
        }
    });
    m_eventTaps.whenFocusIsTaken([takeBack = QPointer(takeBack)] {
        if (takeBack) {
            takeBack->start();
        }
    });
    QObject::connect(&window, &QWindow::visibleChanged, &window, [this, &window](bool isVisible) {
        m_eventTaps.setKeyWindow(isVisible ? static_cast<xcb_window_t>(window.winId()) : XCB_NONE);
    });
    QObject::connect(&window, &QWindow::activeChanged, takeBack, [this, &window, takeBack] {
        if (!window.isActive() && m_eventTaps.holdsInput()) {
            takeBack->start();
        }
    });
    // Without a tap, another window of ours counts as being in front, and keys would change it unseen.
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, takeBack, [&window, takeBack](QWindow* focused) {
        if (focused != nullptr && focused != &window && window.isVisible()) {
            takeBack->start();
        }
    });
}

} // namespace tapalong
