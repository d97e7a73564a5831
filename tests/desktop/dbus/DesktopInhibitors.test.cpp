#include "platform/linux/dbus/DesktopInhibitors.h"

#include "desktop/dbus/BusServer.h"
#include "desktop/dbus/StandIn.h"
#include "desktop/support/EventLoop.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QVariantMap>
#include <gtest/gtest.h>

#include <optional>

namespace tapalong::test {

namespace {

using namespace std::chrono_literals;

const auto sessionManagerName = QStringLiteral("org.gnome.SessionManager");
const auto portalName = QStringLiteral("org.freedesktop.portal.Desktop");

QDBusConnection noBus() {
    return QDBusConnection(QString());
}

std::optional<QVariantList> cookie(const QDBusMessage&) {
    return QVariantList{QVariant::fromValue(quint32{42})};
}

std::optional<QVariantList> requestPath(const QDBusMessage&) {
    return QVariantList{QVariant::fromValue(QDBusObjectPath(QStringLiteral("/request/7")))};
}

std::optional<QVariantList> refusal(const QDBusMessage&) {
    return std::nullopt;
}

class DesktopInhibitorsTest : public testing::Test {
protected:
    StandIn& startSessionManager(const StandIn::Answer& answer = cookie) {
        m_sessionManager.reset();
        return m_sessionManager.emplace(m_bus, sessionManagerName, answer);
    }
    /// Waits for that many calls and makes sure that no more come.
    static void expectCalls(const StandIn& service, const char* method, std::ptrdiff_t calls) {
        EXPECT_TRUE(spinUntil([&] { return service.count(method) >= calls; }));
        spinFor(50ms);
        EXPECT_EQ(service.count(method), calls) << method;
    }

