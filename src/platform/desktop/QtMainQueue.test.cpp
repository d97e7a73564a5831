#include "platform/desktop/QtMainQueue.h"

#include "platform/desktop/DesktopTest.test.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace tapalong {

namespace {

using QtMainQueueTest = DesktopTest;

TEST_F(QtMainQueueTest, WorkRunsLaterAndInOrder) {
    QtMainQueue queue;
    std::string order;
    queue.async([&] { order += '1'; });
    queue.async([&] { order += '2'; });
    queue.async([&] { order += '3'; });
    EXPECT_EQ(order, "");
    EXPECT_TRUE(waitFor([&] { return order.size() == 3; }));
    EXPECT_EQ(order, "123");
}

TEST_F(QtMainQueueTest, WorkPostedByWorkRunsAfterWhatWaits) {
    QtMainQueue queue;
    std::string order;
    queue.async([&] {
        queue.async([&] { order += 'c'; });
        order += 'a';
    });
    queue.async([&] { order += 'b'; });
    EXPECT_TRUE(waitFor([&] { return order.size() == 3; }));
    EXPECT_EQ(order, "abc");
}

TEST_F(QtMainQueueTest, WorkOfAnotherThreadRunsOnTheMainThreadInItsOrder) {
    QtMainQueue queue;
    std::vector<int> order;
    bool allOnMainThread = true;
    const auto mainThread = std::this_thread::get_id();
    std::thread poster([&] {
        for (int number = 0; number < 1000; ++number) {
            queue.async([&, number] {
                order.push_back(number);
                allOnMainThread = allOnMainThread && std::this_thread::get_id() == mainThread;
            });
        }
    });
    EXPECT_TRUE(waitFor([&] { return order.size() == 1000; }));
    poster.join();
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_TRUE(allOnMainThread);
}

TEST_F(QtMainQueueTest, DelayedWorkNeverComesEarlyAndTheShorterDelayComesFirst) {
    using Clock = std::chrono::steady_clock;
    QtMainQueue queue;
    std::string order;
    const auto start = Clock::now();
    Clock::duration early{};
    queue.asyncAfter(0.05, [&] { order += 'b'; });
    queue.asyncAfter(0.02, [&] {
        order += 'a';
        early = Clock::now() - start;
    });
    EXPECT_TRUE(waitFor([&] { return order.size() == 2; }));
    EXPECT_EQ(order, "ab");
    EXPECT_GE(early, std::chrono::milliseconds(20));
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(50));
}

TEST_F(QtMainQueueTest, DelayedWorkOfAnotherThreadRunsOnTheMainThread) {
    QtMainQueue queue;
    std::thread::id ranOn;
    std::thread poster([&] { queue.asyncAfter(0.01, [&] { ranOn = std::this_thread::get_id(); }); });
    poster.join();
    EXPECT_TRUE(waitFor([&] { return ranOn != std::thread::id(); }));
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST_F(QtMainQueueTest, WorkIsDroppedWithTheQueue) {
    int runs = 0;
    {
        QtMainQueue queue;
        queue.async([&] { ++runs; });
        queue.asyncAfter(0, [&] { ++runs; });
    }
    QtMainQueue other;
    bool otherRan = false;
    other.asyncAfter(0.02, [&] { otherRan = true; });
    EXPECT_TRUE(waitFor([&] { return otherRan; }));
    EXPECT_EQ(runs, 0);
}

} // namespace

} // namespace tapalong
