#include "platform/linux/x11/X11FocusKeeper.h"

#include "platform/linux/x11/QtConnection.h"

#include <QGuiApplication>

#include <chrono>

namespace tapalong {

namespace {

using namespace std::chrono_literals;

// Not at the very moment, or another program that does the same would keep the server busy with the two of us.
constexpr auto untilTakenBack = 10ms;

// Neither our own grab nor another program that takes the focus meanwhile: the window would stop its cursor and its
// field, and the rest of a password would be typed into the session.
bool isNoLossOfKeyboard(const xcb_generic_event_t& event) {
    const auto mode = as<xcb_focus_out_event_t>(event).mode;
    return kindOf(event) == XCB_FOCUS_OUT && (mode == XCB_NOTIFY_MODE_GRAB || mode == XCB_NOTIFY_MODE_WHILE_GRABBED);
}

// By somebody who sets the focus, and not by where the pointer is.
bool isTaking(const xcb_focus_in_event_t& event) {
    return event.mode == XCB_NOTIFY_MODE_WHILE_GRABBED && event.detail != XCB_NOTIFY_DETAIL_POINTER;
}

} // namespace

// The toolkit asks for the focus with the time of the last input that it saw, and the server ignores a request that is
// older than the present focus: so we could never take it back from a program that the child did not touch.
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

X11FocusKeeper::X11FocusKeeper(X11EventTaps& taps) : m_taps(taps) {
    m_untilTakenBack.setSingleShot(true);
    m_untilTakenBack.setInterval(untilTakenBack);
    QObject::connect(&m_untilTakenBack, &QTimer::timeout, &m_untilTakenBack, [this] {
        if (m_window && m_window->isVisible()) {
            takeKeyboard(*m_window);
        }
    });
    // Without a tap, another window of ours counts as being in front, and keys would change it unseen.
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &m_untilTakenBack, [this](const QWindow* focused) {
        if (focused != nullptr && focused != m_window && m_window && m_window->isVisible()) {
            m_untilTakenBack.start();
        }
    });
    // It may be had late, when somebody else has the focus already: a password would be typed into the session.
    m_taps.whenInputIsHeld([this] { m_untilTakenBack.start(); });
    qGuiApp->installNativeEventFilter(this);
}

X11FocusKeeper::~X11FocusKeeper() {
    m_taps.whenInputIsHeld({});
    if (qGuiApp != nullptr) {
        qGuiApp->removeNativeEventFilter(this);
    }
}

void X11FocusKeeper::keepFor(QWindow& window) {
    if (m_window) {
        m_window->disconnect(&m_untilTakenBack);
    }
    m_untilTakenBack.stop();
    m_window = &window;
    QObject::connect(&window, &QWindow::activeChanged, &m_untilTakenBack, [this, &window] {
        if (!window.isActive() && m_taps.holdsInput()) {
            m_untilTakenBack.start();
        }
    });
}

// That counts as taken by another program: else the field that a password is being typed into would not be in the
// active window for a moment.
bool X11FocusKeeper::isGivenToAnotherOfOurs(const xcb_generic_event_t& event) const {
    const auto& focus = as<xcb_focus_in_event_t>(event);
    return kindOf(event) == XCB_FOCUS_IN && isTaking(focus) && m_window && m_window->isVisible() &&
           focus.event != m_window->winId();
}

bool X11FocusKeeper::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (eventType != "xcb_generic_event_t" || !m_taps.holdsInput()) {
        return false;
    }
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    if (!isNoLossOfKeyboard(event) && !isGivenToAnotherOfOurs(event)) {
        return false;
    }
    if (isTaking(as<xcb_focus_in_event_t>(event))) {
        m_untilTakenBack.start();
    }
    return true;
}

} // namespace tapalong
