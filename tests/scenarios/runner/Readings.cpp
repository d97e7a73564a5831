#include "scenarios/runner/Readings.h"

#include "lockdown/KioskManager.h"
#include "scenarios/runner/Player.h"
#include "scenarios/runner/Settings.h"
#include "session/RainbowColors.h"
#include "views/SettingsView.h"
#include "views/ShortcutRecorder.h"

#include <array>
#include <cstdio>
#include <functional>
#include <map>

namespace tapalong::testing {

namespace {

std::string either(bool condition, const char* yes, const char* no) {
    return condition ? yes : no;
}

std::string yesNo(bool condition) {
    return either(condition, "yes", "no");
}

template <class... Numbers> std::string formatted(const char* format, Numbers... numbers) {
    std::array<char, 96> text{};
    const int length = std::snprintf(text.data(), text.size(), format, numbers...);
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string shownColor(const Color& color) {
    if (const auto name = color.named()) {
        constexpr std::array names{"primary", "white", "black", "windowBackground"};
        return names.at(static_cast<std::size_t>(*name));
    }
    const auto srgb = color.srgb().value();
    return formatted("%.6g,%.6g,%.6g", srgb.red, srgb.green, srgb.blue);
}

std::string text(Player& player) {
    std::string all;
    for (const auto& typed : player.application().manager().typedContent()) {
        all += typed.character.utf8();
    }
    return all;
}

std::string colours(Player& player) {
    std::string all;
    for (const auto& typed : player.application().manager().typedContent()) {
        all.append(all.empty() ? "" : " ").append(shownColor(typed.color));
    }
    return all;
}

template <class Read> std::function<std::string(Player&)> ofOverlay(Read read) {
    return [read](Player& player) {
        const auto overlay = player.application().overlay();
        return overlay ? read(*overlay) : std::string("no overlay");
    };
}

template <class Read> std::function<std::string(Player&)> ofView(Read read) {
    return [read](Player& player) {
        const auto view = player.application().sessionView();
        return view ? read(*view) : std::string("no session window");
    };
}

std::string receiver(Player& player) {
    constexpr std::array names{"tap", "local monitor", "own window", "other application"};
    const auto last = player.lastReceiver();
    return last ? names.at(static_cast<std::size_t>(*last)) : "nobody";
}

std::string lockdown(Player& player) {
    const auto* kiosk = player.application().manager().kioskManager();
    if (kiosk == nullptr) {
        return "no kiosk manager";
    }
    constexpr std::array names{"off", "missing", "in force"};
    return names.at(static_cast<std::size_t>(kiosk->lockdown()));
}

std::string notices(Player& player) {
    std::string all;
    for (const auto& notice : player.application().settingsView().notices()) {
        all.append(all.empty() ? "" : " | ").append(notice.substr(0, notice.find(':')));
    }
    return all;
}

std::string glow(const SessionView& view) {
    const auto centre = view.glowCentre(1920, 1080);
    return formatted("%g %g", centre.x, centre.y);
}

std::string count(std::size_t number) {
    return std::to_string(number);
}

using Reader = std::function<std::string(Player&)>;
using Receiver = Player::Receiver;

const std::map<std::string_view, Reader>& sessionReaders() {
    static const std::map<std::string_view, Reader> readers{
        {"active", [](Player& p) { return yesNo(p.application().manager().isSessionActive()); }},
        {"text", text},
        {"colours", colours},
        {"count", [](Player& p) { return count(p.application().manager().typedContent().size()); }},
        {"palette", [](Player&) { return std::to_string(RainbowColors::index()); }},
        {"delete held", [](Player& p) { return yesNo(p.application().manager().isDeleteHeld()); }},
        {"recent emoji", [](Player& p) { return count(p.application().manager().recentEmoji().size()); }},
        {"kiosk manager", [](Player& p) { return yesNo(p.application().manager().kioskManager() != nullptr); }},
        {"sound engine", [](Player& p) { return yesNo(p.application().manager().soundEngine() != nullptr); }},
        {"session window", [](Player& p) { return either(p.application().sessionView() != nullptr, "shown", "none"); }},
        {"notice", ofView([](const SessionView& v) { return either(v.showsLockdownNotice(), "shown", "hidden"); })},
        {"warning", ofView([](const SessionView& v) { return either(v.showsLockdownWarning(), "shown", "hidden"); })},
        {"glow", ofView(glow)},
        {"lockdown", lockdown},
        {"overlay", [](Player& p) { return either(p.application().overlay() != nullptr, "shown", "hidden"); }},
        {"field", ofOverlay([](const ExitOverlay& o) { return o.password(); })},
        {"field focused", ofOverlay([](const ExitOverlay& o) { return yesNo(o.isPasswordFocused()); })},
        {"error", ofOverlay([](const ExitOverlay& o) { return o.errorMessage(); })},
        {"caps lock", ofOverlay([](const ExitOverlay& o) { return either(o.isCapsLockOn(), "said", "not said"); })},
        {"unlock", ofOverlay([](const ExitOverlay& o) { return either(o.isUnlockEnabled(), "enabled", "disabled"); })},
        {"touch id", ofOverlay([](const ExitOverlay& o) {
             return o.attemptingTouchID() ? "pending" : either(o.offersTouchID(), "offered", "not offered");
         })},
    };
    return readers;
}

const std::map<std::string_view, Reader>& desktopReaders() {
    static const std::map<std::string_view, Reader> readers{
        {"options", [](Player& p) { return std::to_string(p.application().platform.desktop.presentationOptions); }},
        {"front", [](Player& p) { return either(p.application().platform.desktop.active, "ours", "other"); }},
        {"timers", [](Player& p) { return count(p.application().platform.time.timerCount()); }},
        {"local monitors", [](Player& p) { return count(p.application().platform.input.localMonitorCount()); }},
        {"global monitors", [](Player& p) { return count(p.application().platform.input.globalMonitorCount()); }},
        {"observers", [](Player& p) { return count(p.application().platform.notificationCenter.observerCount()); }},
        {"taps", [](Player& p) { return count(p.application().platform.input.tapCount()); }},
        {"tap", [](Player& p) { return either(p.application().platform.input.isTapInForce(), "in force", "none"); }},
        {"pending fingers", [](Player& p) { return count(p.application().platform.biometrics.pendingCount()); }},
        {"swallowed", [](Player& p) { return count(p.countOf(Receiver::tap) + p.countOf(Receiver::localMonitor)); }},
        {"passed",
         [](Player& p) { return count(p.countOf(Receiver::ownWindow) + p.countOf(Receiver::otherApplication)); }},
        {"receiver", receiver},
        {"quits", [](Player& p) { return p.quits() ? yesNo(*p.quits()) : "never asked"; }},
    };
    return readers;
}

const std::map<std::string_view, Reader>& settingsReaders() {
    static const std::map<std::string_view, Reader> readers{
        {"settings window",
         [](Player& p) { return either(p.application().platform.desktop.isSceneOpen(), "open", "closed"); }},
        {"notices", notices},
        {"badge", [](Player& p) { return p.application().settingsView().shortcutRecorder().shortcutDisplayString(); }},
        {"recording",
         [](Player& p) { return yesNo(p.application().settingsView().shortcutRecorder().isRecordingShortcut()); }},
        {"start",
         [](Player& p) { return either(p.application().settingsView().isStartEnabled(), "enabled", "disabled"); }},
        {"hint", [](Player& p) { return p.application().settingsView().exitHint(); }},
        {"granted", [](Player& p) { return yesNo(p.application().settingsView().accessibilityGranted()); }},
        {"lockdown toggle",
         [](Player& p) {
             return either(p.application().settingsView().isLockdownToggleEnabled(), "enabled", "disabled");
         }},
        {"password warning",
         [](Player& p) { return either(p.application().settingsView().showsPasswordWarning(), "shown", "hidden"); }},
        {"permission warning",
         [](Player& p) {
             return either(p.application().settingsView().showsAccessibilityWarning(), "shown", "hidden");
         }},
    };
    return readers;
}

} // namespace

std::string reading(std::string_view what, Player& player) {
    constexpr std::string_view setting = "setting ";
    if (what.starts_with(setting)) {
        const auto value = player.application().platform.defaults.value(what.substr(setting.size()));
        return value ? shown(*value) : "absent";
    }
    for (const auto* readers : {&sessionReaders(), &desktopReaders(), &settingsReaders()}) {
        if (const auto found = readers->find(what); found != readers->end()) {
            return found->second(player);
        }
    }
    throw ScriptError("unknown expectation \"" + std::string(what) + "\"");
}

} // namespace tapalong::testing
