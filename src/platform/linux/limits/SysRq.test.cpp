#include "platform/linux/limits/SysRq.h"

#include <gtest/gtest.h>

namespace tapalong {

namespace {

SysRqPowers powersOf(const char* setting) {
    return sysRqPowers(setting, "root=/dev/sda1 quiet");
}

TEST(SysRq, KernelWithoutItDoesNothing) {
    EXPECT_EQ(sysRqPowers(std::nullopt, "sysrq_always_enabled"), SysRqPowers());
}

TEST(SysRq, NoughtSwitchesAllOffAndOneAllOn) {
    EXPECT_EQ(powersOf("0\n"), SysRqPowers());
    EXPECT_EQ(powersOf("1\n"), (SysRqPowers{true, true, true}));
}

TEST(SysRq, GroupsCountByThemselves) {
    EXPECT_EQ(powersOf("4\n"), (SysRqPowers{true, false, false}));
    EXPECT_EQ(powersOf("64\n"), (SysRqPowers{true, false, false}));
    EXPECT_EQ(powersOf("8\n"), (SysRqPowers{false, true, false}));
    EXPECT_EQ(powersOf("128\n"), (SysRqPowers{false, true, false}));
    EXPECT_EQ(powersOf("32\n"), (SysRqPowers{false, false, true}));
    EXPECT_EQ(powersOf("438\n"), (SysRqPowers{true, true, true})) << "what Debian sets";
    EXPECT_EQ(powersOf("176\n"), (SysRqPowers{false, true, true}));
}

TEST(SysRq, WritingOutWhatIsInMemoryIsHarmless) {
    EXPECT_EQ(powersOf("16\n"), SysRqPowers());
    EXPECT_EQ(powersOf("274\n"), SysRqPowers());
}

TEST(SysRq, TheKernelsCommandLineOverridesTheSetting) {
    EXPECT_EQ(sysRqPowers("0\n", "quiet sysrq_always_enabled"), (SysRqPowers{true, true, true}));
}

TEST(SysRq, WhatCannotBeUnderstoodCountsAsOn) {
    EXPECT_EQ(powersOf("on"), (SysRqPowers{true, true, true}));
}

} // namespace

} // namespace tapalong
