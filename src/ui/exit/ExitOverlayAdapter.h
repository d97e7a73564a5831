#pragma once

#include "auth/ExitOverlay.h"
#include "ui/ViewAdapter.h"
#include "ui/ViewProperty.h"

#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>

namespace tapalong {

/// The exit overlay's state and intents, for QML. Once frozen it keeps its last look and does nothing any more.
class ExitOverlayAdapter final : public tapalong::ViewAdapter {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the overlay")

    VIEW_PROPERTY(bool, offersTouchID, m_overlay->offersTouchID())
    VIEW_PROPERTY(bool, touchIDEnabled, m_overlay->isTouchIDEnabled())
    VIEW_PROPERTY(bool, unlockEnabled, m_overlay->isUnlockEnabled())
    VIEW_PROPERTY(bool, capsLockOn, m_overlay->isCapsLockOn())
    VIEW_PROPERTY(QString, errorMessage, m_overlay->errorMessage())
    VIEW_PROPERTY(bool, passwordFocused, m_overlay->isPasswordFocused())
    Q_PROPERTY(QString password READ password WRITE setPassword NOTIFY changed FINAL)

public:
    using FieldFocused = std::function<void(QObject* fieldOrNull)>;

    ExitOverlayAdapter(std::shared_ptr<ExitOverlay> overlay, FieldFocused fieldFocused, QObject* parent);
    ~ExitOverlayAdapter() override;

    [[nodiscard]] QString password() const;
    void setPassword(const QString& password);

    /// The keyboard focus came to the password field or left it.
    Q_INVOKABLE void passwordFocusChanged(QObject* field, bool focused);
    Q_INVOKABLE void attemptTouchID();
    Q_INVOKABLE void attemptPassword();
    Q_INVOKABLE void dismiss();

    void freeze();

private:
    void endFieldFocus();

    const std::shared_ptr<ExitOverlay> m_overlay;
    const FieldFocused m_fieldFocused;
    bool m_fieldHasFocus = false;
    bool m_frozen = false;
};

} // namespace tapalong
