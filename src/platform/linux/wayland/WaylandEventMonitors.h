#pragma once

#include "platform/EventMonitors.h"
#include "platform/KeyboardLocks.h"
#include "platform/MonitorRegistry.h"
#include "platform/linux/wayland/QtKeyEvents.h"

#include <QObject>

namespace tapalong {

/// Monitors fed by the key events of our own windows, which is all that a compositor lets a program see: global
/// monitors are taken in and never called.
class WaylandEventMonitors final : public QObject, public EventMonitors {
public:
    WaylandEventMonitors();

    [[nodiscard]] MonitorToken addLocalMonitorForEvents(EventMask matching, LocalHandler handler) override;
    [[nodiscard]] MonitorToken addGlobalMonitorForEvents(EventMask matching, GlobalHandler handler) override;
    void removeMonitor(MonitorToken token) override;

    /// As the last key in a window of ours left them.
    [[nodiscard]] KeyboardLocks& keyboardLocks() { return m_keyboardLocks; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    MonitorRegistry m_registry;
    QtKeyEvents m_keys;
    KeyboardLocks m_keyboardLocks;
};

} // namespace tapalong
