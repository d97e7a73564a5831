#include "platform/linux/keyboard/KeyTranslator.h"

#include "platform/linux/keyboard/VirtualKeyCodes.h"

#include <algorithm>
#include <utility>

namespace tapalong {

namespace {

// The eight real modifiers lead every keymap, in the order of the X protocol.
constexpr std::uint32_t shiftMask = 1U << 0U;
constexpr std::uint32_t lockMask = 1U << 1U;
constexpr std::uint32_t controlMask = 1U << 2U;
constexpr std::uint32_t altMask = 1U << 3U;
constexpr std::uint32_t superMask = 1U << 6U;

XkbHandle<xkb_state> newState(xkb_keymap* keymap) {
    return XkbHandle<xkb_state>{keymap != nullptr ? xkb_state_new(keymap) : nullptr};
}

XkbHandle<xkb_state> newState(xkb_keymap* keymap, const KeyboardState& like) {
    auto state = newState(keymap);
    if (state) {
        xkb_state_update_mask(state.get(), like.depressedMods, like.latchedMods, like.lockedMods, like.depressedGroup,
                              like.latchedGroup, like.lockedGroup);
    }
    return state;
}

std::uint32_t effectiveMods(const KeyboardState& state) {
    return state.depressedMods | state.latchedMods | state.lockedMods;
}

std::uint32_t modsThatStayOn(const KeyboardState& state) {
    return state.latchedMods | state.lockedMods;
}

bool isActive(xkb_state* state, std::uint32_t mods) {
    return state != nullptr && (xkb_state_serialize_mods(state, XKB_STATE_MODS_EFFECTIVE) & mods) != 0;
}

// A layout may put anything on a modifier's place (Caps Lock that is a Backspace): such a key is an ordinary one.
bool modifies(xkb_keysym_t keysym) {
    return keysym == XKB_KEY_NoSymbol || keysym == XKB_KEY_VoidSymbol || keysym == XKB_KEY_Mode_switch ||
           (keysym >= XKB_KEY_Shift_L && keysym <= XKB_KEY_Hyper_R) ||
           (keysym >= XKB_KEY_ISO_Lock && keysym <= XKB_KEY_ISO_Level5_Lock);
}

EventType typeOf(const std::optional<VirtualKey>& key, xkb_keysym_t keysym, KeyAction action) {
    if (!key) {
        return EventType::systemDefined;
    }
    if (key->kind == KeyKind::modifier && modifies(keysym)) {
        return EventType::flagsChanged;
    }
    return action == KeyAction::release ? EventType::keyUp : EventType::keyDown;
}

} // namespace

void KeyTranslator::setKeymap(xkb_keymap* keymap) {
    const KeyboardState before = reckoned();
    m_keymap.reset(xkb_keymap_ref(keymap));
    m_levelThree = modifiersOfKeys(XKB_KEY_ISO_Level3_Shift);
    m_levelFive = modifiersOfKeys(XKB_KEY_ISO_Level5_Shift);
    restart(before);
}

void KeyTranslator::synchronize(const KeyboardState& server) {
    const KeyboardState own = reckoned();
    const auto effectiveGroup = [](const KeyboardState& s) {
        return s.depressedGroup + s.latchedGroup + s.lockedGroup;
    };
    if (effectiveMods(own) != effectiveMods(server) || own.depressedMods != server.depressedMods ||
        own.lockedMods != server.lockedMods || effectiveGroup(own) != effectiveGroup(server)) {
        restart(server);
    }
}

void KeyTranslator::follow(std::uint32_t kernelCode, KeyAction action) {
    const bool held = isHeld(kernelCode);
    if (action == KeyAction::press && !held) {
        m_held.insert(kernelCode);
        if (m_state) {
            m_reckoned.insert(kernelCode);
            xkb_state_update_key(m_state.get(), kernelCode + kernelOffset, XKB_KEY_DOWN);
        }
    } else if (action == KeyAction::release) {
        m_held.erase(kernelCode);
        if (m_reckoned.erase(kernelCode) != 0) {
            xkb_state_update_key(m_state.get(), kernelCode + kernelOffset, XKB_KEY_UP);
        } else {
            releaseUnreckoned(kernelCode);
        }
    }
}

TranslatedKey KeyTranslator::translate(std::uint32_t kernelCode, KeyAction action) {
    m_leftOn &= modsThatStayOn(reckoned());
    const auto key = virtualKeyOf(kernelCode);
    const ModifierFlags flagsBefore = flags();
    const auto state = countingState();
    TranslatedKey result;
    result.keysym = state ? xkb_state_key_get_one_sym(state.get(), kernelCode + kernelOffset) : XKB_KEY_NoSymbol;
    result.isChord = isActive(state.get(), commandMods());
    const EventType type = typeOf(key, result.keysym, action);
    if (type == EventType::keyDown) {
        result.text = typedText(state.get(), kernelCode, action, result.keysym);
    }
    follow(kernelCode, action);

    const bool isCapsLock = type == EventType::flagsChanged && result.keysym == XKB_KEY_Caps_Lock;
    if ((isCapsLock && flags() == flagsBefore) || (type == EventType::flagsChanged && action == KeyAction::repeat)) {
        return result;
    }
    InputEvent event{.type = type, .modifierFlags = flags()};
    if (key) {
        event.keyCode = key->code;
        event.modifierFlags |= ownFlagsOf(key->kind);
    }
    if (result.text) {
        event.characters = [text = *result.text] { return std::optional(text); };
    }
    result.event = std::move(event);
    return result;
}

void KeyTranslator::setSecureInput(bool isOn) {
    m_compose.reset();
    m_isSecure = isOn;
    m_leftOn = isOn ? modsThatStayOn(reckoned()) & (shiftMask | m_levelThree | m_levelFive) : 0;
}

void KeyTranslator::forgetHeldKeys() {
    m_compose.reset();
    m_held.clear();
    m_reckoned.clear();
    restart(reckoned());
}

ModifierFlags KeyTranslator::flags() const {
    const KeyboardState state = counting();
    const std::uint32_t mods = effectiveMods(state);
    ModifierFlags flags = 0;
    flags |= (mods & shiftMask) != 0 ? Modifier::shift : 0;
    flags |= (mods & controlMask) != 0 ? Modifier::control : 0;
    flags |= (mods & (altMask | m_levelThree)) != 0 ? Modifier::option : 0;
    flags |= (mods & superMask) != 0 ? Modifier::command : 0;
    flags |= (state.lockedMods & lockMask) != 0 ? Modifier::capsLock : 0;
    return flags;
}

KeyboardState KeyTranslator::reckoned() const {
    if (!m_state) {
        return {};
    }
    return {.depressedMods = xkb_state_serialize_mods(m_state.get(), XKB_STATE_MODS_DEPRESSED),
            .latchedMods = xkb_state_serialize_mods(m_state.get(), XKB_STATE_MODS_LATCHED),
            .lockedMods = xkb_state_serialize_mods(m_state.get(), XKB_STATE_MODS_LOCKED),
            .depressedGroup = xkb_state_serialize_layout(m_state.get(), XKB_STATE_LAYOUT_DEPRESSED),
            .latchedGroup = xkb_state_serialize_layout(m_state.get(), XKB_STATE_LAYOUT_LATCHED),
            .lockedGroup = xkb_state_serialize_layout(m_state.get(), XKB_STATE_LAYOUT_LOCKED)};
}

void KeyTranslator::restart(const KeyboardState& state) {
    m_state = newState(m_keymap.get(), state);
    m_reckoned.clear();
}

// m_state does not know that the key was down, so what it contributed is taken away by hand, unless another held key
// contributes the same.
void KeyTranslator::releaseUnreckoned(std::uint32_t kernelCode) {
    std::uint32_t released = modifiersOfKey(kernelCode);
    for (const std::uint32_t other : m_held) {
        released &= ~modifiersOfKey(other);
    }
    KeyboardState state = reckoned();
    if ((state.depressedMods & released) != 0) {
        state.depressedMods &= ~released;
        restart(state);
    }
}

std::uint32_t KeyTranslator::modifiersOfKey(std::uint32_t kernelCode) const {
    const auto scratch = newState(m_keymap.get());
    if (!scratch) {
        return 0;
    }
    xkb_state_update_key(scratch.get(), kernelCode + kernelOffset, XKB_KEY_DOWN);
    return xkb_state_serialize_mods(scratch.get(), XKB_STATE_MODS_DEPRESSED);
}

std::uint32_t KeyTranslator::modifiersOfKeys(xkb_keysym_t keysym) const {
    std::uint32_t mods = 0;
    auto* const keymap = m_keymap.get();
    for (xkb_keycode_t code = xkb_keymap_min_keycode(keymap); code <= xkb_keymap_max_keycode(keymap); ++code) {
        const xkb_keysym_t* symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(keymap, code, 0, 0, &symbols);
        if (count == 1 && *symbols == keysym && code >= kernelOffset) {
            mods |= modifiersOfKey(code - kernelOffset);
        }
    }
    return mods;
}

std::uint32_t KeyTranslator::commandMods() const {
    return controlMask | (altMask & ~m_levelThree) | superMask;
}

KeyboardState KeyTranslator::counting() const {
    KeyboardState state = reckoned();
    const std::uint32_t notCounting = m_isSecure ? commandMods() | m_leftOn : 0;
    state.latchedMods &= ~notCounting;
    state.lockedMods &= ~notCounting;
    return state;
}

XkbHandle<xkb_state> KeyTranslator::countingState() const {
    if (m_state && !m_isSecure) {
        return XkbHandle<xkb_state>{xkb_state_ref(m_state.get())};
    }
    return newState(m_keymap.get(), counting());
}

std::optional<std::string> KeyTranslator::typedText(xkb_state* state, std::uint32_t kernelCode, KeyAction action,
                                                    xkb_keysym_t keysym) {
    if (state == nullptr || (action == KeyAction::repeat && m_compose.isUnderWay())) {
        return std::nullopt;
    }
    if (action == KeyAction::press && !isActive(state, controlMask | superMask)) {
        auto step = m_compose.press(keysym);
        if (step.underWay) {
            return std::nullopt;
        }
        if (step.finished) {
            return std::move(step.finished);
        }
    }
    const xkb_keycode_t code = kernelCode + kernelOffset;
    std::string text(64, '\0');
    const int length = xkb_state_key_get_utf8(state, code, text.data(), text.size());
    if (length <= 0) {
        return std::nullopt;
    }
    text.resize(std::min(static_cast<std::size_t>(length), text.size() - 1));
    return text;
}

} // namespace tapalong
