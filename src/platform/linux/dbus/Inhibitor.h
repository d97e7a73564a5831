#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <optional>

class QDBusPendingCallWatcher;

namespace tapalong {

/// One wish that a service of the desktop leaves something undone. Never waits for the service. An answer that comes
/// when the wish is gone is given back at once; a service that appears or restarts is asked again; one that refused is
/// asked again with the next wish. The service itself lets go of a process that is gone.
class Inhibitor final : public QObject {
public:
    struct Request {
        QDBusMessage inhibit; ///< answered by a handle
        /// What gives the handle back to the service; none where that is dropping it.
        std::function<std::optional<QDBusMessage>(const QVariant& handle)> giveBack;
        int answerLimit; ///< milliseconds; an answer that comes later is lost, so it must give itself back
    };
    using Answered = std::function<void(bool granted)>;

    static constexpr int noLimit = 0x7fffffff;
    static constexpr int usualLimit = 25000;

    Inhibitor(const QDBusConnection& bus, Request request, Answered answered = {});
    Inhibitor(const Inhibitor&) = delete;
    Inhibitor& operator=(const Inhibitor&) = delete;
    ~Inhibitor() override;

    void hold();
    void release();

private:
    enum class State : std::uint8_t { idle, asking, held };

    void ask();
    void take(QDBusPendingCallWatcher& call);
    void letGo();
    void ownerChanged(const QString& newOwner);

    QDBusConnection m_bus;
    const Request m_request;
    const Answered m_answered;
    QDBusServiceWatcher m_service;
    State m_state = State::idle;
    bool m_isWanted = false;
    QVariant m_handle;
};

} // namespace tapalong
