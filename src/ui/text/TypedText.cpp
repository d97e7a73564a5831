#include "ui/text/TypedText.h"

#include "session/SessionManager.h"
#include "ui/Conversion.h"

#include <QMetaObject>

#include <algorithm>
#include <utility>

namespace tapalong {

TypedText::TypedText(QQuickItem* parent) : TypedTextItem(parent) {}

TypedText::~TypedText() = default;

void TypedText::setView(SessionViewAdapter* view) {
    if (m_view == view) {
        return;
    }
    if (m_view) {
        m_view->disconnect(this);
    }
    m_view = view;
    m_blinks = {};
    if (m_view) {
        connect(m_view, &SessionViewAdapter::changed, this, &TypedText::follow);
        connect(m_view, &QObject::destroyed, this, [this] { setCharacters(nullptr); });
        m_blinks = m_view->view().text().objectWillChange([this] { blink(); });
        setCursorVisible(m_view->view().text().cursorVisible());
        follow();
    } else {
        setCharacters(nullptr);
    }
    emit viewChanged();
}

void TypedText::follow() {
    const SessionSettings& settings = m_view->view().settings();
    setPrimaryColor(toQColor(NamedColor::primary, m_view->isDark()));
    // The store takes any number that somebody writes into its file; a face has a size.
    setFontSize(std::max(settings.fontSize.get(), 1.0));
    setShowCursor(settings.showCursor.get());
    setCharacters(&m_view->view().sessionManager().typedContent());
}

/// The core announces before it changes.
void TypedText::blink() {
    if (std::exchange(m_blinkPending, true)) {
        return;
    }
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_blinkPending = false;
            if (m_view) {
                setCursorVisible(m_view->view().text().cursorVisible());
            }
        },
        Qt::QueuedConnection);
}

} // namespace tapalong
