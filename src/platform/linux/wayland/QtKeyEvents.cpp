#include "platform/linux/wayland/QtKeyEvents.h"

#include "platform/linux/keyboard/VirtualKeyCodes.h"

#include <QKeyEvent>

#include <string>

namespace tapalong {

namespace {

constexpr std::uint32_t nativeLockMask = 0x2; ///< the real modifier Lock, the same in every keymap

std::optional<VirtualKey> keyOf(const QKeyEvent& event) {
    const auto code = event.nativeScanCode();
    return code < kernelOffset ? std::nullopt : virtualKeyOf(code - kernelOffset);
}

/// The bit of a modifier key by its virtual key code; 0 for other keys.
ModifierFlags modifierOf(std::int64_t code) {
    switch (code) {
    case 54:
    case 55:
        return Modifier::command;
    case 56:
    case 60:
        return Modifier::shift;
    case 57:
        return Modifier::capsLock;
    case 58:
    case 61:
        return Modifier::option;
    case 59:
    case 62:
        return Modifier::control;
    default:
        return 0;
    }
}

ModifierFlags flagsBefore(const QKeyEvent& event) {
    const auto modifiers = event.modifiers();
    const auto when = [modifiers](Qt::KeyboardModifier held, ModifierFlags flag) {
        return modifiers.testFlag(held) ? flag : ModifierFlags{0};
    };
    return when(Qt::ShiftModifier, Modifier::shift) | when(Qt::ControlModifier, Modifier::control) |
           when(Qt::AltModifier, Modifier::option) | when(Qt::MetaModifier, Modifier::command) |
           ((event.nativeModifiers() & nativeLockMask) != 0 ? Modifier::capsLock : 0);
}

InputEvent keyEvent(const QKeyEvent& event, const std::optional<VirtualKey>& key) {
    const bool isPress = event.type() == QEvent::KeyPress;
    if (!key) {
        return {.type = EventType::systemDefined, .modifierFlags = flagsBefore(event)};
    }
    InputEvent result{.type = isPress ? EventType::keyDown : EventType::keyUp,
                      .keyCode = key->code,
                      .modifierFlags = flagsBefore(event) | ownFlagsOf(key->kind)};
    if (!event.text().isEmpty()) {
        result.characters = [text = event.text()] { return std::optional(text.toStdString()); };
    }
    return result;
}

} // namespace

InputEvent QtKeyEvents::translateAlone(const QKeyEvent& event) {
    const auto key = keyOf(event);
    auto result = keyEvent(event, key);
    if (key && key->kind == KeyKind::modifier) {
        result.type = EventType::flagsChanged;
    }
    return result;
}

std::optional<InputEvent> QtKeyEvents::translate(const QKeyEvent& event) {
    const bool isPress = event.type() == QEvent::KeyPress;
    const auto key = keyOf(event);
    if (key && key->kind == KeyKind::modifier) {
        return translateModifier(event, key->code);
    }
    if (!isPress && event.isAutoRepeat()) {
        return std::nullopt;
    }
    auto result = keyEvent(event, key);
    for (const auto held : m_heldModifiers) {
        result.modifierFlags |= modifierOf(held);
    }
    return result;
}

std::optional<InputEvent> QtKeyEvents::translateModifier(const QKeyEvent& event, std::int64_t code) {
    const auto own = modifierOf(code);
    if (event.isAutoRepeat()) {
        return std::nullopt;
    }
    if (own == Modifier::capsLock) {
        return translateCapsLock(event, code);
    }
    if (event.type() == QEvent::KeyPress) {
        m_heldModifiers.insert(code);
    } else {
        m_heldModifiers.erase(code);
    }
    auto flags = flagsBefore(event) & ~own;
    for (const auto held : m_heldModifiers) {
        flags |= modifierOf(held);
    }
    return InputEvent{.type = EventType::flagsChanged, .keyCode = code, .modifierFlags = flags};
}

// Locks when it is pressed, unlocks when it is released after another press.
std::optional<InputEvent> QtKeyEvents::translateCapsLock(const QKeyEvent& event, std::int64_t code) {
    const auto before = flagsBefore(event);
    const bool isLocked = (before & Modifier::capsLock) != 0;
    const bool isPress = event.type() == QEvent::KeyPress;
    const bool changes = isPress ? !isLocked : m_unlocksOnRelease;
    m_unlocksOnRelease = isPress && isLocked;
    if (!changes) {
        return std::nullopt;
    }
    return InputEvent{.type = EventType::flagsChanged, .keyCode = code, .modifierFlags = before ^ Modifier::capsLock};
}

} // namespace tapalong