    BusServer m_bus;
    std::optional<StandIn> m_sessionManager;
    DesktopInhibitors m_inhibitors{m_bus.connect(), noBus, {}};
};

TEST_F(DesktopInhibitorsTest, SessionManagerIsAskedNeitherToLogOutNorToSwitchUser) {
    const auto& manager = startSessionManager();
    m_inhibitors.hold();
    expectCalls(manager, "Inhibit", 1);
    const auto arguments = manager.calls().front().arguments();
    ASSERT_EQ(arguments.size(), 4);
    EXPECT_EQ(arguments[0].toString(), "tapalong");
    EXPECT_EQ(arguments[1], QVariant::fromValue(quint32{0})) << "no window";
    EXPECT_EQ(arguments[2].toString(), "A child is playing");
    EXPECT_EQ(arguments[3], QVariant::fromValue(quint32{1 | 2})) << "log out, switch user";
    m_inhibitors.release();
    expectCalls(manager, "Uninhibit", 1);
    EXPECT_EQ(manager.calls().back().arguments(), QVariantList{QVariant::fromValue(quint32{42})});
}

TEST_F(DesktopInhibitorsTest, RepeatedHoldAndReleaseAskOnce) {
    const auto& manager = startSessionManager();
    for (int i = 0; i < 5; ++i) {
        m_inhibitors.hold();
        spinFor(5ms);
    }
    expectCalls(manager, "Inhibit", 1);
    m_inhibitors.release();
    m_inhibitors.release();
    expectCalls(manager, "Uninhibit", 1);
    m_inhibitors.hold();
    expectCalls(manager, "Inhibit", 2);
}

TEST_F(DesktopInhibitorsTest, AnswerThatComesAfterTheReleaseIsGivenBack) {
    auto& manager = startSessionManager();
    manager.keepSilent();
    m_inhibitors.hold();
    expectCalls(manager, "Inhibit", 1);
    m_inhibitors.release();
    expectCalls(manager, "Uninhibit", 0);
    manager.answerAll();
    expectCalls(manager, "Uninhibit", 1);
}

TEST_F(DesktopInhibitorsTest, ReleaseAndHoldBeforeTheAnswerKeepTheOneRequest) {
    auto& manager = startSessionManager();
    manager.keepSilent();
    m_inhibitors.hold();
    expectCalls(manager, "Inhibit", 1);
    m_inhibitors.release();
    m_inhibitors.hold();
    manager.answerAll();
    expectCalls(manager, "Inhibit", 1);
    expectCalls(manager, "Uninhibit", 0);
}

TEST_F(DesktopInhibitorsTest, ServiceThatDoesNotAnswerHoldsNobodyUp) {
    auto& manager = startSessionManager();
    manager.keepSilent();
    m_inhibitors.hold(); // would wait here for ever: the stand-in answers on this very thread
    m_inhibitors.release();
    m_inhibitors.hold();
    SUCCEED();
}

TEST_F(DesktopInhibitorsTest, RefusalIsTakenUntilTheNextSession) {
    const auto& manager = startSessionManager(refusal);
    m_inhibitors.hold();
    m_inhibitors.hold();
    expectCalls(manager, "Inhibit", 1);
    m_inhibitors.hold();
    m_inhibitors.release();
    expectCalls(manager, "Inhibit", 1);
    expectCalls(manager, "Uninhibit", 0);
    m_inhibitors.hold();
    expectCalls(manager, "Inhibit", 2);
}

TEST_F(DesktopInhibitorsTest, ServiceThatAppearsOrRestartsMeanwhileIsAsked) {
    m_inhibitors.hold();
    spinFor(50ms);
    expectCalls(startSessionManager(), "Inhibit", 1);
    expectCalls(startSessionManager(), "Inhibit", 1);
    m_inhibitors.release();
    expectCalls(*m_sessionManager, "Uninhibit", 1);
}

TEST_F(DesktopInhibitorsTest, ServiceThatDiesWithoutAnAnswerIsAskedWhenItIsBack) {
    startSessionManager().keepSilent();
    m_inhibitors.hold();
    expectCalls(*m_sessionManager, "Inhibit", 1);
    expectCalls(startSessionManager(), "Inhibit", 1);
}

TEST_F(DesktopInhibitorsTest, ServiceThatRestartsAfterTheSessionIsLeftAlone) {
    startSessionManager();
    m_inhibitors.hold();
    expectCalls(*m_sessionManager, "Inhibit", 1);
    m_inhibitors.release();
    expectCalls(*m_sessionManager, "Uninhibit", 1);
    const auto& second = startSessionManager();
    spinFor(50ms);
    EXPECT_TRUE(second.calls().empty());
}

TEST_F(DesktopInhibitorsTest, PortalIsAskedTheSameAndItsRequestClosed) {
    const StandIn portal(m_bus, portalName, requestPath);
    m_inhibitors.hold();
    expectCalls(portal, "Inhibit", 1);
    const auto arguments = portal.calls().front().arguments();
    ASSERT_EQ(arguments.size(), 3);
    EXPECT_EQ(arguments[0].toString(), "") << "no window";
    EXPECT_EQ(arguments[1], QVariant::fromValue(quint32{1 | 2}));
    EXPECT_EQ(qdbus_cast<QVariantMap>(arguments[2]).value(QStringLiteral("reason")).toString(), "A child is playing");
    m_inhibitors.release();
    expectCalls(portal, "Close", 1);
    EXPECT_EQ(portal.calls().back().path(), "/request/7");
}

TEST_F(DesktopInhibitorsTest, WhatIsHeldGoesWithItsHolder) {
    const auto& manager = startSessionManager();
    {
        DesktopInhibitors shortLived(m_bus.connect(), noBus, {});
        shortLived.hold();
        expectCalls(manager, "Inhibit", 1);
    }
    expectCalls(manager, "Uninhibit", 1);
}

TEST(DesktopInhibitorsAlone, WithoutAnyBusNothingHappens) {
    DesktopInhibitors inhibitors(noBus(), noBus, {});
    inhibitors.hold();
    spinFor(50ms);
    inhibitors.release();
}

} // namespace

} // namespace tapalong::test
