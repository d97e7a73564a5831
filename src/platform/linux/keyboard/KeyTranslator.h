#pragma once

#include "platform/InputEvent.h"
#include "platform/linux/keyboard/ComposeSequence.h"
#include "platform/linux/keyboard/XkbHandles.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>

namespace tapalong {

enum class KeyAction : std::uint8_t { press, repeat, release };

/// The display server's own account of modifiers and layout, as XkbStateNotify and wl_keyboard.modifiers give it.
struct KeyboardState {
    std::uint32_t depressedMods = 0;
    std::uint32_t latchedMods = 0;
    std::uint32_t lockedMods = 0;
    std::uint32_t depressedGroup = 0;
    std::uint32_t latchedGroup = 0;
    std::uint32_t lockedGroup = 0;
};

struct TranslatedKey {
    /// None where nothing happened: Caps Lock reports that its lock changed, not each press and release.
    std::optional<InputEvent> event{};
    xkb_keysym_t keysym = XKB_KEY_NoSymbol;
    std::optional<std::string> text{};
    /// Control, Alt or Super is on: a command, not typing. AltGr alone makes no command.
    bool isChord = false;
};

/// Turns the keys of one keyboard into input events: the code by the key's place, the text by the active layout.
///
/// Display servers report a modifier after the key that changed it, but our events carry the modifiers as they are
/// after the key. So the translator reckons them itself, and synchronize() puts it right where the server knows
/// better. Before the first keymap no key has text or modifiers.
class KeyTranslator {
public:
    /// `keymap` is shared; modifiers, locks and layout start from nothing until synchronize().
    void setKeymap(xkb_keymap* keymap);

    /// To be called for each report of the server, after the keys that came before it.
    void synchronize(const KeyboardState& server);

    /// Follows a key that somebody else gets, so that its release later is not a surprise.
    void follow(std::uint32_t kernelCode, KeyAction action);

    /// `kernelCode` as in VirtualKeyCodes.h. The event's text is fixed now, whatever the layout becomes.
    [[nodiscard]] TranslatedKey translate(std::uint32_t kernelCode, KeyAction action);

    /// What is typed from here on is a password, or is none any more. Either way an unfinished sequence ends, and
    /// modifiers that are down count as ever. For a password one that stayed on without a finger on it is not there if
    /// it is Control, Alt or Super, and if it is Shift or a further level that stayed on from before: what is latched or
    /// locked later was meant for the password. Caps Lock counts always.
    void setSecureInput(bool isOn);

    /// A press of a key that is held is a repetition.
    [[nodiscard]] bool isHeld(std::uint32_t kernelCode) const { return m_held.contains(kernelCode); }

    [[nodiscard]] const std::set<std::uint32_t>& heldKeys() const { return m_held; }

    /// Takes note of a key that is down already; its part in the modifiers is known from synchronize().
    void hold(std::uint32_t kernelCode) { m_held.insert(kernelCode); }

    /// The keyboard is lost to somebody else: what is released there is not seen. An unfinished sequence ends.
    void forgetHeldKeys();

    /// The modifiers that count now.
    [[nodiscard]] ModifierFlags flags() const;

private:
    [[nodiscard]] KeyboardState reckoned() const;
    void restart(const KeyboardState& state);
    void releaseUnreckoned(std::uint32_t kernelCode);
    [[nodiscard]] std::uint32_t modifiersOfKey(std::uint32_t kernelCode) const;
    [[nodiscard]] std::uint32_t modifiersOfKeys(xkb_keysym_t keysym) const;
    [[nodiscard]] std::uint32_t commandMods() const;
    [[nodiscard]] KeyboardState counting() const;
    [[nodiscard]] XkbHandle<xkb_state> countingState() const;
    [[nodiscard]] std::optional<std::string> typedText(xkb_state* state, std::uint32_t kernelCode, KeyAction action,
                                                       xkb_keysym_t keysym);

    XkbHandle<xkb_keymap> m_keymap;
    XkbHandle<xkb_state> m_state;
    ComposeSequence m_compose;
    std::set<std::uint32_t> m_held;
    std::set<std::uint32_t> m_reckoned; ///< those of m_held whose press m_state has seen
    std::uint32_t m_levelThree = 0;     ///< the real modifiers of AltGr in this keymap
    std::uint32_t m_levelFive = 0;
    bool m_isSecure = false;
    std::uint32_t m_leftOn = 0; ///< Shift and levels that stayed on from before secure input, until they are off once
};

} // namespace tapalong
