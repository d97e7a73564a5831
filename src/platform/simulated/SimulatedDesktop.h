#pragma once

#include "platform/Accessibility.h"
#include "platform/Application.h"
#include "platform/Screens.h"
#include "platform/Windows.h"
#include "platform/simulated/EffectLog.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tapalong::simulated {

class SimulatedWindow;

/// The simulated desktop's windows, screens, appearance and permission.
class SimulatedDesktop final : public Accessibility, public Application, public Screens, public Windows {
public:
    explicit SimulatedDesktop(EffectLog& effects) : m_effects(effects) {}

    [[nodiscard]] bool isProcessTrusted() override { return trusted; }
    bool isProcessTrustedWithPrompt() override;

    [[nodiscard]] bool isActive() const override { return active; }
    void activateIgnoringOtherApps() override;
    void setPresentationOptions(PresentationOptions options) override;
    [[nodiscard]] std::optional<Appearance> effectiveAppearance() const override { return appearance; }

    [[nodiscard]] std::optional<Rect> mainScreenFrame() const override { return mainScreen; }
    [[nodiscard]] Point mouseLocation() const override { return mouse; }

    [[nodiscard]] std::shared_ptr<Window> makeWindow(Rect contentRect, StyleMask style, BackingStore backing,
                                                     bool defer, WindowResponder& responder) override;
    [[nodiscard]] std::vector<std::shared_ptr<Window>> windows() const override;

    /// Opens an application's scene as a window that is shown.
    void openScene(const Scene& scene);
    /// The user closes the scene's window: it hides.
    void closeScene();
    [[nodiscard]] bool isSceneOpen() const;
    /// A window made by makeWindow() that is on screen; null when there is none.
    [[nodiscard]] std::shared_ptr<SimulatedWindow> shownWindow() const;

    // What the test sets and looks at.
    bool trusted = true;
    bool active = true;
    std::optional<Appearance> appearance = Appearance::aqua;
    std::optional<Rect> mainScreen = Rect{0, 0, 1920, 1080};
    Point mouse{960, 540};
    PresentationOptions presentationOptions = Presentation::none;

private:
    EffectLog& m_effects;
    std::shared_ptr<SimulatedWindow> m_scene;
    std::vector<std::weak_ptr<SimulatedWindow>> m_windows;
};

/// A window that records what is done to it.
class SimulatedWindow final : public Window {
public:
    SimulatedWindow(EffectLog& effects, std::string title, WindowResponder* responder)
        : m_effects(effects), m_title(std::move(title)), m_responder(responder) {}
    ~SimulatedWindow() override;

    [[nodiscard]] std::string title() const override { return m_title; }
    void setContentView(std::shared_ptr<HostedView> view) override;
    void setLevel(int level) override;
    void setCollectionBehavior(CollectionBehavior behavior) override;
    void setOpaqueOnBlack() override;
    void setIgnoresMouseEvents(bool ignores) override;
    void setAcceptsMouseMovedEvents(bool accepts) override;
    void setFrame(Rect frame, bool display) override;
    void makeKeyAndOrderFront() override;
    void orderFrontRegardless() override;
    void orderOut() override;

    [[nodiscard]] bool isVisible() const { return m_visible; }
    [[nodiscard]] const std::shared_ptr<HostedView>& contentView() const { return m_view; }
    [[nodiscard]] WindowResponder* responder() const { return m_responder; }

private:
    void record(const std::string& effect);
    void show();

    EffectLog& m_effects;
    std::string m_title;
    WindowResponder* m_responder; ///< none for a scene's window
    std::shared_ptr<HostedView> m_view;
    bool m_visible = false;
};

} // namespace tapalong::simulated
