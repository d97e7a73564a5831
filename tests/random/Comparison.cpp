#include "random/Comparison.h"

#include "lockdown/KioskManager.h"
#include "random/Model.h"
#include "scenarios/runner/SimulatedApplication.h"
#include "session/EmojiPool.h"
#include "session/RainbowColors.h"
#include "views/SettingsView.h"
#include "views/ShortcutRecorder.h"

#include <algorithm>
#include <string_view>

namespace tapalong::testing {

namespace {

/// Collects the first thing that is not as it should be.
class Finding {
public:
    template <class Value> void equal(std::string_view what, const Value& actual, const Value& expected) {
        if (!m_text && actual != expected) {
            m_text = std::string(what) + " is " + shown(actual) + ", should be " + shown(expected);
        }
    }

    [[nodiscard]] const std::optional<std::string>& text() const { return m_text; }

private:
    static std::string shown(const std::string& value) { return '"' + value + '"'; }
    template <class Number> static std::string shown(Number value) { return std::to_string(value); }

    std::optional<std::string> m_text;
};

void compareContent(Finding& finding, const SimulatedApplication& application, const Model& model) {
    const auto& typed = application.manager().typedContent();
    finding.equal("the number of characters", typed.size(), model.content.size());
    if (finding.text()) {
        return;
    }
    for (std::size_t i = 0; i < typed.size(); ++i) {
        if (typed[i].character.utf8() != model.content[i].text) {
            finding.equal("character " + std::to_string(i), typed[i].character.utf8(), model.content[i].text);
        } else if (typed[i].color != model.content[i].color) {
            finding.equal("the colour of character " + std::to_string(i), typed[i].color->hexString(),
                          model.content[i].color.hexString() + ", to the last bit");
        }
    }
}

void compareSession(Finding& finding, const SimulatedApplication& application, const Model& model) {
    const auto& manager = application.manager();
    const bool active = model.session.has_value();
    finding.equal("session active", manager.isSessionActive(), active);
    finding.equal("kiosk manager present", manager.kioskManager() != nullptr, active);
    finding.equal("sound engine present", manager.soundEngine() != nullptr, active);
    finding.equal("session window on screen", application.sessionView() != nullptr, active);
    finding.equal("session window kept", application.delegate().sessionWindow() != nullptr, active);
    finding.equal("delete held", manager.isDeleteHeld(), model.deleteHeldSince.has_value());
    finding.equal("colours handed out", RainbowColors::index(), model.palette);
    finding.equal("recent emoji", manager.recentEmoji().size(), model.recentEmoji.size());
    for (std::size_t i = 0; i < manager.recentEmoji().size() && !finding.text(); ++i) {
        finding.equal("recent emoji " + std::to_string(i), manager.recentEmoji()[i].utf8(),
                      EmojiPool::all()[model.recentEmoji[i]].utf8());
    }
    if (const auto view = application.sessionView(); view && active) {
        finding.equal("notice shown", view->showsLockdownNotice(), !model.settings.kioskMode && model.content.empty());
        const auto corner = model.settings.exitCorner;
        const bool right = corner == ScreenCorner::topRight || corner == ScreenCorner::bottomRight;
        const bool bottom = corner == ScreenCorner::bottomLeft || corner == ScreenCorner::bottomRight;
        finding.equal("the glow's x", view->glowCentre(800, 600).x, right ? 800.0 : 0.0);
        finding.equal("the glow's y", view->glowCentre(800, 600).y, bottom ? 600.0 : 0.0);
    }
}

// What the session says of its lockdown is what the keyboard is like, and afterwards what it was like.
void compareLockdown(Finding& finding, SimulatedApplication& application, const Model& model) {
    const auto& manager = application.manager();
    if (const auto* kiosk = manager.kioskManager(); kiosk != nullptr && model.session) {
        const bool inForce = kiosk->lockdown() == Lockdown::inForce;
        finding.equal("lockdown wanted", kiosk->lockdown() != Lockdown::off, model.session->kiosk);
        finding.equal("lockdown said to be in force, and the tap", inForce, application.platform.input.isTapInForce());
    }
    finding.equal("lockdown missing", manager.isLockdownMissing(), model.isLockdownMissing());
    if (const auto view = application.sessionView()) {
        finding.equal("warning shown", view->showsLockdownWarning(), model.isLockdownMissing());
    }
    const auto expected = !model.lastLockdownWasMissing  ? LockdownOutcome::asWished
                          : model.lastLockdownWasInForce ? LockdownOutcome::partly
                                                         : LockdownOutcome::never;
    finding.equal("how lockdown went", static_cast<int>(manager.lastLockdown()), static_cast<int>(expected));
    finding.equal("notices of the settings window", application.settingsView().notices().size(),
                  std::size_t{expected == LockdownOutcome::asWished ? 0U : 1U});
}

void compareOverlay(Finding& finding, const SimulatedApplication& application, const Model& model) {
    const auto shown = application.overlay();
    const auto* expected = model.overlay();
    finding.equal("overlay shown", shown != nullptr, expected != nullptr);
    if (!shown || expected == nullptr) {
        return;
    }
    finding.equal("the overlay's field", shown->password(), expected->password);
    finding.equal("the overlay's message", shown->errorMessage(), expected->error);
    finding.equal("field focused", shown->isPasswordFocused(), expected->focused);
    finding.equal("fingerprint asked for", shown->attemptingTouchID(), expected->attempting);
    finding.equal("unlock enabled", shown->isUnlockEnabled(), !expected->password.empty());
    finding.equal("Touch ID offered", shown->offersTouchID(), model.settings.useTouchID);
}

void compareDesktop(Finding& finding, SimulatedApplication& application, const Model& model) {
    auto& platform = application.platform;
    const bool active = model.session.has_value();
    finding.equal("presentation options", platform.desktop.presentationOptions, model.options);
    finding.equal("our application in front", platform.desktop.active, model.ourAppActive);
    finding.equal("timers", platform.time.timerCount(), model.timers());
    finding.equal("local monitors", platform.input.localMonitorCount(), model.localMonitors.size());
    finding.equal("global monitors", platform.input.globalMonitorCount(), std::size_t{active ? 2U : 1U});
    finding.equal("observers", platform.notificationCenter.observerCount(), std::size_t{active ? 4U : 0U});
    const bool tap = active && model.session->tap;
    finding.equal("taps", platform.input.tapCount(), std::size_t{tap ? 1U : 0U});
    finding.equal("tap in force", platform.input.isTapInForce(), tap && model.session->isTapInForce());
    finding.equal("pending fingerprints", platform.biometrics.pendingCount(), model.pendingFingers.size());
    const auto& effects = platform.effects.all();
    const auto plays = std::count_if(effects.begin(), effects.end(),
                                     [](const auto& effect) { return effect.starts_with("sound.play"); });
    finding.equal("sounds", static_cast<int>(plays), model.soundsPlayed);
}

void compareSettings(Finding& finding, SimulatedApplication& application, const Model& model) {
    const auto& view = application.settingsView();
    finding.equal("settings window open", application.platform.desktop.isSceneOpen(), model.settingsOpen);
    finding.equal("permission granted", view.accessibilityGranted(), model.granted);
    finding.equal("recording", view.shortcutRecorder().isRecordingShortcut(), model.isRecording());
    finding.equal("start enabled", view.isStartEnabled(), !model.settings.exitPassword.empty());
    finding.equal("the shortcut's key", application.settings().globalShortcutKeyCode.get(),
                  model.settings.shortcutKeyCode);
    finding.equal("the shortcut's modifiers", application.settings().globalShortcutModifiers.get(),
                  model.settings.shortcutModifiers);
}

} // namespace

std::optional<std::string> differenceBetween(SimulatedApplication& application, const Model& model) {
    Finding finding;
    compareSession(finding, application, model);
    compareLockdown(finding, application, model);
    compareContent(finding, application, model);
    compareOverlay(finding, application, model);
    compareDesktop(finding, application, model);
    compareSettings(finding, application, model);
    return finding.text();
}

} // namespace tapalong::testing
