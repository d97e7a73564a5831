#include "random/Model.h"

#include "base/Fatal.h"

#include <algorithm>
#include <variant>

namespace tapalong::testing {

using Kind = Event::Kind;

const std::vector<std::pair<std::string, std::optional<SrgbColor>>>& knownHexTexts() {
    static const std::vector<std::pair<std::string, std::optional<SrgbColor>>> texts{
        {"#FFFFFF", SrgbColor{1, 1, 1}},
        {"#1A1A2E", SrgbColor{26 / 255.0, 26 / 255.0, 46 / 255.0}},
        {"  #00ff00\n", SrgbColor{0, 1, 0}},
        {"0#0#0080", SrgbColor{0, 0, 128 / 255.0}},
        {"", std::nullopt},
        {"garbage", std::nullopt},
        {"#FF80", std::nullopt},
        {"+FFFFF", std::nullopt},
        {"0xFFFF", std::nullopt},
        {"FF FF0", std::nullopt},
    };
    return texts;
}

std::optional<Model::Receiver> Model::apply(const Event& event) {
    soundsPlayed = 0;
    m_posted.clear();
    switch (event.kind) {
    case Kind::advance:
        advance(event.seconds);
        return std::nullopt;
    case Kind::pointer:
        mouse = event.point;
        return deliver(event);
    case Kind::key:
    case Kind::modifiers:
    case Kind::otherInput:
        return deliver(event);
    case Kind::overlayPassword:
    case Kind::overlayReturn:
    case Kind::overlayCancel:
    case Kind::overlayField:
    case Kind::overlayTouchID:
        applyToOverlay(event);
        return std::nullopt;
    case Kind::finger:
        answerFinger(event);
        return std::nullopt;
    default:
        applyToDesktop(event);
        return std::nullopt;
    }
}

void Model::applyToDesktop(const Event& event) {
    switch (event.kind) {
    case Kind::start:
        startSession();
        break;
    case Kind::otherInFront:
        ourAppActive = false;
        break;
    case Kind::setting:
        set(event.text, event.value);
        break;
    case Kind::badge:
        if (isRecording()) {
            stopRecording();
        } else {
            localMonitors.push_back(MonitorKind::recorder);
        }
        break;
    case Kind::tapsAvailable:
        tapsAvailable = event.on;
        if (session && tapsAvailable) {
            session->tapIsLost = false;
        }
        noteLockdown();
        break;
    case Kind::disableTap:
        loseTap();
        break;
    case Kind::permission:
        trusted = event.on;
        break;
    case Kind::askPermission:
        grantChecks.push_back(now + 1);
        break;
    case Kind::appearance:
        dark = event.on;
        break;
    case Kind::screen:
        hasScreen = event.on;
        break;
    case Kind::reader:
        hasReader = event.on;
        break;
    case Kind::secureInput:
        secure = event.on;
        break;
    case Kind::closeSettings:
        settingsOpen = false;
        stopRecording();
        if (!session) {
            restart();
        }
        break;
    default:
        break;
    }
}

void Model::set(const std::string& key, const DefaultsValue& value) {
    using Switch = bool Settings::*;
    using Text = std::string Settings::*;
    static const std::vector<std::pair<std::string, Switch>> switches{
        {"kioskMode", &Settings::kioskMode},
        {"rainbowMode", &Settings::rainbowMode},
        {"useSystemAppearance", &Settings::useSystemAppearance},
        {"soundEnabled", &Settings::soundEnabled},
        {"useTouchID", &Settings::useTouchID},
        {"modifierKeysTypeEmoji", &Settings::modifierKeysTypeEmoji}};
    static const std::vector<std::pair<std::string, Text>> texts{{"customFGColorHex", &Settings::fgHex},
                                                                 {"customBGColorHex", &Settings::bgHex},
                                                                 {"selectedSoundPack", &Settings::soundPack},
                                                                 {"exitPassword", &Settings::exitPassword}};
    for (const auto& [name, member] : switches) {
        if (name == key) {
            settings.*member = std::get<bool>(value);
        }
    }
    for (const auto& [name, member] : texts) {
        if (name == key) {
            settings.*member = std::get<std::string>(value);
        }
    }
    if (key == "maxCharacters") {
        settings.maxCharacters = std::get<std::int64_t>(value);
    } else if (key == "hotCornerDwellTime") {
        settings.dwellTime = std::get<double>(value);
    } else if (key == "exitCorner") {
        const auto& raw = std::get<std::string>(value);
        settings.exitCorner = raw == "topLeft"       ? ScreenCorner::topLeft
                              : raw == "bottomLeft"  ? ScreenCorner::bottomLeft
                              : raw == "bottomRight" ? ScreenCorner::bottomRight
                                                     : ScreenCorner::topRight;
    }
}

void Model::startSession() {
    if (session) {
        return;
    }
    stopRecording();
    session.emplace(Session{});
    session->number = ++sessionsStarted;
    session->kiosk = settings.kioskMode;
    session->corner = settings.exitCorner;
    session->dwell = settings.dwellTime;
    session->audible = settings.soundPack != "funk"; // which the simulated system lacks
    session->nextPoll = now + 0.25;
    session->nextWatch = now + 0.5;
    content.clear();
    if (breaks(Broken::paletteRestartsWithASession)) {
        palette = 0;
    }
    localMonitors.push_back(MonitorKind::session);
    lastLockdownWasMissing = lastLockdownWasInForce = false;
    if (session->kiosk) {
        installTap();
    }
    options = session->kiosk ? 0x1FA : 0xA;
    ourAppActive = true;
}

void Model::installTap() {
    if (tapsAvailable) {
        session->tap = true;
    } else if (!breaks(Broken::refusedTapIsNotTriedAgain)) {
        session->tapTriedAgainAt = now + 2;
    }
    noteLockdown();
}

// Taken away it is had again at once, unless another program has the keyboard by now.
void Model::loseTap() {
    if (session && session->isTapInForce() && !tapsAvailable) {
        session->tapIsLost = true;
        ++milestones.tapsLost;
        noteLockdown();
    }
}

bool Model::isLockdownMissing() const {
    const bool isInForce =
        breaks(Broken::lostTapCountsAsInForce) ? session && session->tap : session && session->isTapInForce();
    return session && session->kiosk && !isInForce;
}

void Model::noteLockdown() {
    if (session && session->kiosk) {
        (isLockdownMissing() ? session->lockdownWasMissing : session->lockdownWasInForce) = true;
    }
}

void Model::endSession() {
    if (!session) {
        return;
    }
    if (!breaks(Broken::lockdownIsForgottenAtTheEnd)) {
        lastLockdownWasMissing = session->lockdownWasMissing;
        lastLockdownWasInForce = session->lockdownWasInForce;
    }
    milestones.sessionsWithoutLockdown += session->lockdownWasMissing ? 1 : 0;
    session.reset();
    stopRecording();
    std::erase(localMonitors, MonitorKind::session);
    content.clear();
    options = 0;
    showSettings();
}

void Model::showSettings() {
    if (!settingsOpen) {
        settingsOpen = true;
        granted = trusted;
        nextPermissionCheck = now + 2;
    }
}

bool Model::isRecording() const {
    return std::find(localMonitors.begin(), localMonitors.end(), MonitorKind::recorder) != localMonitors.end();
}

void Model::stopRecording() {
    std::erase(localMonitors, MonitorKind::recorder);
}

void Model::restart() {
    const Model fresh(m_broken);
    // Of a process only the settings remain.
    session.reset();
    content.clear();
    recentEmoji.clear();
    deleteHeldSince.reset();
    lastLockdownWasMissing = fresh.lastLockdownWasMissing;
    lastLockdownWasInForce = fresh.lastLockdownWasInForce;
    palette = fresh.palette;
    localMonitors = fresh.localMonitors;
    pendingFingers.clear();
    appearances.clear();
    settingsOpen = fresh.settingsOpen;
    granted = fresh.granted;
    nextPermissionCheck = fresh.nextPermissionCheck;
    grantChecks.clear();
    now = fresh.now;
    ourAppActive = fresh.ourAppActive;
    trusted = fresh.trusted;
    tapsAvailable = fresh.tapsAvailable;
    secure = fresh.secure;
    hasReader = fresh.hasReader;
    dark = fresh.dark;
    hasScreen = fresh.hasScreen;
    mouse = fresh.mouse;
    options = fresh.options;
}

std::size_t Model::timers() const {
    // In a session: the corner's polling, the watchdog, the blinking cursor, and a dwell.
    const std::size_t ofSession = session ? 3U + (session->dwellEnds ? 1U : 0U) : 0U;
    return ofSession + (settingsOpen ? 1U : 0U) + grantChecks.size();
}

Point Model::Session::middleOfCorner() const {
    const bool left = corner == ScreenCorner::topLeft || corner == ScreenCorner::bottomLeft;
    const bool top = corner == ScreenCorner::topLeft || corner == ScreenCorner::topRight;
    return {left ? 5.0 : 1915.0, top ? 1075.0 : 5.0};
}

} // namespace tapalong::testing
