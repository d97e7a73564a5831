#include "platform/linux/x11/X11KeyboardLocks.h"

#include "desktop/support/EventLoop.h"
#include "desktop/support/XClient.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace tapalong {

namespace {

using test::spinUntil;

struct X11KeyboardLocksTest : testing::Test {
    X11KeyboardLocksTest() { test::setLayout("us"); }

    X11Connection connection;
    test::XClient other;
};

} // namespace

TEST_F(X11KeyboardLocksTest, CapsLockIsFollowedWhoeverHasTheKeyboard) {
    X11KeyboardLocks locks(connection);
    EXPECT_FALSE(locks.isCapsLockOn());
    other.tap(KEY_CAPSLOCK);
    EXPECT_TRUE(spinUntil([&] { return locks.isCapsLockOn(); }));
    ASSERT_TRUE(other.grabKeyboard());
    other.tap(KEY_CAPSLOCK);
    EXPECT_TRUE(spinUntil([&] { return !locks.isCapsLockOn(); }));
}

TEST_F(X11KeyboardLocksTest, ALockFromBeforeIsKnownAndShiftIsNone) {
    other.tap(KEY_CAPSLOCK);
    X11KeyboardLocks locks(connection);
    EXPECT_TRUE(locks.isCapsLockOn());
    other.tap(KEY_CAPSLOCK);
    EXPECT_TRUE(spinUntil([&] { return !locks.isCapsLockOn(); }));
    int changes = 0;
    const auto subscription = locks.objectWillChange([&] { ++changes; });
    other.press(KEY_LEFTSHIFT);
    other.tap(KEY_A);
    other.release(KEY_LEFTSHIFT);
    test::spinFor(std::chrono::milliseconds(50));
    EXPECT_EQ(changes, 0);
}

} // namespace tapalong
