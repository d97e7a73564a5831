#include "platform/TimerQueue.h"

#include <gtest/gtest.h>

#include <string>

namespace tapalong {
namespace {

struct TimerQueueTest : testing::Test {
    std::shared_ptr<int> owner = std::make_shared<int>(0);
    TimerQueue queue;
    std::string fired;

    TimerToken add(double now, double interval, Repeats repeats, char name) {
        return queue.schedule(now, interval, repeats, owner, [this, name] { fired += name; });
    }
};

TEST_F(TimerQueueTest, OneShotFiresOnceAndIsForgotten) {
    add(0, 1, Repeats::no, 'a');
    queue.fireDue(0.5);
    EXPECT_EQ(fired, "");
    queue.fireDue(1);
    queue.fireDue(5);
    EXPECT_EQ(fired, "a");
    EXPECT_EQ(queue.count(), 0U);
}

TEST_F(TimerQueueTest, TiesGoInOrderOfCreation) {
    add(0, 0.25, Repeats::yes, 'p');
    queue.fireDue(0.25);
    add(0.25, 0.25, Repeats::no, 'd');
    queue.fireDue(0.5);
    EXPECT_EQ(fired, "ppd") << "the older timer keeps its precedence when it repeats";
}

TEST_F(TimerQueueTest, EarlierDeadlinesGoFirstWhateverTheOrderOfCreation) {
    add(0, 2, Repeats::no, 'b');
    add(0, 1, Repeats::no, 'a');
    queue.fireDue(3);
    EXPECT_EQ(fired, "ab");
}

TEST_F(TimerQueueTest, MissedBeatsAreLeftOutAndTheBeatIsKept) {
    add(0, 1, Repeats::yes, 'a');
    queue.fireDue(3.5);
    EXPECT_EQ(fired, "a");
    EXPECT_EQ(queue.nextDeadline(), 4.0);
}

TEST_F(TimerQueueTest, InvalidatedTimersDoNotFireEvenWhenDueTogether) {
    TimerToken second{};
    queue.schedule(0, 1, Repeats::no, owner, [&] { queue.invalidate(second); });
    second = add(0, 1, Repeats::no, 'b');
    queue.fireDue(1);
    EXPECT_EQ(fired, "");
    queue.invalidate(second);
    EXPECT_EQ(queue.count(), 0U);
}

TEST_F(TimerQueueTest, TimersOfAGoneOwnerEndByThemselves) {
    add(0, 1, Repeats::yes, 'a');
    owner.reset();
    queue.fireDue(1);
    EXPECT_EQ(fired, "");
    EXPECT_EQ(queue.nextDeadline(), std::nullopt);
    EXPECT_EQ(queue.count(), 0U);
}

TEST_F(TimerQueueTest, ATimerMadeByABlockWaitsForTheNextCall) {
    queue.schedule(0, 1, Repeats::no, owner, [this] { add(0, 0.5, Repeats::no, 'n'); });
    queue.fireDue(1);
    EXPECT_EQ(fired, "");
    queue.fireDue(1);
    EXPECT_EQ(fired, "n");
}

TEST_F(TimerQueueTest, ARepeatingTimerWithoutLengthStillLetsTimePass) {
    add(0, 0, Repeats::yes, 'a');
    queue.fireDue(0);
    EXPECT_EQ(fired, "");
    EXPECT_GT(queue.nextDeadline().value(), 0.0);
}

} // namespace
} // namespace tapalong
