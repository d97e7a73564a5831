#include "platform/desktop/LogOutRequests.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QSessionManager>

#include <utility>

namespace tapalong {

LogOutRequests::LogOutRequests(std::function<bool()> isRefused) : m_isRefused(std::move(isRefused)) {
    // Which of the two is asked depends on the session manager; only a log-out can be refused by either.
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &LogOutRequests::answer, Qt::DirectConnection);
    QObject::connect(qGuiApp, &QGuiApplication::saveStateRequest, this, &LogOutRequests::answer, Qt::DirectConnection);
    qGuiApp->installEventFilter(this);
}

void LogOutRequests::answer(QSessionManager& manager) const {
    if (m_isRefused()) {
        manager.cancel();
    }
}

bool LogOutRequests::eventFilter(QObject* watched, QEvent* event) {
    if (watched != qGuiApp || event->type() != QEvent::Quit) {
        return QObject::eventFilter(watched, event);
    }
    // The toolkit would ask every window whether it likes to close: none of ours does.
    QCoreApplication::exit(0);
    return true;
}

} // namespace tapalong
