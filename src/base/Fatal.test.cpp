#include "base/Fatal.h"

#include <gtest/gtest.h>

#include <csignal>

namespace tapalong {
namespace {

TEST(FatalDeathTest, ThePlaceAndTheReasonGoToStandardError) {
    EXPECT_DEATH(fatal("the sky must be blue"), "Fatal\\.test\\.cpp:[0-9]+: .*fatal: the sky must be blue");
}

TEST(FatalDeathTest, TheProgramEndsByAbort) {
    EXPECT_EXIT(fatal("nothing"), testing::KilledBySignal(SIGABRT), "fatal: nothing");
}

TEST(FatalDeathTest, WhatDoesNotHoldStopsTheProgramAtItsCaller) {
    EXPECT_DEATH(verify(1 > 2, "one is more than two"), "Fatal\\.test\\.cpp:[0-9]+: .*one is more than two");
}

TEST(Fatal, WhatHoldsGoesOn) {
    bool wentOn = false;
    verify(2 > 1, "two is more than one");
    wentOn = true;
    EXPECT_TRUE(wentOn);
}

} // namespace
} // namespace tapalong
