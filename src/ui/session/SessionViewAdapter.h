#pragma once

#include "settings/SessionSettings.h"
#include "ui/ViewAdapter.h"
#include "ui/ViewFactory.h"
#include "ui/ViewProperty.h"
#include "ui/exit/ExitOverlayAdapter.h"
#include "views/SessionView.h"

#include <QtQml/qqmlregistration.h>

#include <memory>

namespace tapalong {

/// The session window's state and intents, for QML.
class SessionViewAdapter final : public tapalong::ViewAdapter {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")

    VIEW_PROPERTY(bool, isDark, m_environment.isDark())
    VIEW_PROPERTY(QColor, backgroundColor, toQColor(m_view->settings().backgroundColor(), isDark()))
    VIEW_PROPERTY(bool, showsLockdownNotice, m_view->showsLockdownNotice())
    VIEW_PROPERTY(bool, showsLockdownWarning, m_view->showsLockdownWarning())
    VIEW_PROPERTY(bool, scrollsBack, m_view->scrollsBack())
    // The glow's centre, in widths and heights of the window.
    VIEW_PROPERTY(double, glowX, m_view->glowCentre(1, 1).x)
    VIEW_PROPERTY(double, glowY, m_view->glowCentre(1, 1).y)
    VIEW_PROPERTY(bool, overlayPresented, m_view->exitOverlay() != nullptr)
    VIEW_PROPERTY(bool, overlayVisible, m_overlayVisible)
    Q_PROPERTY(tapalong::ExitOverlayAdapter* overlay READ overlay NOTIFY changed FINAL)
    Q_PROPERTY(double glowRadius READ glowRadius CONSTANT FINAL)
    Q_PROPERTY(double glowOpacity READ glowOpacity CONSTANT FINAL)

public:
    SessionViewAdapter(std::shared_ptr<SessionView> view, ViewEnvironment environment, QObject* parent);
    ~SessionViewAdapter() override;

    /// The newest overlay; null until the first one. It stays when it has gone, so that no binding meets a null.
    [[nodiscard]] ExitOverlayAdapter* overlay() const { return m_overlay; }
    /// The overlay has faded out.
    Q_INVOKABLE void overlayGone();

    [[nodiscard]] double glowRadius() const { return SessionView::glowRadius; }
    [[nodiscard]] double glowOpacity() const { return SessionView::glowOpacity; }

    [[nodiscard]] SessionView& view() const { return *m_view; }
    [[nodiscard]] const ViewEnvironment& environment() const { return m_environment; }

signals:
    /// Bring the end of the text to the bottom edge, at once.
    void scrollToBottom();

protected:
    void aboutToEmit() override;

private:
    const std::shared_ptr<SessionView> m_view;
    const ViewEnvironment m_environment;
    std::shared_ptr<ExitOverlay> m_shown; ///< what m_overlay stands for while it is not fading out
    ExitOverlayAdapter* m_overlay = nullptr;
    bool m_overlayVisible = false; ///< on screen, also while it fades out
};

} // namespace tapalong
