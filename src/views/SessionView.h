#pragma once

#include "auth/ExitOverlay.h"
#include "base/Observable.h"
#include "platform/Geometry.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"
#include "platform/Windows.h"
#include "views/WrappingHStack.h"

#include <functional>
#include <memory>
#include <optional>

namespace tapalong {

class SessionManager;
class SessionSettings;

/// The content of the session window: background, corner glow, typed text, the notice that Lockdown Mode is off or the
/// line that it is wanted and missing, and the exit overlay on top. Held by shared pointer; a new one for each session.
class SessionView final : public HostedView, public ObservableObject, public std::enable_shared_from_this<SessionView> {
public:
    using ScrollToBottom = std::function<void()>;

    /// Where the glow begins and ends, in points from the corner.
    static constexpr double glowRadius = 40;
    static constexpr double glowOpacity = 0.08;

    SessionView(std::shared_ptr<SessionManager> sessionManager, SessionSettings& settings, const Platform& platform);
    ~SessionView() override;

    void onAppear() override;
    void onDisappear() override;

    /// The scroll container came up; `scrollToBottom` brings the end of its content to its bottom edge, at once and
    /// without animation. Called from the main queue after each change of the number of characters.
    void scrollContainerAppeared(ScrollToBottom scrollToBottom);

    /// The overlay on screen, or none. Coming and going are animated; the end of the session simply ends both.
    [[nodiscard]] std::shared_ptr<ExitOverlay> exitOverlay() const { return m_exitOverlay.get(); }
    [[nodiscard]] bool showsLockdownNotice() const;
    /// The line that says that Lockdown Mode, though on, is not in force: the keyboard could not be had, or was lost.
    [[nodiscard]] bool showsLockdownWarning() const;
    /// Whether the wheel moves the text: for a parent who looks back. A child in Lockdown Mode would only lose sight of
    /// what it types.
    [[nodiscard]] bool scrollsBack() const;
    /// The glow's centre in a view of that size, y growing downwards.
    [[nodiscard]] Point glowCentre(double width, double height) const;

    [[nodiscard]] SessionManager& sessionManager() const { return *m_sessionManager; }
    [[nodiscard]] SessionSettings& settings() const { return m_settings; }
    [[nodiscard]] WrappingHStack& text() const { return *m_text; }

private:
    void presentExitOverlay();
    void contentWillChange();
    void contentChanged();

    const std::shared_ptr<SessionManager> m_sessionManager;
    SessionSettings& m_settings;
    const Platform m_platform;
    const std::shared_ptr<WrappingHStack> m_text;
    Published<std::shared_ptr<ExitOverlay>> m_exitOverlay{*this, nullptr};
    ScrollToBottom m_scrollProxy;
    std::optional<ObserverToken> m_overlayObserver;
    Subscription m_contentSubscription;
    std::size_t m_shownCount = 0;
    bool m_changePending = false;
};

} // namespace tapalong
