#include "platform/linux/x11/X11EventMonitors.h"

#include "platform/linux/x11/PointerEvents.h"
#include "platform/linux/x11/QtConnection.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <array>
#include <utility>

namespace tapalong {

namespace {

constexpr EventMask keyEvents = maskOf(EventType::keyDown) | maskOf(EventType::keyUp) |
                                maskOf(EventType::flagsChanged) | maskOf(EventType::systemDefined);
constexpr EventMask motionEvents = maskOf(EventType::mouseMoved) | maskOf(EventType::leftMouseDragged);
constexpr EventMask buttonEvents = maskOf(EventType::leftMouseDown) | maskOf(EventType::leftMouseUp) |
                                   maskOf(EventType::rightMouseDown) | maskOf(EventType::rightMouseUp) |
                                   maskOf(EventType::scrollWheel) | maskOf(EventType::otherMouseDown) |
                                   maskOf(EventType::otherMouseUp) | maskOf(EventType::leftMouseDragged);

std::uint32_t rawEventsFor(EventMask interest) {
    std::uint32_t raw = 0;
    if ((interest & keyEvents) != 0) {
        raw |= XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    }
    if ((interest & motionEvents) != 0) {
        raw |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    }
    if ((interest & buttonEvents) != 0) {
        raw |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    }
    return raw;
}

void selectRawEvents(X11Connection& connection, std::uint32_t events) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{.head = {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1}, .mask = events};
    xcb_input_xi_select_events(connection.xcb(), connection.root(), 1, &selection.head);
    xcb_flush(connection.xcb());
}

} // namespace

X11EventMonitors::X11EventMonitors(X11Connection& connection)
    : m_connection(connection), m_ownKeyboard(connection), m_globalKeyboard(connection),
      m_listener(connection.listen([this](const auto& event) { handleConnectionEvent(event); })) {
    m_ownKeyboard.restart();
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11EventMonitors::~X11EventMonitors() {
    if (auto* application = QCoreApplication::instance()) {
        application->removeNativeEventFilter(this);
    }
}

MonitorToken X11EventMonitors::addLocalMonitorForEvents(EventMask matching, LocalHandler handler) {
    return m_registry.addLocal(matching, std::move(handler));
}

MonitorToken X11EventMonitors::addGlobalMonitorForEvents(EventMask matching, GlobalHandler handler) {
    const MonitorToken token = m_registry.addGlobal(matching, std::move(handler));
    updateGlobalInterest();
    return token;
}

void X11EventMonitors::removeMonitor(MonitorToken token) {
    m_registry.remove(token);
    updateGlobalInterest();
}

void X11EventMonitors::setTapHoldsInput(bool holds) {
    m_tapHoldsInput = holds;
    m_ownKeyboard.forgetHeldKeys();
    updateGlobalInterest();
}

bool X11EventMonitors::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    m_ownKeyboard.observe(event);
    return handleOwnEvent(event) == Verdict::consume;
}

Verdict X11EventMonitors::handleOwnEvent(const xcb_generic_event_t& event) {
    switch (kindOf(event)) {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
        return handleOwnKey(as<xcb_key_press_event_t>(event), kindOf(event) == XCB_KEY_PRESS);
    case XCB_FOCUS_OUT:
        m_ownKeyboard.forgetHeldKeys();
        return Verdict::pass;
    default:
        break;
    }
    const auto pointer = pointerEventOf(event, m_connection.xinputOpcode(), m_ownKeyboard.flags());
    return pointer ? m_registry.dispatchLocal(*pointer) : Verdict::pass;
}

// Qt's connection is told of a repetition as a release and a press. The release is no key-up of ours: it is known by
// the key being down all the same.
Verdict X11EventMonitors::handleOwnKey(const xcb_key_press_event_t& event, bool isPress) {
    if (!isPress && m_connection.isUsable() && m_ownKeyboard.isDownNow(event.detail)) {
        return Verdict::pass;
    }
    const TranslatedKey key = isPress ? m_ownKeyboard.press(event.detail) : m_ownKeyboard.release(event.detail);
    return key.event ? m_registry.dispatchLocal(*key.event) : Verdict::pass;
}

void X11EventMonitors::updateGlobalInterest() {
    std::uint32_t wanted = rawEventsFor(m_registry.globalInterest());
    if (m_tapHoldsInput) {
        // Each key and each movement of the pointer would wake us for nothing. What keys are down is asked afterwards;
        // the left button's state is only told.
        wanted &= rawEventsFor(buttonEvents & ~motionEvents);
    }
    if (wanted == m_selected || !m_connection.isUsable()) {
        return;
    }
    const bool keysBegin = (wanted & ~m_selected & XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS) != 0;
    m_selected = wanted;
    selectRawEvents(m_connection, wanted);
    if (keysBegin) {
        m_globalKeyboard.restart();
    }
}

void X11EventMonitors::handleConnectionEvent(const xcb_generic_event_t& event) {
    m_globalKeyboard.observe(event);
    switch (xinputTypeOf(event, m_connection.xinputOpcode())) {
    case XCB_INPUT_RAW_KEY_PRESS:
        handleRawKey(as<xcb_input_raw_key_press_event_t>(event), true);
        break;
    case XCB_INPUT_RAW_KEY_RELEASE:
        handleRawKey(as<xcb_input_raw_key_press_event_t>(event), false);
        break;
    case XCB_INPUT_RAW_BUTTON_PRESS:
        handleRawButton(as<xcb_input_raw_button_press_event_t>(event).detail, true);
        break;
    case XCB_INPUT_RAW_BUTTON_RELEASE:
        handleRawButton(as<xcb_input_raw_button_press_event_t>(event).detail, false);
        break;
    case XCB_INPUT_RAW_MOTION:
        if (isBoundForOthers()) {
            m_registry.dispatchGlobal({.type = m_leftButtonIsDown ? EventType::leftMouseDragged : EventType::mouseMoved,
                                       .modifierFlags = m_globalKeyboard.flags()});
        }
        break;
    default:
        break;
    }
}

void X11EventMonitors::handleRawKey(const xcb_input_raw_key_press_event_t& event, bool isPress) {
    const auto keycode = static_cast<xcb_keycode_t>(event.detail);
    const TranslatedKey key = isPress ? m_globalKeyboard.press(keycode) : m_globalKeyboard.release(keycode);
    if (key.event && isBoundForOthers()) {
        m_registry.dispatchGlobal(*key.event);
    }
}

void X11EventMonitors::handleRawButton(std::uint32_t button, bool isPress) {
    const auto type = buttonEventType(button, isPress);
    if (type == EventType::leftMouseDown || type == EventType::leftMouseUp) {
        m_leftButtonIsDown = isPress;
    }
    if (type && isBoundForOthers()) {
        m_registry.dispatchGlobal({.type = *type, .modifierFlags = m_globalKeyboard.flags()});
    }
}

// The quick-start shortcut pressed in a window of ours must not count both here and at the local monitors, so Qt's
// view and the server's must agree.
bool X11EventMonitors::isBoundForOthers() const {
    return !m_tapHoldsInput && QGuiApplication::focusWindow() == nullptr && !isFocusOurs(m_connection.xcb());
}

} // namespace tapalong
