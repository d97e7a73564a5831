#include "platform/KeyboardLocks.h"

#include <gtest/gtest.h>

#include <vector>

namespace tapalong {
namespace {

TEST(KeyboardLocks, ChangesAreAnnouncedBeforeTheyHappenAndNothingElseIs) {
    KeyboardLocks locks;
    std::vector<bool> seen;
    const auto subscription = locks.objectWillChange([&] { seen.push_back(locks.isCapsLockOn()); });
    locks.setCapsLockOn(false);
    EXPECT_TRUE(seen.empty());
    locks.setCapsLockOn(true);
    locks.setCapsLockOn(true);
    EXPECT_TRUE(locks.isCapsLockOn());
    locks.setCapsLockOn(false);
    EXPECT_EQ(seen, (std::vector<bool>{false, true}));
}

} // namespace
} // namespace tapalong
