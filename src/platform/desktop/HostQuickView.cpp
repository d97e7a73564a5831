#include "platform/desktop/HostQuickView.h"

#include <QEvent>
#include <QKeyEvent>

#include <utility>

namespace tapalong {

HostQuickView::HostQuickView(QQmlEngine& engine, Callbacks callbacks)
    : QQuickView(&engine, nullptr), m_callbacks(std::move(callbacks)) {
    setResizeMode(QQuickView::SizeRootObjectToView);
}

bool HostQuickView::event(QEvent* event) {
    if (event->isPointerEvent() && m_callbacks.isBehind && m_callbacks.isBehind()) {
        return true;
    }
    if (event->type() == QEvent::MouseButtonPress && !isActive()) {
        if (const auto pressed = m_callbacks.pressedWhileInactive) {
            pressed();
        }
    }
    if (event->type() != QEvent::Close) {
        return QQuickView::event(event);
    }
    event->ignore();
    if (const auto closeRequested = m_callbacks.closeRequested) {
        closeRequested();
    }
    return true;
}

void HostQuickView::keyPressEvent(QKeyEvent* event) {
    QQuickView::keyPressEvent(event);
    report(*event);
}

void HostQuickView::keyReleaseEvent(QKeyEvent* event) {
    QQuickView::keyReleaseEvent(event);
    report(*event);
}

void HostQuickView::report(const QKeyEvent& event) {
    // A copy, here and above: the call may detach us.
    if (const auto unhandledKey = m_callbacks.unhandledKey; unhandledKey && !event.isAccepted()) {
        unhandledKey(event);
    }
}

} // namespace tapalong
