#include "platform/linux/x11/X11Keyboard.h"

#include "platform/linux/keyboard/VirtualKeyCodes.h"

#include <xkbcommon/xkbcommon-x11.h>

namespace tapalong {

namespace {

std::uint32_t kernelCodeOf(xcb_keycode_t keycode) {
    return keycode >= kernelOffset ? std::uint32_t{keycode} - kernelOffset : 0U;
}

bool isDown(const xcb_query_keymap_reply_t& keymap, std::uint32_t keycode) {
    return (keymap.keys[keycode / 8] >> (keycode % 8) & 1U) != 0;
}

} // namespace

X11Keyboard::X11Keyboard(X11Connection& connection) : m_connection(connection) {}

void X11Keyboard::restart() {
    if (!m_connection.isUsable()) {
        return;
    }
    m_translator.forgetHeldKeys();
    readKeymap();
    readState();
    auto* xcb = m_connection.xcb();
    if (const auto keymap = own(xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr))) {
        for (std::uint32_t keycode = kernelOffset; keycode < 256; ++keycode) {
            if (isDown(*keymap, keycode)) {
                m_translator.hold(keycode - kernelOffset);
            }
        }
    }
}

void X11Keyboard::observe(const xcb_generic_event_t& event) {
    if (m_connection.xkbEventBase() == 0 || kindOf(event) != m_connection.xkbEventBase()) {
        return;
    }
    switch (as<xcb_xkb_state_notify_event_t>(event).xkbType) {
    case XCB_XKB_STATE_NOTIFY:
        handleStateNotify(as<xcb_xkb_state_notify_event_t>(event));
        break;
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
    case XCB_XKB_MAP_NOTIFY:
        m_keymapIsStale = true;
        break;
    default:
        break;
    }
}

TranslatedKey X11Keyboard::press(xcb_keycode_t keycode) {
    refresh();
    const auto action = isHeld(keycode) ? KeyAction::repeat : KeyAction::press;
    return m_translator.translate(kernelCodeOf(keycode), action);
}

TranslatedKey X11Keyboard::release(xcb_keycode_t keycode) {
    refresh();
    return m_translator.translate(kernelCodeOf(keycode), KeyAction::release);
}

bool X11Keyboard::isHeld(xcb_keycode_t keycode) const {
    return m_translator.isHeld(kernelCodeOf(keycode));
}

std::set<xcb_keycode_t> X11Keyboard::heldKeys() const {
    std::set<xcb_keycode_t> keycodes;
    for (const std::uint32_t kernelCode : m_translator.heldKeys()) {
        keycodes.insert(static_cast<xcb_keycode_t>(kernelCode + kernelOffset));
    }
    return keycodes;
}

bool X11Keyboard::isDownNow(xcb_keycode_t keycode) const {
    auto* xcb = m_connection.xcb();
    const auto keymap = own(xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
    return keymap && isDown(*keymap, keycode);
}

void X11Keyboard::refresh() {
    if (m_keymapIsStale && m_connection.isUsable()) {
        readKeymap();
    }
}

// The server reports the state after the key that changed it. A key that this stream does not carry (another window
// has it) is followed through the report, so that its release is reckoned rightly should it come here.
void X11Keyboard::handleStateNotify(const xcb_xkb_state_notify_event_t& event) {
    if (event.keycode != 0 && event.eventType == XCB_KEY_PRESS && !isHeld(event.keycode)) {
        m_translator.follow(kernelCodeOf(event.keycode), KeyAction::press);
    } else if (event.keycode != 0 && event.eventType == XCB_KEY_RELEASE && isHeld(event.keycode)) {
        m_translator.follow(kernelCodeOf(event.keycode), KeyAction::release);
    }
    m_translator.synchronize({.depressedMods = event.baseMods,
                              .latchedMods = event.latchedMods,
                              .lockedMods = event.lockedMods,
                              .depressedGroup = static_cast<std::uint32_t>(event.baseGroup),
                              .latchedGroup = static_cast<std::uint32_t>(event.latchedGroup),
                              .lockedGroup = event.lockedGroup});
}

void X11Keyboard::readKeymap() {
    m_keymapIsStale = false;
    auto* xcb = m_connection.xcb();
    const XkbHandle<xkb_context> context{xkb_context_new(XKB_CONTEXT_NO_FLAGS)};
    const std::int32_t device = xkb_x11_get_core_keyboard_device_id(xcb);
    if (!context || device < 0) {
        return;
    }
    const XkbHandle<xkb_keymap> keymap{
        xkb_x11_keymap_new_from_device(context.get(), xcb, device, XKB_KEYMAP_COMPILE_NO_FLAGS)};
    if (keymap) {
        m_translator.setKeymap(keymap.get());
    }
}

void X11Keyboard::readState() {
    auto* xcb = m_connection.xcb();
    const auto state = own(xcb_xkb_get_state_reply(xcb, xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    if (state) {
        m_translator.synchronize({.depressedMods = state->baseMods,
                                  .latchedMods = state->latchedMods,
                                  .lockedMods = state->lockedMods,
                                  .depressedGroup = static_cast<std::uint32_t>(state->baseGroup),
                                  .latchedGroup = static_cast<std::uint32_t>(state->latchedGroup),
                                  .lockedGroup = state->lockedGroup});
    }
}

} // namespace tapalong
