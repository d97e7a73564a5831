#pragma once

#include "platform/EventMonitors.h"
#include "platform/MonitorRegistry.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Keyboard.h"

#include <QAbstractNativeEventFilter>

#include <memory>

namespace tapalong {

/// Local monitors get the events of Qt's windows before Qt and its input method do, so a consumed event reaches
/// nothing of ours. Global monitors get the server's raw events, which no grab of another program hides; raw keys do
/// not repeat. The raw events are asked for only while a global monitor wants them.
class X11EventMonitors final : public EventMonitors, private QAbstractNativeEventFilter {
public:
    explicit X11EventMonitors(X11Connection& connection);
    ~X11EventMonitors() override;
    X11EventMonitors(const X11EventMonitors&) = delete;
    X11EventMonitors& operator=(const X11EventMonitors&) = delete;

    [[nodiscard]] MonitorToken addLocalMonitorForEvents(EventMask matching, LocalHandler handler) override;
    [[nodiscard]] MonitorToken addGlobalMonitorForEvents(EventMask matching, GlobalHandler handler) override;
    void removeMonitor(MonitorToken token) override;

    /// For what a tap let pass: a grabbed key reaches our local monitors only through this.
    [[nodiscard]] Verdict dispatchLocal(const InputEvent& event) { return m_registry.dispatchLocal(event); }

    /// While a tap holds the input nothing is bound for other applications.
    void setTapHoldsInput(bool holds);

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    [[nodiscard]] Verdict handleOwnEvent(const xcb_generic_event_t& event);
    [[nodiscard]] Verdict handleOwnKey(const xcb_key_press_event_t& event, bool isPress);

    void updateGlobalInterest();
    void handleConnectionEvent(const xcb_generic_event_t& event);
    void handleRawKey(const xcb_input_raw_key_press_event_t& event, bool isPress);
    void handleRawButton(std::uint32_t button, bool isPress);
    [[nodiscard]] bool isBoundForOthers() const;

    X11Connection& m_connection;
    MonitorRegistry m_registry;
    X11Keyboard m_ownKeyboard;    ///< as Qt's connection shows it
    X11Keyboard m_globalKeyboard; ///< as the raw events show it
    std::shared_ptr<X11Connection::Listener> m_listener;
    std::uint32_t m_selected = 0; ///< raw events asked for
    bool m_leftButtonIsDown = false;
    bool m_tapHoldsInput = false;
};

} // namespace tapalong
