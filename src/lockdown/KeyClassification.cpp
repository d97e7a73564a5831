#include "lockdown/KeyClassification.h"

#include "settings/SessionSettings.h"

#include <algorithm>
#include <array>

namespace tapalong {

namespace {

using Kind = KeyEvent::Kind;

// F1 to F20.
constexpr std::array<std::int64_t, 20> functionKeys{122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                                    103, 111, 105, 107, 113, 106, 64, 79,  80,  90};

bool isFunctionKey(std::int64_t keyCode) {
    return std::find(functionKeys.begin(), functionKeys.end(), keyCode) != functionKeys.end();
}

/// Help, Home, Page Up, Forward Delete, F4 and End; asked after those that have a meaning of their own.
bool isInNavigationBlock(std::int64_t keyCode) {
    return keyCode >= 114 && keyCode <= 119;
}

std::optional<KeyEvent> meaningOfKey(std::int64_t keyCode) {
    switch (keyCode) {
    case 36: // Return
    case 76: // keypad Enter
        return Kind::enter;
    case 49:
        return Kind::space;
    case 51:  // Delete
    case 117: // Forward Delete
        return Kind::deleteLast;
    case 48:
        return Kind::tab;
    case 53: // Escape closes nothing here
        return KeyEvent::printable(Character("🚀"));
    case 123:
        return KeyEvent::printable(Character("←"));
    case 124:
        return KeyEvent::printable(Character("→"));
    case 125:
        return KeyEvent::printable(Character("↓"));
    case 126:
        return KeyEvent::printable(Character("↑"));
    default:
        return isFunctionKey(keyCode) ? std::optional<KeyEvent>(Kind::celestial) : std::nullopt;
    }
}

KeyEvent meaningOfText(const InputEvent& event) {
    const auto text = event.text();
    const auto first = text ? Character::first(*text) : std::nullopt;
    return first && first->isPrintable() ? KeyEvent::printable(*first) : KeyEvent(Kind::suppressed);
}

enum class Strictness : std::uint8_t { everyKey, systemKeysSuppressed };

KeyEvent classify(std::int64_t keyCode, ModifierFlags flags, const InputEvent& event, Strictness strictness) {
    const bool suppressing = strictness == Strictness::systemKeysSuppressed;
    if (suppressing && (flags & (Modifier::command | Modifier::control)) != 0) {
        return Kind::suppressed;
    }
    if (const auto meaning = meaningOfKey(keyCode)) {
        return *meaning;
    }
    if (suppressing && isInNavigationBlock(keyCode)) {
        return Kind::suppressed;
    }
    return meaningOfText(event);
}

} // namespace

KeyEvent classifyKeyEvent(std::int64_t keyCode, ModifierFlags flags, const InputEvent& event) {
    return classify(keyCode, flags, event, Strictness::systemKeysSuppressed);
}

KeyEvent classifyNSEvent(std::int64_t keyCode, ModifierFlags flags, const InputEvent& event,
                         const SessionSettings& settings) {
    return classify(keyCode, flags, event,
                    settings.kioskMode.get() ? Strictness::systemKeysSuppressed : Strictness::everyKey);
}

} // namespace tapalong
