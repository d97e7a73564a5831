#include "platform/linux/wayland/WaylandEventMonitors.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include <utility>

namespace tapalong {

WaylandEventMonitors::WaylandEventMonitors() {
    qGuiApp->installEventFilter(this);
}

MonitorToken WaylandEventMonitors::addLocalMonitorForEvents(EventMask matching, LocalHandler handler) {
    return m_registry.addLocal(matching, std::move(handler));
}

MonitorToken WaylandEventMonitors::addGlobalMonitorForEvents(EventMask matching, GlobalHandler handler) {
    return m_registry.addGlobal(matching, std::move(handler));
}

void WaylandEventMonitors::removeMonitor(MonitorToken token) {
    m_registry.remove(token);
}

bool WaylandEventMonitors::eventFilter(QObject* watched, QEvent* event) {
    // Windows pass their keys on to the items in them as events of their own: those have been seen already.
    if (!watched->isWindowType()) {
        return false;
    }
    switch (event->type()) {
    case QEvent::FocusOut:
        m_keys.forgetHeldKeys();
        return false;
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto key = m_keys.translate(*static_cast<const QKeyEvent*>(event));
        if (!key) {
            return false;
        }
        m_keyboardLocks.setCapsLockOn((key->modifierFlags & Modifier::capsLock) != 0);
        return m_registry.dispatchLocal(*key) == Verdict::consume;
    }
    default:
        return false;
    }
}

} // namespace tapalong
