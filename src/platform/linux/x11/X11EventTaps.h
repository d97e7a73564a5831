#pragma once

#include "platform/EventTaps.h"
#include "platform/linux/x11/Grabs.h"
#include "platform/linux/x11/SecureInput.h"
#include "platform/linux/x11/ServerKeys.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11EventMonitors.h"
#include "platform/linux/x11/X11Keyboard.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tapalong {

/// Taps by active grabs of keyboard and pointer. The grabs are had in createTap() and held while any tap is enabled.
/// What a grab does not stop is closed from the first tap to the last (see ServerKeys).
///
/// Keys are offered to the taps, newest first. One that no tap consumes goes on to our local monitors and then to
/// nobody: X cannot hand a grabbed key on. The wheel and all buttons but left and right mean nothing on any device
/// meanwhile; what comes of them all the same is offered too, wherever the pointer is. Left and right clicks and motion
/// reach our own windows as ever, and other programs' not at all.
///
/// When the server takes keyboard or pointer away for good, or refuses them to a tap that is being enabled again, the
/// taps are told tapDisabledByUserInput; for a refusal again and again, a few times a second, until it is had or given
/// up. They are told the same when the keys that no grab stops open or are closed late, which is no reason to give up
/// the rest: a tap that enables itself again holds all that can be had, and counts as enabled when that is everything.
class X11EventTaps final : public EventTaps, private QAbstractNativeEventFilter {
public:
    X11EventTaps(X11Connection& connection, X11EventMonitors& monitors, SecureInput& secureInput,
                 std::string guard = ServerKeys::guardBesideProgram());
    ~X11EventTaps() override;
    X11EventTaps(const X11EventTaps&) = delete;
    X11EventTaps& operator=(const X11EventTaps&) = delete;

    [[nodiscard]] std::optional<TapHandle> createTap(TapLocation location, TapPlacement placement, TapOptions options,
                                                     EventMask eventsOfInterest, Callback callback) override;
    void enableTap(TapHandle handle, bool enable) override;
    [[nodiscard]] bool isTapEnabled(TapHandle handle) const override;
    [[nodiscard]] RunLoopSource createRunLoopSource(TapHandle tap) override;
    void addSource(RunLoopSource source) override;
    void removeSource(RunLoopSource source) override;

    /// Whether keys are being intercepted at this moment, all but those that no grab stops.
    [[nodiscard]] bool holdsInput() const { return m_keyboardGrab.isHeld() && m_pointerGrab.isHeld(); }

    /// `begun` runs each time that keys begin to be intercepted.
    void whenInputIsHeld(std::function<void()> begun) { m_whenInputIsHeld = std::move(begun); }

    /// Whether the keys that no grab stops are closed too, as they are meant to be from the first tap to the last.
    [[nodiscard]] bool serverKeysAreClosed() const { return m_serverKeys.areClosed(); }

    /// Whether a tap can be expected to close them.
    [[nodiscard]] bool canCloseServerKeys() const { return m_serverKeys.canBeClosed(); }

private:
    struct Tap {
        std::uint64_t id = 0; ///< of the tap and of its source alike
        EventMask mask = 0;
        Callback callback;
        bool isEnabled = true;
        bool isRefused = false; ///< to be enabled, but the input could not be had: not told yet
        bool isOnRunLoop = false;
    };

    [[nodiscard]] std::shared_ptr<Tap> find(std::uint64_t id) const;
    [[nodiscard]] bool takeInput();
    [[nodiscard]] bool takeInputForNewTap();
    void releaseInputUnlessWanted();
    void disableAndTellTaps();
    void reportRefusal();
    [[nodiscard]] Verdict offer(const InputEvent& event);

    void handleConnectionEvent(const xcb_generic_event_t& event);
    void handleKey(xcb_keycode_t keycode, bool isPress);
    void noteSecureInput();
    void setSecureField(std::uint64_t number);
    void handleSecureKey(const TranslatedKey& key, KeyAction action);
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    X11Connection& m_connection;
    X11EventMonitors& m_monitors;
    SecureInput& m_secureInput;
    X11Keyboard m_keyboard;
    KeyboardGrab m_keyboardGrab;
    PointerGrab m_pointerGrab;
    ServerKeys m_serverKeys;
    std::shared_ptr<X11Connection::Listener> m_listener;
    std::function<void()> m_whenInputIsHeld;
    std::vector<std::shared_ptr<Tap>> m_taps; ///< newest first
    std::uint64_t m_lastId = 0;
    std::uint64_t m_secureField = 0;   ///< which field the last key was for; 0 for none
    std::set<xcb_keycode_t> m_ignored; ///< keys down since before secure input began or ended: to be pressed anew
    std::unique_ptr<QObject> m_gestureFilter;
    QTimer m_untilRefusalIsReported;
    std::optional<std::chrono::steady_clock::time_point> m_lastRefusal; ///< of a new tap
};

} // namespace tapalong
