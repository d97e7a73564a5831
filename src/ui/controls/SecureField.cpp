#include "ui/controls/SecureField.h"

#include <QClipboard>
#include <QCursor>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleHints>

#include <algorithm>
#include <cmath>

namespace tapalong {

namespace {

constexpr double pitch = 9;          // points from one bullet to the next
constexpr double bulletDiameter = 6; // points
constexpr double caretWidth = 1.5;   // points
constexpr double caretHeight = 18;   // points

using Selecting = SecretText::Selecting;

Selecting selecting(const QInputEvent& event) {
    return event.modifiers().testFlag(Qt::ShiftModifier) ? Selecting::yes : Selecting::no;
}

bool isAny(const QKeyEvent& event, std::initializer_list<QKeySequence::StandardKey> keys) {
    return std::any_of(keys.begin(), keys.end(), [&event](auto key) { return event.matches(key); });
}

bool isPlain(const QKeyEvent& event) {
    return !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

} // namespace

SecureField::SecureField(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setFlag(ItemAcceptsInputMethod);
    setAcceptedMouseButtons(Qt::LeftButton);
    setActiveFocusOnTab(true);
    setCursor(Qt::IBeamCursor);
    connect(this, &SecureField::appearanceChanged, this, [this] { update(); });
    connect(&m_blink, &QTimer::timeout, this, [this] {
        m_caretVisible = !m_caretVisible;
        update();
    });
}

void SecureField::setSecret(const QString& secret) {
    if (secret != m_secret.text()) {
        m_secret.setText(secret);
        showCaret();
        emit secretChanged();
    }
}

template <class Change> void SecureField::edit(Change change) {
    const QString before = m_secret.text();
    change(m_secret);
    showCaret();
    if (before != m_secret.text()) {
        emit secretChanged();
        emit edited();
    }
}

bool SecureField::event(QEvent* event) {
    // Else a keyboard shortcut of the window would come before the editing keys.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (isAny(key, {QKeySequence::SelectAll, QKeySequence::Paste}) || (isPlain(key) && !key.text().isEmpty())) {
            event->accept();
            return true;
        }
    }
    return QQuickPaintedItem::event(event);
}

void SecureField::keyPressEvent(QKeyEvent* event) {
    if (isPlain(*event) && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        emit returnPressed();
        return;
    }
    event->setAccepted(move(*event) || erase(*event) || insert(*event));
}

bool SecureField::move(const QKeyEvent& event) {
    const bool startOfLine = isAny(event, {QKeySequence::MoveToStartOfLine, QKeySequence::SelectStartOfLine,
                                           QKeySequence::MoveToPreviousWord, QKeySequence::SelectPreviousWord});
    const bool endOfLine = isAny(event, {QKeySequence::MoveToEndOfLine, QKeySequence::SelectEndOfLine,
                                         QKeySequence::MoveToNextWord, QKeySequence::SelectNextWord});
    if (startOfLine) {
        m_secret.moveTo(0, selecting(event));
    } else if (endOfLine) {
        m_secret.moveTo(m_secret.length(), selecting(event));
    } else if (isAny(event, {QKeySequence::MoveToPreviousChar, QKeySequence::SelectPreviousChar})) {
        m_secret.moveLeft(selecting(event));
    } else if (isAny(event, {QKeySequence::MoveToNextChar, QKeySequence::SelectNextChar})) {
        m_secret.moveRight(selecting(event));
    } else if (event.matches(QKeySequence::SelectAll)) {
        m_secret.selectAll();
    } else {
        return false;
    }
    showCaret();
    return true;
}

bool SecureField::erase(const QKeyEvent& event) {
    if (event.matches(QKeySequence::DeleteStartOfWord)) {
        edit([](SecretText& secret) { secret.deleteToStart(); });
    } else if (event.key() == Qt::Key_Backspace && isPlain(event)) {
        edit([](SecretText& secret) { secret.backspace(); });
    } else if (event.key() == Qt::Key_Delete && isPlain(event)) {
        edit([](SecretText& secret) { secret.deleteForward(); });
    } else {
        return false;
    }
    return true;
}

