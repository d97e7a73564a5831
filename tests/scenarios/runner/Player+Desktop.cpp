// The commands of the pointer, the windows and the rest of the desktop.

#include "scenarios/runner/KeyTable.h"
#include "scenarios/runner/Player.h"
#include "views/SettingsView.h"
#include "views/ShortcutRecorder.h"

namespace tapalong::testing {

namespace {

std::shared_ptr<ExitOverlay> shownOverlay(const SimulatedApplication& application) {
    auto overlay = application.overlay();
    if (!overlay) {
        throw ScriptError("there is no overlay on screen");
    }
    return overlay;
}

} // namespace

void Player::event(Words& words) {
    const auto name = words.next("an event");
    const auto type = eventNamed(name);
    if (!type) {
        throw ScriptError("unknown event \"" + name + "\"");
    }
    send({.type = *type, .modifierFlags = m_modifiers});
}

void Player::movePointer(Words& words, EventType type) {
    const double x = words.nextNumber("x");
    const double y = words.nextNumber("y");
    application().movePointer({x, y}, type);
}

void Player::pointer(Words& words) {
    movePointer(words, EventType::mouseMoved);
}

void Player::drag(Words& words) {
    movePointer(words, EventType::leftMouseDragged);
}

void Player::start(Words&) {
    application().manager().startSession();
}

void Player::click(Words& words) {
    const auto button = words.next("a button");
    auto& view = application().settingsView();
    if (button == "start") {
        if (view.isStartEnabled()) {
            view.startSession();
        }
    } else if (button == "grant") {
        view.requestAccessibilityPermission();
    } else if (button == "preview") {
        view.previewSound();
    } else {
        throw ScriptError("unknown button \"" + button + "\"");
    }
}

void Player::overlay(Words& words) {
    const auto action = words.next("an action");
    const auto overlay = shownOverlay(application()); // kept: a success takes it off the screen
    if (action == "password") {
        overlay->setPassword(unescaped(words.rest()));
    } else if (action == "unlock") {
        if (overlay->isUnlockEnabled()) {
            overlay->attemptPassword();
        }
    } else if (action == "return") {
        overlay->attemptPassword();
    } else if (action == "cancel" || action == "backdrop") {
        overlay->dismiss();
    } else if (action == "field") {
        overlay->setPasswordFocused(true);
    } else if (action == "touch-id") {
        if (!overlay->offersTouchID()) {
            throw ScriptError("the overlay has no Touch ID button");
        }
        if (overlay->isTouchIDEnabled()) {
            overlay->attemptTouchID();
        }
    } else {
        throw ScriptError("unknown action \"" + action + "\"");
    }
}

void Player::tap(Words& words) {
    application().platform.input.setTapsAvailable(words.nextEither("granted", "refused"));
}

void Player::disable(Words& words) {
    words.skip("tap");
    const auto cause =
        words.nextEither("timeout", "user") ? EventType::tapDisabledByTimeout : EventType::tapDisabledByUserInput;
    application().platform.input.disableTaps(cause);
}

void Player::secure(Words& words) {
    application().platform.input.setSecureInput(words.nextEither("on", "off"));
}

void Player::capsLock(Words& words) {
    application().platform.keyboardLocks.setCapsLockOn(words.nextEither("on", "off"));
}

void Player::permission(Words& words) {
    application().platform.desktop.trusted = words.nextEither("on", "off");
}

void Player::reader(Words& words) {
    application().platform.biometrics.available = words.nextEither("available", "missing");
}

void Player::finger(Words& words) {
    const auto outcome = words.next("an outcome");
    std::optional<BiometricError> error;
    if (outcome == "cancel") {
        error = BiometricError{BiometricError::userCancel, "Cancelled."};
    } else if (outcome == "fail") {
        error = BiometricError{-1, unescaped(words.rest())};
    } else if (outcome != "ok" && outcome != "fail-silently") {
        throw ScriptError("unknown outcome \"" + outcome + "\"");
    }
    if (!application().platform.biometrics.reply(outcome == "ok", error)) {
        throw ScriptError("no fingerprint is being asked for");
    }
}

void Player::closeWindow(Words& words) {
    words.skip("settings");
    application().platform.desktop.closeScene();
    m_quits = application().delegate().applicationShouldTerminateAfterLastWindowClosed();
}

void Player::front(Words& words) {
    application().platform.desktop.active = words.nextEither("ours", "other");
}

void Player::screen(Words& words) {
    const auto first = words.next("x, y, width and height, or none");
    if (first == "none") {
        application().platform.setMainScreen(std::nullopt);
        return;
    }
    const double x = toNumber(first);
    const double y = words.nextNumber("y");
    const double width = words.nextNumber("the width");
    application().platform.setMainScreen(Rect{x, y, width, words.nextNumber("the height")});
}

void Player::appearance(Words& words) {
    application().platform.desktop.appearance =
        words.nextEither("dark", "light") ? Appearance::darkAqua : Appearance::aqua;
}

void Player::sound(Words& words) {
    words.skip("missing");
    application().platform.sounds.names.erase(words.next("the sound's name"));
}

void Player::shortcut(Words& words) {
    words.skip("record");
    application().settingsView().shortcutRecorder().toggle();
}

} // namespace tapalong::testing
