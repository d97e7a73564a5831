#include "random/RandomSession.h"

#include "random/Comparison.h"
#include "views/SettingsView.h"
#include "views/ShortcutRecorder.h"

#include <utility>

namespace tapalong::testing {

namespace {

using Kind = Event::Kind;

constexpr std::uint64_t eventsBetweenWaysOut = 1000;
constexpr std::size_t eventsInAReport = 30;

void lacksFunk(SimulatedApplication& application) {
    application.platform.sounds.names.erase("Funk");
}

} // namespace

RandomSession::RandomSession(std::uint64_t seed, Broken broken) : m_source(seed), m_model(broken) {
    m_application.emplace(SimulatedApplication::Stored{});
    lacksFunk(*m_application);
}

std::optional<std::string> RandomSession::run(std::uint64_t events) {
    for (std::uint64_t i = 0; i < events; ++i) {
        if (auto difference = step(m_source.next(m_model))) {
            return difference;
        }
        if (m_model.session && eventsBetweenCopies != 0 && m_counts.events % eventsBetweenCopies == 0 &&
            !copyCanLeave()) {
            return report("a copy of the session could not be left, as told above");
        }
        if (m_model.session && m_counts.events % eventsBetweenWaysOut == 0) {
            if (auto stuck = leave()) {
                return stuck;
            }
        }
    }
    return std::nullopt;
}

std::optional<std::string> RandomSession::step(const Event& event) {
    m_latest.push_back(describe(event));
    if (m_latest.size() > eventsInAReport) {
        m_latest.pop_front();
    }
    ++m_counts.events;
    ++m_counts.byKind[event.kind];
    const bool wasActive = m_model.session.has_value();
    const bool wasShown = m_model.overlay() != nullptr;
    const auto expected = m_model.apply(event);
    const auto received = apply(event);
    countChanges(wasActive, wasShown);
    if (received != expected) {
        return report("the event went to receiver " + std::to_string(received ? static_cast<int>(*received) : -1) +
                      ", should have gone to " + std::to_string(expected ? static_cast<int>(*expected) : -1));
    }
    const auto difference = differenceBetween(*m_application, m_model);
    m_application->platform.effects.clear();
    return difference ? std::optional(report(*difference)) : std::nullopt;
}

std::optional<RandomSession::Receiver> RandomSession::apply(const Event& event) {
    auto& platform = m_application->platform;
    switch (event.kind) {
    case Kind::advance:
        platform.time.advance(event.seconds);
        return std::nullopt;
    case Kind::key:
    case Kind::modifiers: {
        platform.random.scripted.assign(event.draws.begin(), event.draws.end());
        const auto receiver =
            m_application->send(simulated::keyEvent(event.press.code, event.flags, event.press.text, event.type));
        platform.random.scripted.clear();
        return receiver;
    }
    case Kind::otherInput:
        return m_application->send({.type = event.type});
    case Kind::pointer:
        return m_application->movePointer(event.point);
    case Kind::overlayPassword:
    case Kind::overlayReturn:
    case Kind::overlayCancel:
    case Kind::overlayField:
    case Kind::overlayTouchID:
        applyToOverlay(event);
        break;
    default:
        applyToDesktop(event);
    }
    m_application->platform.time.drain();
    return std::nullopt;
}

void RandomSession::applyToDesktop(const Event& event) {
    auto& platform = m_application->platform;
    switch (event.kind) {
    case Kind::start:
        m_application->manager().startSession();
        break;
    case Kind::otherInFront:
        platform.desktop.active = false;
        break;
    case Kind::setting:
        m_application->settings().sendObjectWillChange();
        platform.defaults.setValue(event.text, event.value);
        break;
    case Kind::badge:
        m_application->settingsView().shortcutRecorder().toggle();
        break;
    case Kind::tapsAvailable:
        platform.input.setTapsAvailable(event.on);
        break;
    case Kind::disableTap:
        platform.input.disableTaps(event.type);
        break;
    case Kind::permission:
        platform.desktop.trusted = event.on;
        break;
    case Kind::askPermission:
        m_application->settingsView().requestAccessibilityPermission();
        break;
    case Kind::appearance:
        platform.desktop.appearance = event.on ? Appearance::darkAqua : Appearance::aqua;
        break;
    case Kind::screen:
        platform.setMainScreen(event.on ? std::optional(Rect{0, 0, 1920, 1080}) : std::nullopt);
        break;
    case Kind::reader:
        platform.biometrics.available = event.on;
        break;
    case Kind::secureInput:
        platform.input.setSecureInput(event.on);
        break;
    case Kind::finger: {
        const std::array<std::optional<BiometricError>, 3> errors{
            BiometricError{BiometricError::userCancel, "Cancelled."}, BiometricError{-1, "Too wet."}, std::nullopt};
        platform.biometrics.reply(event.on, errors.at(static_cast<std::size_t>(event.choice)));
        break;
    }
    default:
        closeSettings();
    }
}

void RandomSession::applyToOverlay(const Event& event) {
    const auto shown = m_application->overlay();
    if (!shown) {
        return; // the comparison tells
    }
    switch (event.kind) {
    case Kind::overlayPassword:
        shown->setPassword(event.text);
        break;
    case Kind::overlayReturn:
        shown->attemptPassword();
        break;
    case Kind::overlayCancel:
        shown->dismiss();
        break;
    case Kind::overlayField:
        shown->setPasswordFocused(true);
        m_application->platform.desktop.active = true;
        break;
    default:
        shown->attemptTouchID();
    }
}

void RandomSession::closeSettings() {
    m_application->platform.desktop.closeScene();
    if (m_application->delegate().applicationShouldTerminateAfterLastWindowClosed()) {
        auto stored = m_application->platform.defaults.stored;
        m_application.emplace(std::move(stored));
        lacksFunk(*m_application);
        ++m_counts.processes;
    }
}

void RandomSession::countChanges(bool wasActive, bool wasShown) {
    m_counts.sessions += !wasActive && m_model.session ? 1U : 0U;
    m_counts.overlays += !wasShown && m_model.overlay() != nullptr ? 1U : 0U;
}

std::string RandomSession::report(const std::string& difference) const {
    std::string text = "after event " + std::to_string(m_counts.events) + ": " + difference + "\nthe latest events:\n";
    for (const auto& event : m_latest) {
        text += "    " + event + '\n';
    }
    return text;
}

} // namespace tapalong::testing