bool SecureField::insert(const QKeyEvent& event) {
    if (event.matches(QKeySequence::Paste)) {
        edit([](SecretText& secret) { secret.insert(QGuiApplication::clipboard()->text()); });
        return true;
    }
    const QString text = event.text();
    // A chord's text is a control character; the third level of a keyboard comes as Control with Alt on some.
    const bool types =
        std::any_of(text.begin(), text.end(), [](QChar c) { return c.category() != QChar::Other_Control; });
    const bool chord = event.modifiers().testFlag(Qt::MetaModifier) ||
                       event.modifiers().testFlag(Qt::ControlModifier) != event.modifiers().testFlag(Qt::AltModifier);
    if (!types || chord) {
        return false;
    }
    edit([&text](SecretText& secret) { secret.insert(text); });
    return true;
}

void SecureField::inputMethodEvent(QInputMethodEvent* event) {
    if (!event->commitString().isEmpty()) {
        edit([event](SecretText& secret) { secret.insert(event->commitString()); });
    }
    event->accept();
}

QVariant SecureField::inputMethodQuery(Qt::InputMethodQuery query) const {
    switch (query) {
    case Qt::ImEnabled:
        return isEnabled();
    case Qt::ImHints:
        return int(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    case Qt::ImCursorRectangle:
        return caretRect();
    default:
        return {}; // no surrounding text for anybody
    }
}

void SecureField::mousePressEvent(QMouseEvent* event) {
    forceActiveFocus(Qt::MouseFocusReason);
    m_secret.moveTo(positionAt(event->position().x()), selecting(*event));
    showCaret();
}

void SecureField::mouseMoveEvent(QMouseEvent* event) {
    m_secret.moveTo(positionAt(event->position().x()), Selecting::yes);
    showCaret();
}

void SecureField::mouseDoubleClickEvent(QMouseEvent*) {
    m_secret.selectAll();
    showCaret();
}

void SecureField::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemActiveFocusHasChanged) {
        showCaret();
    }
    QQuickPaintedItem::itemChange(change, data);
}

int SecureField::blinkInterval(int desktopsPeriod) {
    constexpr int shortestPeriod = 400;
    return desktopsPeriod > 1 ? std::max(desktopsPeriod, shortestPeriod) / 2 : 0;
}

void SecureField::showCaret() {
    m_caretVisible = hasActiveFocus();
    const int interval = blinkInterval(QGuiApplication::styleHints()->cursorFlashTime());
    if (m_caretVisible && interval > 0) {
        m_blink.start(interval);
    } else {
        m_blink.stop();
    }
    updateInputMethod(Qt::ImCursorRectangle);
    update();
}

double SecureField::xOf(int position) const {
    // A text that is too long slides left until the caret is in view.
    const double hidden = std::max(0.0, m_secret.caret() * pitch + caretWidth - width());
    return position * pitch - hidden;
}

int SecureField::positionAt(double x) const {
    return static_cast<int>(std::lround((x - xOf(0)) / pitch));
}

QRectF SecureField::caretRect() const {
    return {xOf(m_secret.caret()), (height() - caretHeight) / 2, caretWidth, caretHeight};
}

void SecureField::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setClipRect(boundingRect());
    const double start = xOf(m_secret.selectionStart());
    painter->fillRect(QRectF(start, caretRect().top(), xOf(m_secret.selectionEnd()) - start, caretHeight),
                      m_selectionColor);
    painter->setBrush(m_ink);
    for (int i = 0; i < m_secret.length(); ++i) {
        painter->drawEllipse(QRectF(xOf(i) + (pitch - bulletDiameter) / 2, (height() - bulletDiameter) / 2,
                                    bulletDiameter, bulletDiameter));
    }
    if (m_caretVisible) {
        painter->fillRect(caretRect(), m_ink);
    }
}

} // namespace tapalong
