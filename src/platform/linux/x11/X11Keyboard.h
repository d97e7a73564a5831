#pragma once

#include "platform/linux/keyboard/KeyTranslator.h"
#include "platform/linux/x11/X11Connection.h"

#include <cstdint>
#include <set>

namespace tapalong {

/// The keyboard as one stream of X events shows it: keymap, layout and modifiers followed, keys translated.
/// The stream may be another connection's than the one that the keymap is read through.
class X11Keyboard {
public:
    explicit X11Keyboard(X11Connection& connection);

    /// Starts over from the server's state: keys that are down now count as held.
    void restart();

    /// Has to see every event of the stream; picks those that tell of state and keymap.
    void observe(const xcb_generic_event_t& event);

    /// A press of a held key is its repetition.
    [[nodiscard]] TranslatedKey press(xcb_keycode_t keycode);
    [[nodiscard]] TranslatedKey release(xcb_keycode_t keycode);

    /// As KeyTranslator::setSecureInput().
    void setSecureInput(bool isOn) { m_translator.setSecureInput(isOn); }

    [[nodiscard]] bool isHeld(xcb_keycode_t keycode) const;
    [[nodiscard]] std::set<xcb_keycode_t> heldKeys() const;
    void forgetHeldKeys() { m_translator.forgetHeldKeys(); }
    [[nodiscard]] ModifierFlags flags() const { return m_translator.flags(); }

    /// Asks the server whether the key is down at this moment.
    [[nodiscard]] bool isDownNow(xcb_keycode_t keycode) const;

private:
    void refresh();
    void handleStateNotify(const xcb_xkb_state_notify_event_t& event);
    void readKeymap();
    void readState();

    X11Connection& m_connection;
    KeyTranslator m_translator;
    // Changes come in bursts: the keymap is read again when the next key needs it.
    bool m_keymapIsStale = true;
};

} // namespace tapalong
