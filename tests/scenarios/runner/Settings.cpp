#include "scenarios/runner/Settings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

namespace tapalong::testing {

namespace {

constexpr std::array<std::string_view, 18> knownKeys{"fontSize",
                                                     "useSystemAppearance",
                                                     "darkMode",
                                                     "rainbowMode",
                                                     "customFGColorHex",
                                                     "customBGColorHex",
                                                     "soundEnabled",
                                                     "selectedSoundPack",
                                                     "exitCorner",
                                                     "exitPassword",
                                                     "useTouchID",
                                                     "hotCornerDwellTime",
                                                     "kioskMode",
                                                     "globalShortcutKeyCode",
                                                     "globalShortcutModifiers",
                                                     "maxCharacters",
                                                     "showCursor",
                                                     "modifierKeysTypeEmoji"};

DefaultsValue parsedValue(std::string_view text) {
    if (text == "true" || text == "false") {
        return text == "true";
    }
    const auto* const end = text.data() + text.size();
    std::int64_t whole = 0;
    if (const auto [last, error] = std::from_chars(text.data(), end, whole); error == std::errc{} && last == end) {
        return whole;
    }
    double number = 0;
    if (const auto [last, error] = std::from_chars(text.data(), end, number); error == std::errc{} && last == end) {
        return number;
    }
    return unescaped(text);
}

struct Shown {
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const {
        std::array<char, 32> text{};
        const int length = std::snprintf(text.data(), text.size(), "%g", value);
        return {text.data(), static_cast<std::size_t>(length)};
    }
    std::string operator()(const std::string& value) const { return escaped(value); }
};

} // namespace

std::pair<std::string, DefaultsValue> parsedSetting(std::string_view text) {
    auto [key, value] = splitAtEquals(text);
    if (std::find(knownKeys.begin(), knownKeys.end(), key) == knownKeys.end()) {
        throw ScriptError("there is no setting \"" + key + "\"");
    }
    return {std::move(key), parsedValue(value)};
}

std::string shown(const DefaultsValue& value) {
    return std::visit(Shown{}, value);
}

SimulatedApplication::Stored readSettings(const std::vector<Line>& lines) {
    SimulatedApplication::Stored stored;
    for (const auto& line : lines) {
        try {
            stored.insert(parsedSetting(line.text));
        } catch (const ScriptError& error) {
            throw ScriptError(line.where + ": " + error.what());
        }
    }
    return stored;
}

std::pair<std::string, std::string> splitAtEquals(std::string_view text) {
    // The value may be empty, and then the blank after the sign is gone.
    const auto sign = text.find(" =");
    const bool separate = sign != std::string_view::npos && (sign + 2 == text.size() || text[sign + 2] == ' ');
    if (!separate) {
        throw ScriptError("\"" + std::string(text) + "\" lacks \" = \"");
    }
    return {std::string(trimmedBlanks(text.substr(0, sign))), std::string(trimmedBlanks(text.substr(sign + 2)))};
}

} // namespace tapalong::testing
