#pragma once

#include "platform/Windows.h"
#include "platform/desktop/QtWindow.h"
#include "platform/desktop/WindowTraits.h"

#include <QQmlEngine>

#include <functional>
#include <memory>
#include <vector>

namespace tapalong {

/// Our windows: those that the application makes, and the one that it declares.
class QtWindows final : public Windows {
public:
    explicit QtWindows(WindowTraits traits);
    QtWindows(const QtWindows&) = delete;
    QtWindows& operator=(const QtWindows&) = delete;
    ~QtWindows() override;

    [[nodiscard]] std::shared_ptr<Window> makeWindow(Rect contentRect, StyleMask style, BackingStore backing,
                                                     bool defer, WindowResponder& responder) override;
    [[nodiscard]] std::vector<std::shared_ptr<Window>> windows() const override;

    /// Opens the declared window. When a close request has left no window of ours on the screen and
    /// `quitsWithLastWindow` says so, the event loop ends.
    void openScene(const Scene& scene, std::function<bool()> quitsWithLastWindow);

    /// Takes the declared window away for good, before what it shows goes.
    void removeScene();

    /// Whether the pointer acts on the front window only: another one may lie open on a second screen.
    void setOnlyFrontTakesPointer(bool only) { m_onlyFrontTakesPointer = only; }

    /// The window that should have the keyboard: the visible one of the highest level, the newest among equals. Null
    /// while none is visible.
    [[nodiscard]] QtWindow* frontWindow() const;

private:
    void sceneAskedToClose();
    [[nodiscard]] std::vector<std::shared_ptr<QtWindow>> living() const;

    const WindowTraits m_traits;
    QQmlEngine m_engine; ///< one for all: a session's window then finds its types loaded
    std::vector<std::weak_ptr<QtWindow>> m_windows;
    std::shared_ptr<QtWindow> m_scene;
    std::function<bool()> m_quitsWithLastWindow;
    bool m_onlyFrontTakesPointer = false;
};

} // namespace tapalong
