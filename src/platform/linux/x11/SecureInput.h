#pragma once

#include "platform/linux/keyboard/KeyTranslator.h"

#include <QPointer>

#include <cstdint>

namespace tapalong {

/// Keeps what is typed into a password field from the tap. On while the field that the view named has the focus of
/// our key window; over at once when it has not.
class SecureInput {
public:
    /// The masked field that just got the focus, null when it lost it or is not masked any more. The field stays the
    /// caller's; its destruction ends secure input too.
    void setSecureField(QObject* field);

    [[nodiscard]] bool isOn() const;

    /// Counts the fields that got the focus: two with no key between them are told apart by it.
    [[nodiscard]] std::uint64_t fieldsSoFar() const { return m_fieldsSoFar; }

    /// Gives a grabbed key to the field as the window system would. Text and the keys that edit it; nothing that would
    /// leave the field or act outside it (Tab, Escape, chords).
    void deliver(const TranslatedKey& key, KeyAction action);

private:
    QPointer<QObject> m_field;
    std::uint64_t m_fieldsSoFar = 0;
};

} // namespace tapalong
