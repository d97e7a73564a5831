#include "platform/linux/dbus/PowerKeyInhibitors.h"

#include "desktop/dbus/BusServer.h"
#include "desktop/dbus/StandIn.h"
#include "desktop/support/EventLoop.h"

#include <QDBusUnixFileDescriptor>
#include <gtest/gtest.h>

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace tapalong::test {

namespace {

using namespace std::chrono_literals;

using Keys = std::set<std::string>;
using Answers = std::map<PowerKey, std::vector<bool>>;

const Keys everyKey{"handle-power-key", "handle-suspend-key", "handle-hibernate-key", "handle-reboot-key",
                    "handle-lid-switch"};

/// Stands in for the login service: an inhibitor is the far end of a pipe, held until that end is closed everywhere.
class LoginService {
public:
    explicit LoginService(const BusServer& bus, Keys refused = {})
        : m_refused(std::move(refused)), m_service(bus, QStringLiteral("org.freedesktop.login1"),
                                                   [this](const QDBusMessage& call) { return answer(call); }) {}
    LoginService(const LoginService&) = delete;
    LoginService& operator=(const LoginService&) = delete;
    ~LoginService() {
        for (const auto& [what, fd] : m_watched) {
            close(fd);
        }
    }

    [[nodiscard]] StandIn& service() { return m_service; }
    [[nodiscard]] Keys held() const {
        Keys keys;
        for (const auto& [what, fd] : m_watched) {
            pollfd state{fd, 0, 0};
            poll(&state, 1, 0);
            if ((state.revents & POLLHUP) == 0) {
                keys.insert(what);
            }
        }
        return keys;
    }

private:
    std::optional<QVariantList> answer(const QDBusMessage& call) {
        const auto what = call.arguments().value(0).toString().toStdString();
        if (call.member() != QLatin1String("Inhibit") || m_refused.contains(what)) {
            return std::nullopt;
        }
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        m_watched.emplace(what, ends[0]);
        const QDBusUnixFileDescriptor handle(ends[1]); // takes a copy
        close(ends[1]);
        return QVariantList{QVariant::fromValue(handle)};
    }

    Keys m_refused;
    std::multimap<std::string, int> m_watched;
    StandIn m_service;
};

class PowerKeyInhibitorsTest : public testing::Test {
protected:
    void expectHeld(const LoginService& login, const Keys& keys) {
        EXPECT_TRUE(spinUntil([&] { return login.held() == keys; }));
        spinFor(50ms);
        EXPECT_EQ(login.held(), keys);
    }
    /// The same about each key that is told of.
    void expectAnswers(const std::vector<bool>& answers) { expectAnswers(answers, answers, answers); }
    void expectAnswers(const std::vector<bool>& power, const std::vector<bool>& sleep,
                       const std::vector<bool>& hibernate) {
        const Answers expected{{PowerKey::power, power}, {PowerKey::sleep, sleep}, {PowerKey::hibernate, hibernate}};
        EXPECT_TRUE(spinUntil([&] { return m_answers == expected; }));
        spinFor(50ms);
        EXPECT_EQ(m_answers, expected);
    }

    BusServer m_bus;
    Answers m_answers;
    PowerKeyInhibitors m_keys{[this] { return m_bus.connect(); },
                              [this](PowerKey key, bool granted) { m_answers[key].push_back(granted); }};
};

TEST_F(PowerKeyInhibitorsTest, EveryKeyIsHeldUntilTheRelease) {
    LoginService login(m_bus);
    m_keys.hold();
    expectHeld(login, everyKey);
    for (const auto& call : login.service().calls()) {
        EXPECT_EQ(call.arguments().value(3).toString(), "block");
    }
    m_keys.hold();
    m_keys.release();
    expectHeld(login, {});
    EXPECT_EQ(login.service().count("Inhibit"), 5);
    expectAnswers({true});
    m_keys.hold();
    expectHeld(login, everyKey);
}

TEST_F(PowerKeyInhibitorsTest, OneKeyThatTheServiceDoesNotKnowLosesNoOther) {
    const LoginService login(m_bus, {"handle-reboot-key"});
    m_keys.hold();
    auto others = everyKey;
    others.erase("handle-reboot-key");
    expectHeld(login, others);
    expectAnswers({true});
}

TEST_F(PowerKeyInhibitorsTest, RefusedPowerKeyIsReported) {
    LoginService login(m_bus, everyKey);
    m_keys.hold();
    expectAnswers({false});
    EXPECT_EQ(login.held(), Keys());
    m_keys.release();
    m_keys.hold();
    expectAnswers({false, false});
}

TEST_F(PowerKeyInhibitorsTest, EachRefusedKeyIsReportedForItself) {
    const LoginService login(m_bus, {"handle-suspend-key"});
    m_keys.probe();
    expectAnswers({true}, {false}, {true});
    m_keys.hold();
    expectAnswers({true, true}, {false, false}, {true, true});
}

TEST_F(PowerKeyInhibitorsTest, RefusedHibernateKeyIsNotTheSleepKey) {
    const LoginService login(m_bus, {"handle-hibernate-key"});
    m_keys.probe();
    expectAnswers({true}, {true}, {false});
    expectHeld(login, {});
}

TEST_F(PowerKeyInhibitorsTest, ProbeHoldsTheKeysForAMomentOnly) {
    LoginService login(m_bus);
    m_keys.probe();
    m_keys.probe();
    expectAnswers({true});
    expectHeld(login, {});
    EXPECT_EQ(login.service().count("Inhibit"), 3);
    m_keys.probe();
    expectAnswers({true, true});
    expectHeld(login, {});
}

TEST_F(PowerKeyInhibitorsTest, ProbeDuringASessionChangesNothing) {
    LoginService login(m_bus);
    m_keys.hold();
    expectHeld(login, everyKey);
    m_keys.probe();
    expectHeld(login, everyKey);
    m_keys.release();
    expectHeld(login, {});
}

TEST_F(PowerKeyInhibitorsTest, ProbeThatIsUnderWayWhenTheSessionBeginsKeepsTheKey) {
    LoginService login(m_bus);
    login.service().keepSilent();
    m_keys.probe();
    EXPECT_TRUE(spinUntil([&] { return login.service().count("Inhibit") == 3; }));
    m_keys.hold();
    EXPECT_TRUE(spinUntil([&] { return login.service().count("Inhibit") == 5; }));
    login.service().answerAll();
    expectHeld(login, everyKey);
    EXPECT_EQ(login.service().count("Inhibit"), 5);
}

TEST_F(PowerKeyInhibitorsTest, AnswerThatComesAfterTheReleaseIsClosed) {
    LoginService login(m_bus);
    login.service().keepSilent();
    m_keys.hold();
    EXPECT_TRUE(spinUntil([&] { return login.service().count("Inhibit") == 5; }));
    m_keys.release();
    login.service().answerAll();
    expectAnswers({true});
    expectHeld(login, {});
}

TEST_F(PowerKeyInhibitorsTest, ServiceThatRestartsIsAskedAgain) {
    std::optional<LoginService> login(std::in_place, m_bus);
    m_keys.hold();
    expectHeld(*login, everyKey);
    login.reset();
    login.emplace(m_bus);
    expectHeld(*login, everyKey);
}

TEST_F(PowerKeyInhibitorsTest, NoServiceIsReported) {
    m_keys.probe();
    expectAnswers({false});
}

TEST_F(PowerKeyInhibitorsTest, BusThatDoesNotAnswerHoldsNobodyUp) {
    LoginService login(m_bus);
    m_bus.suspend();
    m_keys.hold();
    spinFor(100ms); // a main thread that opened the bus by itself would stand here until its patience ends
    EXPECT_TRUE(m_answers.empty());
    m_bus.resume();
    expectHeld(login, everyKey);
}

TEST_F(PowerKeyInhibitorsTest, BusThatOpensAfterTheReleaseIsAskedNothing) {
    LoginService login(m_bus);
    m_bus.suspend();
    m_keys.hold();
    m_keys.release();
    m_bus.resume();
    spinFor(200ms);
    EXPECT_TRUE(login.service().calls().empty());
}

TEST(PowerKeyInhibitorsAlone, WithoutASystemBusEveryWishIsAnsweredNo) {
    Answers answers;
    PowerKeyInhibitors keys([] { return QDBusConnection(QString()); },
                            [&answers](PowerKey key, bool granted) { answers[key].push_back(granted); });
    const auto eachHas = [&answers](const std::vector<bool>& all) {
        return answers == Answers{{PowerKey::power, all}, {PowerKey::sleep, all}, {PowerKey::hibernate, all}};
    };
    keys.probe();
    EXPECT_TRUE(spinUntil([&] { return eachHas({false}); }));
    keys.hold();
    EXPECT_TRUE(spinUntil([&] { return eachHas({false, false}); }));
    keys.release();
}

TEST(PowerKeyInhibitorsAlone, WhoseHolderGoesWhileTheBusOpensDoesNotComeBack) {
    const BusServer bus;
    bus.suspend();
    Answers answers;
    {
        PowerKeyInhibitors keys([&bus] { return bus.connect(); },
                                [&answers](PowerKey key, bool granted) { answers[key].push_back(granted); });
        keys.hold();
    }
    bus.resume();
    spinFor(200ms);
    EXPECT_TRUE(answers.empty());
}

} // namespace

} // namespace tapalong::test
