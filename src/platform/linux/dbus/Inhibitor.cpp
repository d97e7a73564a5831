#include "platform/linux/dbus/Inhibitor.h"

#include <QDBusPendingCallWatcher>

#include <utility>

namespace tapalong {

Inhibitor::Inhibitor(const QDBusConnection& bus, Request request, Answered answered)
    : m_bus(bus), m_request(std::move(request)), m_answered(std::move(answered)),
      m_service(m_request.inhibit.service(), bus, QDBusServiceWatcher::WatchForOwnerChange) {
    QObject::connect(&m_service, &QDBusServiceWatcher::serviceOwnerChanged, this,
                     [this](const QString&, const QString&, const QString& newOwner) { ownerChanged(newOwner); });
}

Inhibitor::~Inhibitor() {
    release();
}

void Inhibitor::hold() {
    if (!std::exchange(m_isWanted, true) && m_state == State::idle) {
        ask();
    }
}

void Inhibitor::release() {
    m_isWanted = false;
    if (m_state == State::held) {
        letGo();
    }
}

void Inhibitor::ask() {
    m_state = State::asking;
    auto* const call = new QDBusPendingCallWatcher(m_bus.asyncCall(m_request.inhibit, m_request.answerLimit), this);
    QObject::connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] { take(*call); });
}

void Inhibitor::take(QDBusPendingCallWatcher& call) {
    call.deleteLater();
    const auto reply = call.reply();
    const bool granted = reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty();
    m_state = granted ? State::held : State::idle;
    if (granted) {
        m_handle = reply.arguments().constFirst();
    }
    if (m_answered) {
        m_answered(granted);
    }
    if (!m_isWanted && m_state == State::held) {
        letGo();
    }
}

void Inhibitor::letGo() {
    if (const auto message = m_request.giveBack(m_handle)) {
        m_bus.send(*message);
    }
    m_handle.clear();
    m_state = State::idle;
}

void Inhibitor::ownerChanged(const QString& newOwner) {
    // A question that is under way is answered all the same, by an error if its service is gone.
    if (m_state == State::asking) {
        return;
    }
    m_handle.clear();
    m_state = State::idle;
    if (m_isWanted && !newOwner.isEmpty()) {
        ask();
    }
}

} // namespace tapalong
