#include "platform/NotificationCenter.h"

#include <gtest/gtest.h>

namespace tapalong {
namespace {

struct NotificationCenterTest : testing::Test {
    NotificationCenter center;
    std::string called;

    ObserverToken observe(std::string_view name, char mark) {
        return center.addObserver(name, [this, mark] { called += mark; });
    }
};

TEST_F(NotificationCenterTest, ObserversOfTheNameAreCalledInOrderBeforeThePostReturns) {
    observe("show", 'a');
    observe("hide", 'x');
    observe("show", 'b');
    center.post("show");
    EXPECT_EQ(called, "ab");
}

TEST_F(NotificationCenterTest, APostThatNobodyObservesDoesNothing) {
    observe("show", 'a');
    center.post("Show");
    EXPECT_EQ(called, "");
}

TEST_F(NotificationCenterTest, AnObserverAddedMeanwhileWaitsForTheNextPost) {
    const auto first = center.addObserver("show", [this] {
        for (int i = 0; i < 100; ++i) {
            observe("show", 'n');
        }
    });
    center.post("show");
    EXPECT_EQ(called, "");
    center.removeObserver(first);
    center.post("show");
    EXPECT_EQ(called, std::string(100, 'n'));
}

TEST_F(NotificationCenterTest, AnObserverRemovedMeanwhileIsSkipped) {
    ObserverToken second{};
    std::ignore = center.addObserver("show", [&] { center.removeObserver(second); });
    second = observe("show", 'b');
    center.post("show");
    EXPECT_EQ(called, "");
}

TEST_F(NotificationCenterTest, RemovingTwiceDoesNothing) {
    const auto first = observe("show", 'a');
    observe("show", 'b');
    center.removeObserver(first);
    center.removeObserver(first);
    EXPECT_EQ(center.observerCount(), 1U);
    center.post("show");
    EXPECT_EQ(called, "b");
}

} // namespace
} // namespace tapalong
