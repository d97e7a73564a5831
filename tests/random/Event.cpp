#include "random/Event.h"

#include <cstdio>

namespace tapalong::testing {

namespace {

template <class... Values> std::string formatted(const char* format, Values... values) {
    std::array<char, 160> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

struct Shown {
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const { return std::to_string(value); }
    std::string operator()(const std::string& value) const { return '"' + value + '"'; }
};

std::string describedKey(const Event& event) {
    return formatted("%s %lld flags 0x%llx text %s", event.type == EventType::keyUp ? "key-up" : "key",
                     static_cast<long long>(event.press.code), static_cast<unsigned long long>(event.flags),
                     event.press.text ? ('"' + *event.press.text + '"').c_str() : "none");
}

} // namespace

std::string describe(const Event& event) {
    constexpr std::array names{"advance",        "key",
                               "modifiers",      "other input",
                               "pointer",        "start",
                               "other in front", "setting",
                               "badge",          "taps available",
                               "disable tap",    "permission",
                               "ask permission", "appearance",
                               "screen",         "reader",
                               "finger",         "close settings",
                               "field holds",    "overlay return",
                               "overlay cancel", "click field",
                               "click Touch ID", "secure input"};
    const std::string name = names.at(static_cast<std::size_t>(event.kind));
    switch (event.kind) {
    case Event::Kind::advance:
        return name + formatted(" %g", event.seconds);
    case Event::Kind::key:
        return describedKey(event);
    case Event::Kind::modifiers:
        return name + formatted(" 0x%llx", static_cast<unsigned long long>(event.flags));
    case Event::Kind::otherInput:
    case Event::Kind::disableTap:
        return name + formatted(" %u", static_cast<unsigned>(event.type));
    case Event::Kind::pointer:
        return name + formatted(" %g %g", event.point.x, event.point.y);
    case Event::Kind::setting:
        return name + " " + event.text + " = " + std::visit(Shown{}, event.value);
    case Event::Kind::overlayPassword:
        return name + " \"" + event.text + "\"";
    default:
        return name + (event.on ? " yes" : " no") + formatted(" %d", event.choice);
    }
}

} // namespace tapalong::testing
