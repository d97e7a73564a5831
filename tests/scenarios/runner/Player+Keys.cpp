// The commands of the keyboard.

#include "scenarios/runner/KeyTable.h"
#include "scenarios/runner/Player.h"
#include "text/Character.h"

namespace tapalong::testing {

namespace {

struct Press {
    Key key;
    ModifierFlags flags = 0;
    std::optional<std::string> text{};

    [[nodiscard]] InputEvent event(EventType type = EventType::keyDown) const {
        return simulated::keyEvent(key.code, flags | key.ownFlags, text, type);
    }
};

/// "Control+Option+T", with `held` down besides.
Press parsedPress(std::string_view combination, ModifierFlags held) {
    Press press{.key = {}, .flags = held};
    for (auto plus = combination.find('+'); plus != std::string_view::npos && plus + 1 < combination.size();
         plus = combination.find('+')) {
        const auto modifier = modifierNamed(combination.substr(0, plus));
        if (!modifier) {
            throw ScriptError("unknown modifier \"" + std::string(combination.substr(0, plus)) + "\"");
        }
        press.flags |= *modifier;
        combination.remove_prefix(plus + 1);
    }
    const auto key = keyNamed(combination);
    if (!key) {
        throw ScriptError("unknown key \"" + std::string(combination) + "\"");
    }
    press.key = *key;
    press.text = textWith(press.key, press.flags);
    return press;
}

} // namespace

void Player::send(const InputEvent& event) {
    m_lastReceiver = application().send(event);
    ++m_received[*m_lastReceiver];
}

void Player::pressKey(Words& words) {
    auto press = parsedPress(words.next("a key"), m_modifiers);
    const auto text = words.rest();
    if (text == "no-text") {
        press.text.reset();
    } else if (text.starts_with("text=")) {
        press.text = unescaped(std::string_view(text).substr(5));
    } else if (!text.empty()) {
        throw ScriptError("\"" + text + "\" must be text=... or no-text");
    }
    send(press.event());
}

void Player::releaseKey(Words& words) {
    send(parsedPress(words.next("a key"), m_modifiers).event(EventType::keyUp));
}

void Player::type(Words& words) {
    auto left = unescaped(words.rest());
    if (left.empty()) {
        throw ScriptError("nothing to type");
    }
    while (const auto character = Character::first(left)) {
        const Key key = keyFor(character->utf8());
        send(simulated::keyEvent(key.code, m_modifiers, key.text));
        left.erase(0, character->utf8().size());
    }
}

void Player::hold(Words& words) {
    const auto press = parsedPress(words.next("a key"), m_modifiers);
    words.skip("for");
    const double duration = words.nextNumber("how long, in seconds");
    words.skip("every");
    const double interval = words.nextNumber("the repeat interval, in seconds");
    if (interval <= 0 || duration < 0) {
        throw ScriptError("a key is held for some time and repeats after some time");
    }
    auto& time = application().platform.time;
    const double end = time.now() + duration;
    send(press.event());
    while (time.now() + interval <= end) {
        time.advance(interval);
        send(press.event());
    }
    time.advance(end - time.now());
}

void Player::modifier(Words& words) {
    const auto name = words.next("a modifier");
    const auto flag = modifierNamed(name);
    if (!flag) {
        throw ScriptError("unknown modifier \"" + name + "\"");
    }
    const bool down = words.nextEither("down", "up");
    m_modifiers = down ? m_modifiers | *flag : m_modifiers & ~*flag;
    send({.type = EventType::flagsChanged, .modifierFlags = m_modifiers});
}

} // namespace tapalong::testing
