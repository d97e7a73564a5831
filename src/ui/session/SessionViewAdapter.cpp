#include "ui/session/SessionViewAdapter.h"

#include "session/SessionManager.h"

#include <QPointer>

#include <utility>

namespace tapalong {

SessionViewAdapter::SessionViewAdapter(std::shared_ptr<SessionView> view, ViewEnvironment environment, QObject* parent)
    : m_view(std::move(view)), m_environment(std::move(environment)) {
    setParent(parent);
    follow(*m_view);
    follow(m_view->settings());
    follow(m_view->sessionManager());
    if (m_environment.appearance != nullptr) {
        follow(*m_environment.appearance);
    }
    m_view->scrollContainerAppeared([self = QPointer(this)] {
        if (self) {
            self->flush();
            emit self->scrollToBottom();
        }
    });
    aboutToEmit();
}

SessionViewAdapter::~SessionViewAdapter() = default;

void SessionViewAdapter::overlayGone() {
    if (!m_shown) {
        m_overlayVisible = false;
        emit changed();
    }
}

void SessionViewAdapter::aboutToEmit() {
    const auto present = m_view->exitOverlay();
    if (present == m_shown) {
        return;
    }
    if (m_shown) {
        m_overlay->freeze();
    }
    if (present) {
        if (m_overlay != nullptr) {
            m_overlay->deleteLater();
        }
        m_overlayVisible = true;
        m_overlay = new ExitOverlayAdapter(present, m_environment.secureFieldFocused, this);
    }
    m_shown = present;
}

} // namespace tapalong
