#pragma once

#include "platform/Windows.h"
#include "platform/desktop/HostQuickView.h"
#include "platform/desktop/WindowTraits.h"

#include <memory>

class QScreen;

namespace tapalong {

/// A window of the toolkit that shows one hosted view.
class QtWindow final : public Window {
public:
    QtWindow(QQmlEngine& engine, const WindowTraits& traits, HostQuickView::Callbacks callbacks);
    QtWindow(const QtWindow&) = delete;
    QtWindow& operator=(const QtWindow&) = delete;
    ~QtWindow() override;

    [[nodiscard]] std::string title() const override;
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

    [[nodiscard]] bool isVisible() const { return m_view->isVisible(); }
    [[nodiscard]] int level() const { return m_level; }
    [[nodiscard]] HostQuickView& quickView() const { return *m_view; }

    /// Asks for the keyboard without showing or raising anything.
    void takeKeyboard();

private:
    void show();
    void cover(QScreen& screen);

    const WindowTraits m_traits;
    HostQuickView* const m_view; ///< deleted on a later turn: a window may go from inside one of its own events
    std::shared_ptr<HostedView> m_content;
    int m_level = 0;
    bool m_coversMainScreen = false;
};

} // namespace tapalong
