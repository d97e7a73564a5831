#pragma once

#include "ui/session/SessionViewAdapter.h"
#include "ui/text/TypedTextItem.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace tapalong {

/// The typed text of a session: content, size and cursor all come from the view.
class TypedText : public tapalong::TypedTextItem { // in full, for the type registration
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(tapalong::SessionViewAdapter* view READ view WRITE setView NOTIFY viewChanged FINAL)

public:
    explicit TypedText(QQuickItem* parent = nullptr);
    ~TypedText() override;

    [[nodiscard]] SessionViewAdapter* view() const { return m_view; }
    void setView(SessionViewAdapter* view);

signals:
    void viewChanged();

private:
    void follow();
    void blink();

    QPointer<SessionViewAdapter> m_view;
    Subscription m_blinks;
    bool m_blinkPending = false;
};

} // namespace tapalong
