#include "views/SessionView.h"

#include "base/WhileAlive.h"
#include "lockdown/Notifications.h"
#include "platform/MainQueue.h"
#include "session/SessionManager.h"
#include "settings/SessionSettings.h"

#include <utility>

namespace tapalong {

SessionView::SessionView(std::shared_ptr<SessionManager> sessionManager, SessionSettings& settings,
                         const Platform& platform)
    : m_sessionManager(std::move(sessionManager)), m_settings(settings), m_platform(platform),
      m_text(std::make_shared<WrappingHStack>(platform)) {}

SessionView::~SessionView() {
    onDisappear();
}

void SessionView::onAppear() {
    if (m_overlayObserver) {
        return;
    }
    m_overlayObserver = m_platform.notificationCenter.addObserver(
        showExitOverlayNotification, whileAlive(weak_from_this(), &SessionView::presentExitOverlay));
    m_shownCount = m_sessionManager->typedContent().size();
    m_contentSubscription = m_sessionManager->objectWillChange([this] { contentWillChange(); });
    m_text->onAppear();
}

void SessionView::onDisappear() {
    if (!m_overlayObserver) {
        return;
    }
    m_platform.notificationCenter.removeObserver(*m_overlayObserver);
    m_overlayObserver.reset();
    m_contentSubscription = {};
    m_text->onDisappear();
}

void SessionView::scrollContainerAppeared(ScrollToBottom scrollToBottom) {
    m_scrollProxy = std::move(scrollToBottom);
}

bool SessionView::showsLockdownNotice() const {
    return !m_settings.kioskMode.get() && m_sessionManager->typedContent().empty();
}

bool SessionView::scrollsBack() const {
    return !m_settings.kioskMode.get();
}

bool SessionView::showsLockdownWarning() const {
    return m_sessionManager->isLockdownMissing();
}

Point SessionView::glowCentre(double width, double height) const {
    const auto corner = m_settings.exitCorner.get();
    const bool left = corner == ScreenCorner::topLeft || corner == ScreenCorner::bottomLeft;
    const bool top = corner == ScreenCorner::topLeft || corner == ScreenCorner::topRight;
    return {left ? 0 : width, top ? 0 : height};
}

void SessionView::presentExitOverlay() {
    if (exitOverlay()) {
        return;
    }
    const auto overlay = std::make_shared<ExitOverlay>(
        whileAlive(weak_from_this(), [](SessionView& self) { self.m_exitOverlay.set(nullptr); }),
        // A fingerprint may be recognised long after: it ends the session that it was asked for, never a later one.
        whileAlive(weak_from_this(), [](SessionView& self) { self.m_sessionManager->endSession(); }), m_settings,
        m_platform);
    m_exitOverlay.set(overlay);
    overlay->onAppear();
}

void SessionView::contentWillChange() {
    if (std::exchange(m_changePending, true)) {
        return;
    }
    m_platform.mainQueue.async(whileAlive(weak_from_this(), &SessionView::contentChanged));
}

void SessionView::contentChanged() {
    m_changePending = false;
    const auto count = m_sessionManager->typedContent().size();
    if (std::exchange(m_shownCount, count) != count && m_scrollProxy) {
        m_scrollProxy();
    }
}

} // namespace tapalong
