#include "scenarios/runner/KeyTable.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <map>

namespace tapalong::testing {

namespace {

constexpr ModifierFlags arrowFlags = Modifier::numericPad | Modifier::function;

// Each place's code is its position in this text; a blank stands for a code that types nothing of its own.
constexpr std::string_view charactersByCode = "asdfhgzxcv bqweryt123465=97-80]ou[ip lj'k;\\,/nm. `";
constexpr std::array<std::int64_t, 20> functionKeyCodes{122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                                        103, 111, 105, 107, 113, 106, 64, 79,  80,  90};

const std::map<std::string_view, Key>& namedKeys() {
    static const std::map<std::string_view, Key> keys{
        {"Return", {36, "\r"}},
        {"Enter", {76, "\r"}},
        {"Space", {49, " "}},
        {"Tab", {48, "\t"}},
        {"Delete", {51, "\x7F"}},
        {"ForwardDelete", {117, std::nullopt, Modifier::function}},
        {"Escape", {53, "\x1B"}},
        {"Left", {123, std::nullopt, arrowFlags}},
        {"Right", {124, std::nullopt, arrowFlags}},
        {"Down", {125, std::nullopt, arrowFlags}},
        {"Up", {126, std::nullopt, arrowFlags}},
        {"Help", {114, std::nullopt, Modifier::function}},
        {"Home", {115, std::nullopt, Modifier::function}},
        {"PageUp", {116, std::nullopt, Modifier::function}},
        {"End", {119, std::nullopt, Modifier::function}},
        {"PageDown", {121, std::nullopt, Modifier::function}},
        {"Clear", {71, std::nullopt, Modifier::numericPad}},
    };
    return keys;
}

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc{} && end == text.data() + text.size();
    return whole ? std::optional(value) : std::nullopt;
}

char lower(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

std::optional<Key> keyWithCharacter(char character) {
    const auto position = charactersByCode.find(lower(character));
    if (character == ' ' || position == std::string_view::npos) {
        return std::nullopt;
    }
    return Key{static_cast<std::int64_t>(position), std::string(1, lower(character))};
}

} // namespace

std::optional<Key> keyNamed(std::string_view name) {
    if (const auto found = namedKeys().find(name); found != namedKeys().end()) {
        return found->second;
    }
    if (name.size() == 1) {
        return keyWithCharacter(name.front());
    }
    if (name.size() > 1 && name.front() == 'F') {
        const auto number = wholeNumber(name.substr(1));
        if (number && *number >= 1 && *number <= static_cast<std::int64_t>(functionKeyCodes.size())) {
            return Key{functionKeyCodes.at(static_cast<std::size_t>(*number - 1)), std::nullopt, Modifier::function};
        }
    }
    const auto code = wholeNumber(name);
    return code ? std::optional(Key{*code}) : std::nullopt;
}

Key keyFor(std::string_view character) {
    constexpr std::int64_t isoExtraKey = 10;
    if (character == " ") {
        return namedKeys().at("Space");
    }
    if (character == "\n") {
        return namedKeys().at("Return");
    }
    if (character == "\t") {
        return namedKeys().at("Tab");
    }
    auto key = character.size() == 1 ? keyWithCharacter(character.front()) : std::nullopt;
    if (!key) {
        key = Key{isoExtraKey};
    }
    key->text = std::string(character);
    return *key;
}

std::optional<std::string> textWith(const Key& key, ModifierFlags modifiers) {
    if (!key.text || key.text->size() != 1 || std::isalpha(static_cast<unsigned char>(key.text->front())) == 0) {
        return key.text;
    }
    const auto letter = static_cast<unsigned char>(key.text->front());
    if ((modifiers & Modifier::control) != 0) {
        return std::string(1, static_cast<char>(letter & 0x1FU));
    }
    const bool capital = (modifiers & (Modifier::shift | Modifier::capsLock)) != 0;
    return capital ? std::string(1, static_cast<char>(std::toupper(letter))) : key.text;
}

std::optional<ModifierFlags> modifierNamed(std::string_view name) {
    static const std::map<std::string_view, ModifierFlags> modifiers{{"Shift", Modifier::shift},
                                                                     {"Control", Modifier::control},
                                                                     {"Option", Modifier::option},
                                                                     {"Command", Modifier::command},
                                                                     {"CapsLock", Modifier::capsLock}};
    const auto found = modifiers.find(name);
    return found != modifiers.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<EventType> eventNamed(std::string_view name) {
    static const std::map<std::string_view, EventType> events{{"media", EventType::systemDefined},
                                                              {"wheel", EventType::scrollWheel},
                                                              {"pinch", EventType::magnify},
                                                              {"swipe", EventType::swipe},
                                                              {"rotate", EventType::rotate},
                                                              {"gesture", EventType::gesture},
                                                              {"left-down", EventType::leftMouseDown},
                                                              {"left-up", EventType::leftMouseUp},
                                                              {"right-down", EventType::rightMouseDown},
                                                              {"right-up", EventType::rightMouseUp},
                                                              {"other-down", EventType::otherMouseDown},
                                                              {"other-up", EventType::otherMouseUp}};
    const auto found = events.find(name);
    return found != events.end() ? std::optional(found->second) : std::nullopt;
}

} // namespace tapalong::testing
