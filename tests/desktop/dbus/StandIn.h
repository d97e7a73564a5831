#pragma once

#include "desktop/dbus/BusServer.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>

#include <functional>
#include <list>
#include <optional>
#include <vector>

namespace tapalong::test {

/// Stands in for a service of the desktop: writes down what it is asked and answers as the test likes. Leaves the bus
/// when it goes, as a service does that dies.
class StandIn final : public QDBusVirtualObject {
public:
    /// The arguments of the answer; none for a refusal.
    using Answer = std::function<std::optional<QVariantList>(const QDBusMessage& call)>;

    StandIn(const BusServer& bus, const QString& service, Answer answer);
    ~StandIn() override;
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;

    /// From now on questions wait until answerAll().
    void keepSilent() { m_isSilent = true; }
    void answerAll();

    [[nodiscard]] const std::vector<QDBusMessage>& calls() const { return m_calls; }
    /// How often that method was called.
    [[nodiscard]] std::ptrdiff_t count(const char* method) const;

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override;
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

private:
    void answer(const QDBusMessage& call);

    QDBusConnection m_connection;
    Answer m_answer;
    bool m_isSilent = false;
    std::vector<QDBusMessage> m_calls;
    std::vector<QDBusMessage> m_unanswered;
};

} // namespace tapalong::test
