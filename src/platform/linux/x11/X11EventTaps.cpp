#include "platform/linux/x11/X11EventTaps.h"

#include "platform/linux/x11/GestureFilter.h"
#include "platform/linux/x11/PointerEvents.h"
#include "platform/linux/x11/QtConnection.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace tapalong {

namespace {

using namespace std::chrono_literals;

// A window manager lets go of the keyboard some milliseconds after the key that started us.
constexpr auto patience = 100ms;
constexpr auto betweenAttempts = 10ms;
// Who was refused so short a time ago is trying again: that is no such moment any more, and nothing may stand still for
// it.
constexpr auto untilRefusalIsOld = 5s;
constexpr auto untilRefusalIsReported = 250ms;

bool isKeyEvent(EventType type) {
    return type == EventType::keyDown || type == EventType::keyUp || type == EventType::flagsChanged;
}

bool isInterceptedPointerEvent(EventType type) {
    return type == EventType::scrollWheel || type == EventType::otherMouseDown || type == EventType::otherMouseUp;
}

// Qt grabs the pointer for popup windows on the same connection, and its ungrab ends ours as well.
bool isEndOfPointerGrab(const xcb_generic_event_t& event) {
    return kindOf(event) == XCB_ENTER_NOTIFY && as<xcb_enter_notify_event_t>(event).mode == XCB_NOTIFY_MODE_UNGRAB;
}

// The release of a wheel step is no event of ours and yet must not reach a window alone.
bool isWheelRelease(const xcb_generic_event_t& event, std::uint8_t xinputOpcode) {
    return xinputTypeOf(event, xinputOpcode) == XCB_INPUT_BUTTON_RELEASE &&
           !buttonEventType(as<xcb_input_button_release_event_t>(event).detail, false);
}

} // namespace

X11EventTaps::X11EventTaps(X11Connection& connection, X11EventMonitors& monitors, SecureInput& secureInput,
                           std::string guard)
    : m_connection(connection), m_monitors(monitors), m_secureInput(secureInput), m_keyboard(connection),
      m_keyboardGrab(connection), m_pointerGrab(connection), m_serverKeys(std::move(guard)),
      m_listener(connection.listen([this](const auto& event) { handleConnectionEvent(event); })) {
    connection.whenLost([this] { disableAndTellTaps(); });
    m_serverKeys.whenChanged([this] { disableAndTellTaps(); });
    m_untilRefusalIsReported.setSingleShot(true);
    m_untilRefusalIsReported.setInterval(untilRefusalIsReported);
    QObject::connect(&m_untilRefusalIsReported, &QTimer::timeout, &m_untilRefusalIsReported,
                     [this] { reportRefusal(); });
    QCoreApplication::instance()->installNativeEventFilter(this);
    if (connection.isUsable()) {
        m_serverKeys.putBackLeftOver(connection);
    }
}

X11EventTaps::~X11EventTaps() {
    m_taps.clear();
    releaseInputUnlessWanted();
    m_connection.whenLost({});
    if (auto* application = QCoreApplication::instance()) {
        application->removeNativeEventFilter(this);
    }
}

std::optional<TapHandle> X11EventTaps::createTap(TapLocation /*location*/, TapPlacement /*placement*/,
                                                 TapOptions /*options*/, EventMask eventsOfInterest,
                                                 Callback callback) {
    if (!takeInputForNewTap()) {
        return std::nullopt;
    }
    m_serverKeys.close();
    auto tap = std::make_shared<Tap>(Tap{.id = ++m_lastId, .mask = eventsOfInterest, .callback = std::move(callback)});
    m_taps.insert(m_taps.begin(), tap);
    return static_cast<TapHandle>(tap->id);
}

void X11EventTaps::enableTap(TapHandle handle, bool enable) {
    const auto tap = find(static_cast<std::uint64_t>(handle));
    if (!tap) {
        return;
    }
    tap->isEnabled = enable;
    tap->isRefused = false;
    if (!enable) {
        releaseInputUnlessWanted();
    } else if (!takeInput()) {
        tap->isEnabled = false;
        tap->isRefused = true;
        releaseInputUnlessWanted();
        m_untilRefusalIsReported.start();
    }
}

bool X11EventTaps::isTapEnabled(TapHandle handle) const {
    const auto tap = find(static_cast<std::uint64_t>(handle));
    return tap && tap->isEnabled && holdsInput() && serverKeysAreClosed();
}

RunLoopSource X11EventTaps::createRunLoopSource(TapHandle tap) {
    return static_cast<RunLoopSource>(static_cast<std::uint64_t>(tap));
}

void X11EventTaps::addSource(RunLoopSource source) {
    if (const auto tap = find(static_cast<std::uint64_t>(source))) {
        tap->isOnRunLoop = true;
    }
}

void X11EventTaps::removeSource(RunLoopSource source) {
    const auto tap = find(static_cast<std::uint64_t>(source));
    if (!tap) {
        return;
    }
    tap->isEnabled = false; // an event may be on its way through a copy of the list
    tap->isRefused = false;
    std::erase(m_taps, tap);
    releaseInputUnlessWanted();
    if (m_taps.empty()) {
        m_serverKeys.reopen();
    }
}

std::shared_ptr<X11EventTaps::Tap> X11EventTaps::find(std::uint64_t id) const {
    const auto found = std::find_if(m_taps.begin(), m_taps.end(), [id](const auto& tap) { return tap->id == id; });
    return found != m_taps.end() ? *found : nullptr;
}

