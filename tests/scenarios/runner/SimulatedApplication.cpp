#include "scenarios/runner/SimulatedApplication.h"

#include "session/RainbowColors.h"
#include "views/SettingsView.h"

#include <utility>

namespace tapalong::testing {

SimulatedApplication::SimulatedApplication(Stored settings, std::uint64_t seed)
    : platform(seed), m_app(platform.platform()) {
    RainbowColors::reset();
    platform.defaults.stored = std::move(settings);
    platform.input.setWindowHandler([this](const InputEvent& event) { handleInWindow(event); });
    platform.desktop.openScene(m_app.body());
    m_app.appDelegate().applicationDidFinishLaunching();
    platform.time.drain();
}

simulated::SimulatedInput::Receiver SimulatedApplication::send(const InputEvent& event) {
    const auto receiver = platform.send(event);
    platform.time.drain();
    return receiver;
}

simulated::SimulatedInput::Receiver SimulatedApplication::movePointer(Point to, EventType type) {
    platform.desktop.mouse = to;
    return send({.type = type});
}

std::shared_ptr<SessionView> SimulatedApplication::sessionView() const {
    const auto window = platform.desktop.shownWindow();
    return window ? std::dynamic_pointer_cast<SessionView>(window->contentView()) : nullptr;
}

std::shared_ptr<ExitOverlay> SimulatedApplication::overlay() const {
    const auto view = sessionView();
    return view ? view->exitOverlay() : nullptr;
}

void SimulatedApplication::handleInWindow(const InputEvent& event) {
    const auto shown = overlay();
    if (!shown || !shown->isPasswordFocused() || event.type != EventType::keyDown) {
        return;
    }
    if (submitsField(event)) {
        shown->attemptPassword();
    } else {
        shown->setPassword(fieldAfter(shown->password(), event));
    }
}

bool submitsField(const InputEvent& event) {
    return event.type == EventType::keyDown && (event.keyCode == 36 || event.keyCode == 76);
}

std::string fieldAfter(std::string field, const InputEvent& event) {
    const auto text = event.text();
    const bool chord = (event.modifierFlags & (Modifier::command | Modifier::control)) != 0;
    const bool typesText = text && !text->empty() && static_cast<unsigned char>(text->front()) >= 0x20;
    return !chord && typesText ? std::move(field) + *text : std::move(field);
}

} // namespace tapalong::testing
