#include "platform/simulated/SimulatedTime.h"

#include <gtest/gtest.h>

#include <memory>

namespace tapalong::simulated {
namespace {

struct SimulatedTimeTest : testing::Test {
    EffectLog effects;
    SimulatedTime time{effects};
    std::shared_ptr<int> owner = std::make_shared<int>(0);
    std::string happened;

    std::function<void()> mark(char name) {
        return [this, name] { happened += name; };
    }
};

TEST_F(SimulatedTimeTest, PostedWorkWaitsUntilItIsDrained) {
    time.async(mark('a'));
    time.async([this] {
        happened += 'b';
        time.async(mark('c'));
    });
    EXPECT_EQ(happened, "");
    EXPECT_EQ(time.postedCount(), 2U);
    time.drain();
    EXPECT_EQ(happened, "abc");
    EXPECT_EQ(time.postedCount(), 0U);
}

TEST_F(SimulatedTimeTest, TheClockMovesOnlyWhenItIsTold) {
    EXPECT_EQ(time.now(), 0.0);
    time.drain();
    EXPECT_EQ(time.now(), 0.0);
    time.advance(2.5);
    EXPECT_EQ(time.now(), 2.5);
}

TEST_F(SimulatedTimeTest, WhatFallsDueHappensAtItsOwnInstant) {
    std::vector<double> instants;
    time.scheduledTimer(0.5, Repeats::yes, owner, [&] { instants.push_back(time.now()); });
    time.asyncAfter(0.75, [&] { instants.push_back(time.now()); });
    time.advance(1.25);
    EXPECT_EQ(instants, (std::vector<double>{0.5, 0.75, 1.0}));
}

TEST_F(SimulatedTimeTest, AtOneInstantTimersGoBeforeDelayedWork) {
    time.asyncAfter(1, mark('d'));
    time.scheduledTimer(1, Repeats::no, owner, mark('t'));
    time.advance(1);
    EXPECT_EQ(happened, "td");
}

TEST_F(SimulatedTimeTest, TheQueueIsDrainedAfterEachInstant) {
    time.scheduledTimer(1, Repeats::yes, owner, [this] {
        happened += 't';
        time.async(mark('p'));
    });
    time.advance(2);
    EXPECT_EQ(happened, "tptp");
}

TEST_F(SimulatedTimeTest, WorkDelayedByNothingRunsOnTheNextTurn) {
    time.asyncAfter(0, mark('a'));
    EXPECT_EQ(happened, "");
    time.advance(0);
    EXPECT_EQ(happened, "a");
}

TEST_F(SimulatedTimeTest, AnInvalidatedTimerDoesNotFireAndCountsNoMore) {
    const auto token = time.scheduledTimer(1, Repeats::yes, owner, mark('t'));
    EXPECT_EQ(time.timerCount(), 1U);
    time.invalidate(token);
    EXPECT_EQ(time.timerCount(), 0U);
    time.advance(3);
    EXPECT_EQ(happened, "");
}

TEST_F(SimulatedTimeTest, WhatIsScheduledAndCalledOffIsRecorded) {
    const auto token = time.scheduledTimer(0.25, Repeats::yes, owner, [] {});
    time.scheduledTimer(1.5, Repeats::no, owner, [] {});
    time.asyncAfter(2, [] {});
    time.invalidate(token);
    EXPECT_EQ(effects.all(),
              (std::vector<std::string>{"timer.every 0.25", "timer.once 1.5", "queue.after 2", "timer.invalidate"}));
}

} // namespace
} // namespace tapalong::simulated
