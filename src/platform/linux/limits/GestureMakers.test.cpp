#include "platform/linux/limits/GestureMakers.h"

#include <gtest/gtest.h>

namespace tapalong {

namespace {

TEST(GestureMakers, PlainWindowManagersMakeNone) {
    EXPECT_FALSE(makesGestures("", {}));
    EXPECT_FALSE(makesGestures("Openbox", {"openbox", "bash"}));
    EXPECT_FALSE(makesGestures("Xfwm4", {"xfwm4"}));
}

TEST(GestureMakers, SomeWindowManagersMakeThemThemselves) {
    EXPECT_TRUE(makesGestures("GNOME Shell", {}));
    EXPECT_TRUE(makesGestures("Mutter", {}));
    EXPECT_TRUE(makesGestures("Mutter(Gala)", {}));
}

TEST(GestureMakers, ADaemonMakesThemUnderAnyWindowManager) {
    EXPECT_TRUE(makesGestures("Xfwm4", {"bash", "touchegg"}));
    EXPECT_TRUE(makesGestures("", {"libinput-gestur"}));
    EXPECT_FALSE(makesGestures("", {"touch"}));
}

} // namespace

} // namespace tapalong
