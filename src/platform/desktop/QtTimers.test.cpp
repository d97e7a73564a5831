#include "platform/desktop/QtTimers.h"

#include "platform/desktop/DesktopTest.test.h"

#include <memory>
#include <string>

namespace tapalong {

namespace {

class QtTimersTest : public DesktopTest {
protected:
    TimerToken once(double interval, char mark) {
        return timers.scheduledTimer(interval, Repeats::no, owner, [this, mark] { fired += mark; });
    }

    QtTimers timers;
    std::shared_ptr<int> owner = std::make_shared<int>();
    std::string fired;
};

TEST_F(QtTimersTest, ClockGrowsBySeconds) {
    const double before = timers.now();
    once(0.05, 'x');
    EXPECT_TRUE(waitFor([&] { return !fired.empty(); }));
    const double passed = timers.now() - before;
    EXPECT_GE(passed, 0.05);
    EXPECT_LT(passed, 10);
}

TEST_F(QtTimersTest, EarlierDeadlineFiresFirst) {
    once(0.04, 'c');
    once(0.01, 'a');
    once(0.02, 'b');
    EXPECT_TRUE(waitFor([&] { return fired.size() == 3; }));
    EXPECT_EQ(fired, "abc");
}

TEST_F(QtTimersTest, RepeatingTimerKeepsFiringUntilInvalidated) {
    const auto token = timers.scheduledTimer(0.005, Repeats::yes, owner, [this] { fired += 'r'; });
    EXPECT_TRUE(waitFor([&] { return fired.size() >= 3; }));
    timers.invalidate(token);
    const auto count = fired.size();
    once(0.03, 'x');
    EXPECT_TRUE(waitFor([&] { return fired.back() == 'x'; }));
    EXPECT_EQ(fired.size(), count + 1);
}

TEST_F(QtTimersTest, InvalidatedTimerDoesNotFire) {
    const auto token = once(0.01, 'a');
    once(0.03, 'b');
    timers.invalidate(token);
    EXPECT_TRUE(waitFor([&] { return !fired.empty(); }));
    EXPECT_EQ(fired, "b");
}

TEST_F(QtTimersTest, TimerEndsWithItsOwner) {
    once(0.01, 'a');
    owner.reset();
    owner = std::make_shared<int>();
    once(0.03, 'b');
    EXPECT_TRUE(waitFor([&] { return !fired.empty(); }));
    EXPECT_EQ(fired, "b");
}

TEST_F(QtTimersTest, NothingWaitsInTheEventLoopWhenNothingIsDue) {
    const auto token = once(100, 'a');
    EXPECT_TRUE(timers.isArmed());
    timers.invalidate(token);
    EXPECT_FALSE(timers.isArmed());
    once(0.001, 'b');
    EXPECT_TRUE(waitFor([&] { return !fired.empty(); }));
    EXPECT_FALSE(timers.isArmed());
}

TEST_F(QtTimersTest, BlockMayInvalidateAndScheduleTimers) {
    const auto victim = once(0.03, 'v');
    timers.scheduledTimer(0.01, Repeats::no, owner, [this, victim] {
        timers.invalidate(victim);
        once(0, 'n');
    });
    once(0.06, 'x');
    EXPECT_TRUE(waitFor([&] { return fired.size() == 2; }));
    EXPECT_EQ(fired, "nx");
}

} // namespace

} // namespace tapalong
