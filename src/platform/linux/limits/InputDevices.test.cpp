#include "platform/linux/limits/InputDevices.h"

#include <gtest/gtest.h>

namespace tapalong {

namespace {

const std::string powerButton = "I: Bus=0019 Vendor=0000 Product=0001 Version=0000\n"
                                "N: Name=\"Power Button\"\n"
                                "H: Handlers=kbd event0 \n"
                                "B: PROP=0\n"
                                "B: EV=3\n"
                                "B: KEY=10000000000000 0\n"
                                "\n";
const std::string sleepButton = "N: Name=\"Sleep Button\"\n"
                                "B: PROP=0\n"
                                "B: EV=3\n"
                                "B: KEY=4000 0 0\n"
                                "\n";
const std::string hibernateKey = "N: Name=\"A keyboard's further keys\"\n"
                                 "B: PROP=0\n"
                                 "B: EV=3\n"
                                 "B: KEY=2000 0 0 0\n"
                                 "\n";
const std::string keyboard = "N: Name=\"A keyboard\"\n"
                             "B: PROP=0\n"
                             "B: EV=120013\n"
                             "B: KEY=800000000 100040060000002\n"
                             "\n";
const std::string mouse = "N: Name=\"A mouse\"\n"
                          "B: PROP=0\n"
                          "B: EV=17\n"
                          "B: KEY=70000 0 0 0 0\n"
                          "B: REL=903\n"
                          "\n";
const std::string touchpad = "N: Name=\"A touchpad\"\n"
                             "B: PROP=5\n"
                             "B: EV=b\n"
                             "B: KEY=6520 10000 0 0 0 0\n"
                             "B: ABS=60800000000003\n"
                             "\n";
const std::string touchScreen = "N: Name=\"A touch screen\"\n"
                                "B: PROP=2\n"
                                "B: EV=b\n"
                                "B: KEY=420 0 0 0 0 0\n"
                                "B: ABS=60800000000003\n"
                                "\n";
const std::string penTablet = "N: Name=\"A tablet\"\n"
                              "B: PROP=1\n"
                              "B: EV=b\n"
                              "B: KEY=421 0 0 0 0 0\n"
                              "B: ABS=1000003\n"
                              "\n";

TEST(InputDevices, EachIsFoundByWhatItsDeviceCanSend) {
    EXPECT_EQ(inputDevices(powerButton), (InputDevices{.hasPowerKey = true}));
    EXPECT_EQ(inputDevices(sleepButton), (InputDevices{.hasSleepKey = true}));
    EXPECT_EQ(inputDevices(hibernateKey), (InputDevices{.hasHibernateKey = true}));
    EXPECT_EQ(inputDevices(keyboard), (InputDevices{.hasSysRqKey = true}));
    EXPECT_EQ(inputDevices(touchpad), (InputDevices{.hasTouchpad = true}));
}

TEST(InputDevices, AMouseAPenTabletAndATouchScreenAreNoTouchpad) {
    EXPECT_EQ(inputDevices(mouse + penTablet + touchScreen), InputDevices());
}

TEST(InputDevices, ALaptopHasThemAll) {
    EXPECT_EQ(inputDevices(powerButton + sleepButton + hibernateKey + keyboard + mouse + touchpad),
              (InputDevices{true, true, true, true, true}));
}

TEST(InputDevices, CodesOfOneDeviceAreNotAddedToThoseOfTheNext) {
    const std::string axesOnly = "N: Name=\"A joystick\"\nB: PROP=0\nB: ABS=3\n\n";
    const std::string fingerWithoutAxes = "N: Name=\"Odd\"\nB: KEY=20 0 0 0 0 0\n\n";
    EXPECT_EQ(inputDevices(axesOnly + fingerWithoutAxes), InputDevices());
}

TEST(InputDevices, AListWithoutALastEmptyLineIsReadToItsEnd) {
    EXPECT_EQ(inputDevices("N: Name=\"Power Button\"\nB: KEY=10000000000000 0"), (InputDevices{.hasPowerKey = true}));
}

TEST(InputDevices, AComputerWithoutDevicesHasNone) {
    EXPECT_EQ(inputDevices(""), InputDevices());
}

TEST(InputDevices, WhatMayNotBeReadCountsAsThere) {
    EXPECT_EQ(inputDevices(std::nullopt), (InputDevices{true, true, true, true, true}));
}

} // namespace

} // namespace tapalong
