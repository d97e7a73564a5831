#include "platform/simulated/SimulatedDesktop.h"

#include <array>
#include <cstdio>

namespace tapalong::simulated {

namespace {

std::string describe(const Rect& rect) {
    std::array<char, 128> text{};
    const int length = std::snprintf(text.data(), text.size(), "%g,%g %gx%g", rect.x, rect.y, rect.width, rect.height);
    return {text.data(), static_cast<std::size_t>(length)};
}

const char* yesOrNo(bool value) {
    return value ? "yes" : "no";
}

} // namespace

bool SimulatedDesktop::isProcessTrustedWithPrompt() {
    m_effects.record("accessibility.prompt");
    return trusted;
}

void SimulatedDesktop::activateIgnoringOtherApps() {
    m_effects.record("app.activate");
    active = true;
}

void SimulatedDesktop::setPresentationOptions(PresentationOptions options) {
    m_effects.record("app.presentationOptions " + std::to_string(options));
    presentationOptions = options;
}

std::shared_ptr<Window> SimulatedDesktop::makeWindow(Rect contentRect, StyleMask style, BackingStore backing,
                                                     bool defer, WindowResponder& responder) {
    m_effects.record("window.make " + describe(contentRect) + " style=" + std::to_string(static_cast<unsigned>(style)) +
                     " backing=" + std::to_string(static_cast<unsigned>(backing)) + " defer=" + yesOrNo(defer));
    auto window = std::make_shared<SimulatedWindow>(m_effects, "", &responder);
    m_windows.push_back(window);
    return window;
}

std::vector<std::shared_ptr<Window>> SimulatedDesktop::windows() const {
    std::vector<std::shared_ptr<Window>> living;
    if (m_scene) {
        living.push_back(m_scene);
    }
    for (const auto& weak : m_windows) {
        if (auto window = weak.lock()) {
            living.push_back(std::move(window));
        }
    }
    return living;
}

void SimulatedDesktop::openScene(const Scene& scene) {
    m_scene = std::make_shared<SimulatedWindow>(m_effects, scene.title, nullptr);
    m_scene->setContentView(scene.content);
    m_scene->makeKeyAndOrderFront();
}

void SimulatedDesktop::closeScene() {
    if (m_scene) {
        m_scene->orderOut();
    }
}

bool SimulatedDesktop::isSceneOpen() const {
    return m_scene && m_scene->isVisible();
}

std::shared_ptr<SimulatedWindow> SimulatedDesktop::shownWindow() const {
    for (const auto& weak : m_windows) {
        if (auto window = weak.lock(); window && window->isVisible()) {
            return window;
        }
    }
    return nullptr;
}

SimulatedWindow::~SimulatedWindow() {
    if (m_view && m_visible) {
        m_view->onDisappear();
    }
}

void SimulatedWindow::record(const std::string& effect) {
    m_effects.record((m_title.empty() ? "window." : "window[" + m_title + "].") + effect);
}

void SimulatedWindow::setContentView(std::shared_ptr<HostedView> view) {
    record("contentView");
    m_view = std::move(view);
}

void SimulatedWindow::setLevel(int level) {
    record("level " + std::to_string(level));
}

void SimulatedWindow::setCollectionBehavior(CollectionBehavior behavior) {
    record("collectionBehavior " + std::to_string(behavior));
}

void SimulatedWindow::setOpaqueOnBlack() {
    record("opaqueOnBlack");
}

void SimulatedWindow::setIgnoresMouseEvents(bool ignores) {
    record(std::string("ignoresMouseEvents ") + yesOrNo(ignores));
}

void SimulatedWindow::setAcceptsMouseMovedEvents(bool accepts) {
    record(std::string("acceptsMouseMovedEvents ") + yesOrNo(accepts));
}

void SimulatedWindow::setFrame(Rect frame, bool display) {
    record("frame " + describe(frame) + " display=" + yesOrNo(display));
}

void SimulatedWindow::show() {
    if (!m_visible) {
        m_visible = true;
        if (m_view) {
            m_view->onAppear();
        }
    }
}

void SimulatedWindow::makeKeyAndOrderFront() {
    record("makeKeyAndOrderFront");
    show();
}

void SimulatedWindow::orderFrontRegardless() {
    record("orderFrontRegardless");
}

void SimulatedWindow::orderOut() {
    record("orderOut");
    if (m_visible) {
        m_visible = false;
        if (m_view) {
            m_view->onDisappear();
        }
    }
}

} // namespace tapalong::simulated
