#include "random/EventSource.h"

#include "random/Model.h"

#include <array>
#include <utility>

namespace tapalong::testing {

namespace {

using Kind = Event::Kind;
using Meaning = KeyPress::Meaning;

const std::vector<KeyPress>& keys() {
    static const std::vector<KeyPress> table{
        {0, "a", Meaning::text, "a"},
        {1, "S", Meaning::text, "S"},
        {17, "t", Meaning::text, "t"},
        {40, "k", Meaning::text, "k"},
        {10, "\u00E9", Meaning::text, "\u00E9"},
        {11, "e\u0301x", Meaning::text, "e\u0301"},
        {12, "", Meaning::text, ""},
        {13, std::nullopt, Meaning::text, ""},
        {52, "\u200B", Meaning::text, ""},
        {300, "\t", Meaning::text, ""},
        {301, "\x7F", Meaning::text, ""},
        {302, "\x14", Meaning::text, ""},
        {303, "\u0085", Meaning::text, "\u0085"},
        {304, "\u00ADa", Meaning::text, ""},
        {305, "\xFF", Meaning::text, "\uFFFD"},
        {306, "👨\u200D👩\u200D👧z", Meaning::text, "👨\u200D👩\u200D👧"},
        {307, "🇩🇪🇫🇷", Meaning::text, "🇩🇪"},
        {127, "\r\n", Meaning::text, ""},
        {36, "\r", Meaning::enter},
        {76, "\r", Meaning::enter},
        {49, " ", Meaning::space},
        {48, "\t", Meaning::tab},
        {51, "\x7F", Meaning::deleteLast},
        {117, std::nullopt, Meaning::deleteLast},
        {53, "\x1B", Meaning::fixed, "🚀"},
        {123, std::nullopt, Meaning::fixed, "←"},
        {124, "x", Meaning::fixed, "→"},
        {125, std::nullopt, Meaning::fixed, "↓"},
        {126, std::nullopt, Meaning::fixed, "↑"},
        {122, std::nullopt, Meaning::celestial},
        {118, "f", Meaning::celestial},
        {90, std::nullopt, Meaning::celestial},
        {114, "h", Meaning::navigation, "h"},
        {115, std::nullopt, Meaning::navigation, ""},
        {116, "p", Meaning::navigation, "p"},
        {119, "\u200B", Meaning::navigation, ""},
    };
    return table;
}

const KeyPress deleteKey{51, "\x7F", Meaning::deleteLast};

/// The weights of what happens, in general; what can only happen in some states is sorted out afterwards.
constexpr std::array<std::pair<Kind, int>, 24> weights{{
    {Kind::advance, 170},     {Kind::key, 430},         {Kind::modifiers, 80},      {Kind::otherInput, 25},
    {Kind::pointer, 35},      {Kind::start, 10},        {Kind::otherInFront, 8},    {Kind::setting, 25},
    {Kind::badge, 3},         {Kind::tapsAvailable, 8}, {Kind::disableTap, 4},      {Kind::permission, 3},
    {Kind::askPermission, 1}, {Kind::appearance, 3},    {Kind::screen, 3},          {Kind::reader, 3},
    {Kind::finger, 6},        {Kind::closeSettings, 1}, {Kind::overlayPassword, 6}, {Kind::overlayReturn, 6},
    {Kind::overlayCancel, 4}, {Kind::overlayField, 4},  {Kind::overlayTouchID, 4},  {Kind::secureInput, 6},
}};

int sumOfWeights() {
    int sum = 0;
    for (const auto& [kind, weight] : weights) {
        sum += weight;
    }
    return sum;
}

bool isOfOverlay(Kind kind) {
    return kind == Kind::overlayPassword || kind == Kind::overlayReturn || kind == Kind::overlayCancel ||
           kind == Kind::overlayField || kind == Kind::overlayTouchID;
}

bool isOfSettings(Kind kind) {
    return kind == Kind::start || kind == Kind::badge || kind == Kind::askPermission || kind == Kind::closeSettings;
}

bool isPossible(Kind kind, const Model& model) {
    if (kind == Kind::overlayTouchID) {
        return model.overlay() != nullptr && !model.overlay()->attempting && model.settings.useTouchID;
    }
    if (kind == Kind::finger) {
        return !model.pendingFingers.empty();
    }
    if (isOfSettings(kind)) {
        return model.settingsOpen;
    }
    return !isOfOverlay(kind) || model.overlay() != nullptr;
}

} // namespace

std::uint64_t EventSource::below(std::uint64_t bound) {
    return m_engine() % bound;
}

template <class List> const auto& EventSource::oneOf(const List& list) {
    return list[below(list.size())];
}

Kind EventSource::nextKind(const Model& model) {
    static const auto sum = static_cast<std::uint64_t>(sumOfWeights());
    // Most of the time there should be a session.
    if (!model.session && oneIn(8)) {
        return oneIn(10) ? Kind::closeSettings : Kind::start;
    }
    while (true) {
        auto left = static_cast<int>(below(sum));
        for (const auto& [kind, weight] : weights) {
            left -= weight;
            if (left < 0) {
                if (isPossible(kind, model)) {
                    return kind;
                }
                break;
            }
        }
    }
}

Event EventSource::next(const Model& model) {
    Event event;
    if (m_deletesLeft > 0) {
        --m_deletesLeft;
        event.kind = m_deletesLeft % 2 == 0 ? Kind::advance : Kind::key;
        event.press = deleteKey;
        event.seconds = static_cast<double>(1 + below(10)) / 8;
        return event;
    }
    if (oneIn(400)) {
        m_deletesLeft = 20;
    }
    if (oneIn(10000)) {
        m_keysLeft = 1500;
    }
    m_keysLeft -= m_keysLeft > 0 ? 1 : 0;
    event.kind = m_keysLeft > 0 ? Kind::key : nextKind(model);
    const auto& recent = model.recentEmoji;
    const bool repeating = !recent.empty() && oneIn(10); // ten draws in a row that are to be avoided
    for (auto& draw : event.draws) {
        draw = repeating || (!recent.empty() && oneIn(3)) ? oneOf(recent) : below(std::uint64_t{75} * 15);
    }
    fill(event, model);
    return event;
}

void EventSource::fill(Event& event, const Model& model) {
    static constexpr std::array<double, 9> steps{0, 0.0625, 0.125, 0.25, 0.25, 0.5, 1, 2, 3};
    static constexpr std::array otherTypes{
        EventType::systemDefined,   EventType::scrollWheel, EventType::otherMouseDown, EventType::otherMouseUp,
        EventType::gesture,         EventType::magnify,     EventType::swipe,          EventType::rotate,
        EventType::leftMouseDown,   EventType::leftMouseUp, EventType::rightMouseDown, EventType::rightMouseUp,
        EventType::leftMouseDragged};
    event.on = oneIn(2);
    event.choice = static_cast<int>(below(3));
    switch (event.kind) {
    case Kind::advance:
        event.seconds = oneOf(steps);
        break;
    case Kind::key:
        fillKey(event, model);
        break;
    case Kind::modifiers:
        event.type = EventType::flagsChanged;
        event.flags = someFlags();
        break;
    case Kind::otherInput:
        event.type = oneOf(otherTypes);
        break;
    case Kind::disableTap:
        event.type = event.on ? EventType::tapDisabledByTimeout : EventType::tapDisabledByUserInput;
        break;
    case Kind::pointer:
        event.point = somePoint(model);
        break;
    case Kind::setting:
        fillSetting(event);
        break;
    case Kind::overlayPassword:
        event.text = oneIn(4) ? model.settings.exitPassword : oneIn(2) ? "wrong" : "";
        break;
    case Kind::tapsAvailable:
    case Kind::permission:
    case Kind::screen:
        event.on = !oneIn(3);
        break;
    default:
        break;
    }
}

void EventSource::fillKey(Event& event, const Model& model) {
    event.press = oneOf(keys());
    event.flags = oneIn(6) ? someFlags() : 0;
    event.type = oneIn(15) ? EventType::keyUp : EventType::keyDown;
    if (oneIn(60)) {
        event.press.code = model.settings.shortcutKeyCode;
        event.press.text = std::nullopt;
        // The key may have a meaning of its own by the place it sits at.
        for (const auto& key : keys()) {
            if (key.code == event.press.code) {
                event.press = key;
            }
        }
        event.flags = static_cast<ModifierFlags>(model.settings.shortcutModifiers) | (oneIn(3) ? someFlags() : 0);
    }
}

ModifierFlags EventSource::someFlags() {
    static constexpr std::array all{Modifier::capsLock, Modifier::shift,    Modifier::control,   Modifier::option,
                                    Modifier::command,  Modifier::function, Modifier::numericPad};
    ModifierFlags flags = oneIn(10) ? 0x100 : 0; // a bit that belongs to a device and to no rule
    for (auto count = below(3); count > 0; --count) {
        flags |= oneOf(all);
    }
    return flags;
}

Point EventSource::somePoint(const Model& model) {
    static constexpr std::array<Point, 14> points{{{960, 540},
                                                   {0, 1080},
                                                   {10, 1070},
                                                   {10.5, 1070},
                                                   {1919, 1079},
                                                   {1910, 1070},
                                                   {1909.5, 1079},
                                                   {1925, 1079},
                                                   {1920, 1080},
                                                   {0, 1},
                                                   {10, 10},
                                                   {1919, 1},
                                                   {1919, 0},
                                                   {-5, 1085}}};
    if (model.session && oneIn(3)) {
        return model.session->middleOfCorner();
    }
    return oneOf(points);
}

DefaultsValue EventSource::someText() {
    const auto& texts = knownHexTexts();
    return oneOf(texts).first;
}

void EventSource::fillSetting(Event& event) {
    static const std::vector<std::int64_t> limits{0,  1,  2,   3,   4,   9,    10, 11,         20,
                                                  33, 50, 100, 101, 400, 5000, -1, -5000000000};
    static const std::vector<double> dwells{0.5, 1, 1.5, 5, 0.3, 0.25, 0, -1, 12};
    static const std::vector<std::string> corners{"topLeft", "topRight", "bottomLeft", "bottomRight", "TopLeft"};
    static const std::vector<std::string> packs{"tink", "funk", "Pop", "morse", ""};
    static const std::vector<std::string> passwords{"sesame", "", "a", "Stra\u00DFe 9", "e\u0301 t"};
    static const std::vector<std::string> switches{
        "kioskMode",    "rainbowMode", "useSystemAppearance",   "darkMode",
        "soundEnabled", "useTouchID",  "modifierKeysTypeEmoji", "showCursor"};
    switch (below(9)) {
    case 0:
        event.text = "maxCharacters";
        event.value = oneOf(limits);
        break;
    case 1:
        event.text = "hotCornerDwellTime";
        event.value = oneOf(dwells);
        break;
    case 2:
        event.text = "exitCorner";
        event.value = oneOf(corners);
        break;
    case 3:
        event.text = "selectedSoundPack";
        event.value = oneOf(packs);
        break;
    case 4:
        event.text = "exitPassword";
        event.value = oneOf(passwords);
        break;
    case 5:
        event.text = oneIn(2) ? "customFGColorHex" : "customBGColorHex";
        event.value = someText();
        break;
    default:
        event.text = oneOf(switches);
        event.value = oneIn(2);
    }
}

} // namespace tapalong::testing
