#include "desktop/dbus/StandIn.h"

#include "base/Fatal.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace tapalong::test {

StandIn::StandIn(const BusServer& bus, const QString& service, Answer answer)
    : m_connection(bus.connect()), m_answer(std::move(answer)) {
    verify(m_connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath) &&
               m_connection.registerService(service),
           "a stand-in can be registered on the test's bus");
}

StandIn::~StandIn() {
    // A call that is on its way from the bus's thread must not outlast the connection that it belongs to.
    m_connection.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    QCoreApplication::removePostedEvents(this);
    QDBusConnection::disconnectFromBus(m_connection.name());
}

void StandIn::answerAll() {
    m_isSilent = false;
    for (const auto& call : std::exchange(m_unanswered, {})) {
        answer(call);
    }
}

std::ptrdiff_t StandIn::count(const char* method) const {
    return std::count_if(m_calls.begin(), m_calls.end(),
                         [method](const QDBusMessage& call) { return call.member() == QLatin1String(method); });
}

bool StandIn::handleMessage(const QDBusMessage& call, const QDBusConnection&) {
    m_calls.push_back(call);
    if (m_isSilent) {
        m_unanswered.push_back(call);
    } else {
        answer(call);
    }
    return true;
}

void StandIn::answer(const QDBusMessage& call) {
    const auto arguments = m_answer(call);
    m_connection.send(arguments ? call.createReply(*arguments)
                                : call.createErrorReply(QDBusError::AccessDenied, QStringLiteral("refused")));
}

} // namespace tapalong::test
