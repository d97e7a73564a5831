#include "scenarios/runner/Expectations.h"

#include "scenarios/runner/Player.h"
#include "scenarios/runner/Readings.h"
#include "scenarios/runner/Settings.h"

#include <algorithm>
#include <vector>

namespace tapalong::testing {

namespace {

constexpr std::string_view contain = "effects contain ";
constexpr std::string_view never = "effects never contain ";
constexpr std::string_view count = "effects count ";

/// A star at the end of the pattern stands for anything.
bool fits(std::string_view effect, std::string_view pattern) {
    return pattern.ends_with('*') ? effect.starts_with(pattern.substr(0, pattern.size() - 1)) : effect == pattern;
}

std::vector<std::string> splitAtBars(std::string_view text) {
    std::vector<std::string> parts;
    for (auto bar = text.find(" | "); bar != std::string_view::npos; bar = text.find(" | ")) {
        parts.emplace_back(trimmedBlanks(text.substr(0, bar)));
        text.remove_prefix(bar + 3);
    }
    parts.emplace_back(trimmedBlanks(text));
    return parts;
}

std::string listed(const std::vector<std::string>& effects) {
    constexpr std::size_t most = 60;
    std::string text = effects.size() > most ? "\n      ..." : "";
    const auto shownFrom = effects.size() > most ? effects.size() - most : 0;
    for (auto i = shownFrom; i < effects.size(); ++i) {
        text += "\n      " + effects[i];
    }
    return text;
}

std::optional<std::string> missingFrom(const std::vector<std::string>& effects, std::string_view wanted) {
    auto from = effects.begin();
    for (const auto& pattern : splitAtBars(wanted)) {
        from = std::find_if(from, effects.end(), [&](const auto& effect) { return fits(effect, pattern); });
        if (from == effects.end()) {
            return "effects lack \"" + pattern + "\" at its place; they are:" + listed(effects);
        }
        ++from;
    }
    return std::nullopt;
}

std::size_t occurrences(const std::vector<std::string>& effects, std::string_view pattern) {
    return static_cast<std::size_t>(
        std::count_if(effects.begin(), effects.end(), [&](const auto& effect) { return fits(effect, pattern); }));
}

std::optional<std::string> unequal(const std::string& what, const std::string& expected, const std::string& actual) {
    if (expected == actual) {
        return std::nullopt;
    }
    return what + " should be " + (expected.empty() ? "empty" : expected) + " but is " +
           (actual.empty() ? "empty" : actual);
}

} // namespace

std::optional<std::string> differenceFrom(std::string_view expectation, Player& player) {
    const auto& effects = player.effects();
    if (expectation.starts_with(contain)) {
        return missingFrom(effects, expectation.substr(contain.size()));
    }
    if (expectation.starts_with(never)) {
        const auto pattern = trimmedBlanks(expectation.substr(never.size()));
        return occurrences(effects, pattern) == 0
                   ? std::nullopt
                   : std::optional("effects contain \"" + std::string(pattern) + "\":" + listed(effects));
    }
    if (expectation.starts_with(count)) {
        const auto [pattern, number] = splitAtEquals(expectation.substr(count.size()));
        return unequal("the number of effects \"" + pattern + "\"", std::to_string(Words(number).nextCount("count")),
                       std::to_string(occurrences(effects, pattern)));
    }
    const auto [what, expected] = splitAtEquals(expectation);
    return unequal(what, escaped(unescaped(expected)), escaped(reading(what, player)));
}

} // namespace tapalong::testing
