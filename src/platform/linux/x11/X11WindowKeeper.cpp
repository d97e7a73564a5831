#include "platform/linux/x11/X11WindowKeeper.h"

#include <QWindow>

#include <chrono>

namespace tapalong {

namespace {

using namespace std::chrono_literals;

// Another program that also insists on the top must not keep both of us and the server busy.
constexpr auto leastBetweenRaises = 4ms;

void selectOn(X11Connection& connection, xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection.xcb(), window, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(connection.xcb());
}

} // namespace

X11WindowKeeper::X11WindowKeeper(X11Connection& connection, const QWindow& window)
    : m_connection(connection), m_window(static_cast<xcb_window_t>(window.winId())),
      m_listener(connection.listen([this](const auto& event) { handle(event); })) {
    m_delayedRaise.setSingleShot(true);
    QObject::connect(&m_delayedRaise, &QTimer::timeout, &m_delayedRaise, [this] { raise(); });
    if (connection.isUsable()) {
        selectOn(connection, m_window, XCB_EVENT_MASK_VISIBILITY_CHANGE);
        connection.selectOnRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
        raise();
    }
}

X11WindowKeeper::~X11WindowKeeper() {
    if (m_connection.isUsable()) {
        selectOn(m_connection, m_window, 0);
        m_connection.selectOnRoot(0);
    }
}

// Of our own window too, which another program may lower. Our raise comes back as such an event only when it has changed
// the order; the one that follows changes nothing, and the server does not tell of it.
bool X11WindowKeeper::mayBeCovered(const xcb_generic_event_t& event) const {
    switch (kindOf(event)) {
    case XCB_VISIBILITY_NOTIFY: {
        const auto& visibility = as<xcb_visibility_notify_event_t>(event);
        return visibility.window == m_window && visibility.state != XCB_VISIBILITY_UNOBSCURED;
    }
    case XCB_MAP_NOTIFY:
    case XCB_CONFIGURE_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
    case XCB_REPARENT_NOTIFY:
        return true;
    default:
        return false;
    }
}

void X11WindowKeeper::handle(const xcb_generic_event_t& event) {
    if (!mayBeCovered(event) || m_delayedRaise.isActive()) {
        return;
    }
    if (m_sinceRaise.isValid() && m_sinceRaise.elapsed() < leastBetweenRaises.count()) {
        m_delayedRaise.start(leastBetweenRaises);
    } else {
        raise();
    }
}

void X11WindowKeeper::raise() {
    constexpr std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection.xcb(), m_window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(m_connection.xcb());
    m_sinceRaise.start();
}

} // namespace tapalong
