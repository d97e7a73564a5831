#pragma once

#include "ui/controls/SecretText.h"

#include <QColor>
#include <QQuickPaintedItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace tapalong {

/// One line of text shown as bullets. Used instead of the toolkit's field, whose text any program on the
/// accessibility bus can read: an item without a property called "text" and without a text interface holds nothing
/// to be read there. Nothing can be copied out of it.
class SecureField : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString secret READ secret WRITE setSecret NOTIFY secretChanged FINAL)
    Q_PROPERTY(bool empty READ isEmpty NOTIFY secretChanged FINAL)
    Q_PROPERTY(QColor ink MEMBER m_ink NOTIFY appearanceChanged FINAL)
    Q_PROPERTY(QColor selectionColor MEMBER m_selectionColor NOTIFY appearanceChanged FINAL)

public:
    explicit SecureField(QQuickItem* parent = nullptr);

    [[nodiscard]] const QString& secret() const { return m_secret.text(); }
    /// Puts the caret at the end, unless it is the text that is there already.
    void setSecret(const QString& secret);
    [[nodiscard]] bool isEmpty() const { return m_secret.length() == 0; }

    /// Of the caret between seen and not, in ms, for a desktop whose text cursor has that period; 0 for a caret that
    /// does not blink. Never as fast as three flashes a second, which can harm.
    [[nodiscard]] static int blinkInterval(int desktopsPeriod);

    void paint(QPainter* painter) override;
    [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

signals:
    void secretChanged();
    /// The user changed the text.
    void edited();
    void returnPressed();
    void appearanceChanged();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    [[nodiscard]] bool move(const QKeyEvent& event);
    [[nodiscard]] bool erase(const QKeyEvent& event);
    [[nodiscard]] bool insert(const QKeyEvent& event);
    template <class Change> void edit(Change change);
    void showCaret();
    [[nodiscard]] double xOf(int position) const;
    [[nodiscard]] int positionAt(double x) const;
    [[nodiscard]] QRectF caretRect() const;

    SecretText m_secret;
    QColor m_ink;
    QColor m_selectionColor;
    QTimer m_blink;
    bool m_caretVisible = false;
};

} // namespace tapalong
