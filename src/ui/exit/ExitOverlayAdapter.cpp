#include "ui/exit/ExitOverlayAdapter.h"

#include <utility>

namespace tapalong {

ExitOverlayAdapter::ExitOverlayAdapter(std::shared_ptr<ExitOverlay> overlay, FieldFocused fieldFocused, QObject* parent)
    : m_overlay(std::move(overlay)), m_fieldFocused(std::move(fieldFocused)) {
    setParent(parent);
    follow(*m_overlay);
}

ExitOverlayAdapter::~ExitOverlayAdapter() {
    endFieldFocus();
}

QString ExitOverlayAdapter::password() const {
    return QString::fromStdString(m_overlay->password());
}

void ExitOverlayAdapter::setPassword(const QString& password) {
    if (!m_frozen) {
        m_overlay->setPassword(password.toStdString());
    }
}

void ExitOverlayAdapter::passwordFocusChanged(QObject* field, bool focused) {
    if (!focused) {
        endFieldFocus();
    } else if (!m_frozen && !std::exchange(m_fieldHasFocus, true) && m_fieldFocused) {
        m_fieldFocused(field);
    }
    if (!m_frozen && m_overlay->isPasswordFocused() != focused) {
        m_overlay->setPasswordFocused(focused);
    }
}

void ExitOverlayAdapter::attemptTouchID() {
    if (!m_frozen && touchIDEnabled()) {
        m_overlay->attemptTouchID();
    }
}

void ExitOverlayAdapter::attemptPassword() {
    if (!m_frozen) {
        m_overlay->attemptPassword();
    }
}

void ExitOverlayAdapter::dismiss() {
    if (!m_frozen) {
        freeze();
        m_overlay->dismiss();
    }
}

void ExitOverlayAdapter::freeze() {
    m_frozen = true;
    unfollowAll();
    endFieldFocus();
}

void ExitOverlayAdapter::endFieldFocus() {
    if (std::exchange(m_fieldHasFocus, false) && m_fieldFocused) {
        m_fieldFocused(nullptr);
    }
}

} // namespace tapalong