bool X11EventTaps::takeInput() {
    const bool heldBefore = holdsInput();
    if (!m_keyboardGrab.take() || !m_pointerGrab.take()) {
        m_keyboardGrab.release();
        m_pointerGrab.release();
        return false;
    }
    if (!heldBefore) {
        m_monitors.setTapHoldsInput(true);
        m_gestureFilter = std::make_unique<GestureFilter>([this](const InputEvent& event) { return offer(event); });
        m_keyboard.restart();
        setSecureField(0);
        m_ignored.clear();
        if (m_whenInputIsHeld) {
            m_whenInputIsHeld();
        }
    }
    return true;
}

bool X11EventTaps::takeInputForNewTap() {
    const auto start = std::chrono::steady_clock::now();
    const bool isRetry = m_lastRefusal && start - *m_lastRefusal < untilRefusalIsOld;
    const auto end = start + (isRetry ? 0ms : patience);
    while (!takeInput()) {
        if (std::chrono::steady_clock::now() >= end || !m_connection.isUsable()) {
            releaseInputUnlessWanted();
            m_lastRefusal = std::chrono::steady_clock::now();
            return false;
        }
        std::this_thread::sleep_for(betweenAttempts);
    }
    m_lastRefusal.reset();
    return true;
}

void X11EventTaps::releaseInputUnlessWanted() {
    if (std::any_of(m_taps.begin(), m_taps.end(), [](const auto& tap) { return tap->isEnabled; })) {
        return;
    }
    m_keyboardGrab.release();
    m_pointerGrab.release();
    m_gestureFilter.reset();
    m_monitors.setTapHoldsInput(false);
}

// Any news of what is held takes this road, a gain too: a tap has no other word for it, and finds out which it was by
// enabling itself again. What is held is kept until the taps have had that chance: no key or click slips through
// between.
void X11EventTaps::disableAndTellTaps() {
    const auto taps = m_taps;
    for (const auto& tap : taps) {
        if (std::exchange(tap->isEnabled, false)) {
            (void)tap->callback({.type = EventType::tapDisabledByUserInput});
        }
    }
    releaseInputUnlessWanted();
}

void X11EventTaps::reportRefusal() {
    const auto taps = m_taps;
    for (const auto& tap : taps) {
        if (std::exchange(tap->isRefused, false)) {
            (void)tap->callback({.type = EventType::tapDisabledByUserInput});
        }
    }
}

Verdict X11EventTaps::offer(const InputEvent& event) {
    const auto taps = m_taps;
    for (const auto& tap : taps) {
        const bool takesPart = tap->isEnabled && tap->isOnRunLoop && (tap->mask & maskOf(event.type)) != 0;
        if (takesPart && tap->callback(event) == Verdict::consume) {
            return Verdict::consume;
        }
    }
    return Verdict::pass;
}

void X11EventTaps::handleConnectionEvent(const xcb_generic_event_t& event) {
    if (!m_keyboardGrab.isHeld()) {
        return;
    }
    m_keyboard.observe(event);
    if (m_keyboardGrab.isLostBy(event)) {
        disableAndTellTaps();
    } else if (kindOf(event) == XCB_KEY_PRESS || kindOf(event) == XCB_KEY_RELEASE) {
        handleKey(as<xcb_key_press_event_t>(event).detail, kindOf(event) == XCB_KEY_PRESS);
    }
}

void X11EventTaps::handleKey(xcb_keycode_t keycode, bool isPress) {
    noteSecureInput();
    const KeyAction action = !isPress                     ? KeyAction::release
                             : m_keyboard.isHeld(keycode) ? KeyAction::repeat
                                                          : KeyAction::press;
    const TranslatedKey key = isPress ? m_keyboard.press(keycode) : m_keyboard.release(keycode);
    const bool isIgnored = isPress ? m_ignored.contains(keycode) : m_ignored.erase(keycode) != 0;
    if (!key.event || (isIgnored && key.event->type != EventType::flagsChanged)) {
        return;
    }
    if (m_secureField != 0 && isKeyEvent(key.event->type)) {
        handleSecureKey(key, action);
    } else if (offer(*key.event) == Verdict::pass) {
        (void)m_monitors.dispatchLocal(*key.event);
    }
}

void X11EventTaps::noteSecureInput() {
    const std::uint64_t field = m_secureInput.isOn() ? m_secureInput.fieldsSoFar() : 0;
    if (field != m_secureField) {
        setSecureField(field);
    }
}

// Neither what was being typed when the field got the focus belongs into it (a letter, an accent, a modifier that sticky
// keys let a child lock), nor does the last of a password onto the screen when the field goes.
void X11EventTaps::setSecureField(std::uint64_t number) {
    m_secureField = number;
    m_ignored = m_keyboard.heldKeys();
    m_keyboard.setSecureInput(number != 0);
}

void X11EventTaps::handleSecureKey(const TranslatedKey& key, KeyAction action) {
    if (m_monitors.dispatchLocal(*key.event) == Verdict::pass) {
        m_secureInput.deliver(key, action);
    }
}

bool X11EventTaps::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (eventType != "xcb_generic_event_t" || !holdsInput()) {
        return false;
    }
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    if (isEndOfPointerGrab(event) && !m_pointerGrab.take()) {
        disableAndTellTaps(); // another program was quicker
        return false;
    }
    if (isWheelRelease(event, m_connection.xinputOpcode())) {
        return true;
    }
    const auto pointer = pointerEventOf(event, m_connection.xinputOpcode(), m_keyboard.flags());
    return pointer && isInterceptedPointerEvent(pointer->type) && offer(*pointer) == Verdict::consume;
}

} // namespace tapalong
