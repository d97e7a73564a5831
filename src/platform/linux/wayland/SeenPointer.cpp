#include "platform/linux/wayland/SeenPointer.h"

#include <QEnterEvent>
#include <QGuiApplication>
#include <QMouseEvent>

namespace tapalong {

SeenPointer::SeenPointer() {
    qGuiApp->installEventFilter(this);
}

bool SeenPointer::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWindowType()) {
        return false;
    }
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::Enter:
        m_position = static_cast<const QSinglePointEvent*>(event)->globalPosition();
        break;
    case QEvent::Leave:
        m_position.reset();
        break;
    default:
        break;
    }
    return false;
}

} // namespace tapalong
