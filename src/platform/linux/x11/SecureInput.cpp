#include "platform/linux/x11/SecureInput.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QString>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace tapalong {

namespace {

// With Num Lock off the keypad has editing keys of its own.
constexpr auto editingKeys = std::to_array<std::pair<xkb_keysym_t, Qt::Key>>({
    {XKB_KEY_BackSpace, Qt::Key_Backspace},
    {XKB_KEY_Delete, Qt::Key_Delete},
    {XKB_KEY_KP_Delete, Qt::Key_Delete},
    {XKB_KEY_Return, Qt::Key_Return},
    {XKB_KEY_KP_Enter, Qt::Key_Enter},
    {XKB_KEY_Left, Qt::Key_Left},
    {XKB_KEY_KP_Left, Qt::Key_Left},
    {XKB_KEY_Right, Qt::Key_Right},
    {XKB_KEY_KP_Right, Qt::Key_Right},
    {XKB_KEY_Home, Qt::Key_Home},
    {XKB_KEY_KP_Home, Qt::Key_Home},
    {XKB_KEY_End, Qt::Key_End},
    {XKB_KEY_KP_End, Qt::Key_End},
});

std::optional<Qt::Key> editingKeyOf(xkb_keysym_t keysym) {
    const auto* const found = std::find_if(editingKeys.begin(), editingKeys.end(),
                                           [keysym](const auto& entry) { return entry.first == keysym; });
    return found != editingKeys.end() ? std::optional(found->second) : std::nullopt;
}

Qt::Key keyOfText(const QString& text) {
    const QString upper = text.toUpper();
    return upper.size() == 1 ? static_cast<Qt::Key>(upper.front().unicode()) : Qt::Key_unknown;
}

/// What of it goes into a password is the field's to say. Control characters belong to keys that are not for it.
bool types(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.category() != QChar::Other_Control; });
}

Qt::KeyboardModifiers modifiersOf(const TranslatedKey& key) {
    const bool shift = key.event && (key.event->modifierFlags & Modifier::shift) != 0;
    return shift ? Qt::ShiftModifier : Qt::NoModifier;
}

} // namespace

void SecureInput::setSecureField(QObject* field) {
    m_field = field;
    m_fieldsSoFar += field != nullptr ? 1 : 0;
}

bool SecureInput::isOn() const {
    return m_field != nullptr && QGuiApplication::focusWindow() != nullptr && QGuiApplication::focusObject() == m_field;
}

void SecureInput::deliver(const TranslatedKey& key, KeyAction action) {
    if (key.isChord || m_field == nullptr) {
        return;
    }
    auto text = QString::fromStdString(key.text.value_or(""));
    const auto editing = editingKeyOf(key.keysym);
    if (!editing && !types(text)) {
        return;
    }
    const Qt::Key qtKey = editing ? *editing : keyOfText(text);
    const auto type = action == KeyAction::release ? QEvent::KeyRelease : QEvent::KeyPress;
    QKeyEvent event(type, qtKey, modifiersOf(key), text, action == KeyAction::repeat);
    QCoreApplication::sendEvent(m_field, &event);
}

} // namespace tapalong
