#include "base/WhileAlive.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace tapalong {
namespace {

struct Owner : std::enable_shared_from_this<Owner> {
    std::string heard;

    void hear(const std::string& word) { heard += word; }
    [[nodiscard]] std::function<void(const std::string&)> ear() { return whileAlive(weak_from_this(), &Owner::hear); }
};

TEST(WhileAlive, TheOwnerGetsWhatTheCallbackIsCalledWith) {
    const auto owner = std::make_shared<Owner>();
    const auto ear = owner->ear();
    ear("a");
    ear("b");
    EXPECT_EQ(owner->heard, "ab");
}

TEST(WhileAlive, ACallbackKeepsNoOwnerAndDoesNothingWithoutIt) {
    auto owner = std::make_shared<Owner>();
    int called = 0;
    const auto ear = owner->ear();
    const auto count = whileAlive(owner->weak_from_this(), [&called](Owner&) { ++called; });
    count();
    EXPECT_EQ(owner.use_count(), 1);
    owner.reset();
    ear("a");
    count();
    EXPECT_EQ(called, 1);
}

TEST(WhileAlive, TheOwnerLivesUntilItsActionReturns) {
    auto owner = std::make_shared<Owner>();
    const auto letGo = whileAlive(owner->weak_from_this(), [&owner](Owner& self) {
        owner.reset();
        self.hear("still here");
        EXPECT_EQ(self.heard, "still here");
    });
    letGo();
    EXPECT_EQ(owner, nullptr);
}

} // namespace
} // namespace tapalong
