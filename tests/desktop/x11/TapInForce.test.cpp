#include "desktop/x11/Guards.h"
#include "desktop/x11/OwnWindow.h"
#include "platform/linux/x11/QtConnection.h"
#include "platform/linux/x11/X11EventTaps.h"

#include <gtest/gtest.h>

#include <csignal>

namespace tapalong {

namespace {

using test::FakeGuard;
using test::OwnWindow;
using test::spinUntil;

/// A tap that takes itself back whenever it is told that it was lost.
class TapInForce : public testing::Test {
protected:
    TapInForce() { guard.becomes(ServerKeys::guardBesideProgram()); }

    void start() {
        tap = taps.createTap(TapLocation::session, TapPlacement::headInsert, TapOptions::activeFilter, ~EventMask{0},
                             [this](const InputEvent& event) {
                                 if (event.type == EventType::tapDisabledByUserInput) {
                                     ++losses;
                                     taps.enableTap(*tap, true);
                                 }
                                 return Verdict::consume;
                             });
        ASSERT_TRUE(tap.has_value());
        source = taps.createRunLoopSource(*tap);
        taps.addSource(source);
        taps.enableTap(*tap, true);
    }

    [[nodiscard]] bool grabPointer() {
        const auto reply =
            own(xcb_grab_pointer_reply(other.xcb(),
                                       xcb_grab_pointer(other.xcb(), 0, other.root(), 0, XCB_GRAB_MODE_ASYNC,
                                                        XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
                                       nullptr));
        return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }

    X11Connection connection;
    SecureInput secureInput;
    X11EventMonitors monitors{connection};
    FakeGuard guard{"exit 1"};
    X11EventTaps taps{connection, monitors, secureInput, guard.program()};
    test::XClient other;
    std::optional<TapHandle> tap;
    RunLoopSource source{};
    int losses = 0;
};

} // namespace

TEST_F(TapInForce, TapIsEnabledUntilItIsDisabledOrGone) {
    start();
    EXPECT_TRUE(taps.isTapEnabled(*tap));
    taps.enableTap(*tap, false);
    EXPECT_FALSE(taps.isTapEnabled(*tap));
    taps.enableTap(*tap, true);
    EXPECT_TRUE(taps.isTapEnabled(*tap));
    taps.removeSource(source);
    EXPECT_FALSE(taps.isTapEnabled(*tap));
}

TEST_F(TapInForce, PointerThatAnotherProgramTookIsALossToo) {
    OwnWindow window;
    other.movePointer(600, 400);
    start();
    xcb_input_xi_ungrab_device(qtConnection(), XCB_CURRENT_TIME, 2); // the core pointer's number on every server
    xcb_flush(qtConnection());
    while (!grabPointer()) {
    }
    ASSERT_TRUE(spinUntil([&] { return losses >= 2; }));
    EXPECT_FALSE(taps.isTapEnabled(*tap));
    xcb_ungrab_pointer(other.xcb(), XCB_CURRENT_TIME);
    other.sync();
    ASSERT_TRUE(spinUntil([&] { return taps.isTapEnabled(*tap); }));
}

TEST_F(TapInForce, TapWithoutTheServersKeysHoldsTheRestAndIsEnabledWhenItHasThemToo) {
    guard.becomes("/bin/false");
    start();
    EXPECT_TRUE(taps.holdsInput());
    EXPECT_FALSE(taps.isTapEnabled(*tap));
    EXPECT_EQ(losses, 0);
    guard.becomes(ServerKeys::guardBesideProgram());
    ASSERT_TRUE(spinUntil([&] { return taps.isTapEnabled(*tap); }));
    EXPECT_EQ(losses, 1) << "nothing else tells that it is worth asking";
    EXPECT_FALSE(other.grabKeyboard());
}

TEST_F(TapInForce, GuardThatIsKilledHasASuccessorBeforeAnybodyNotices) {
    start();
    ASSERT_TRUE(spinUntil([&] { return taps.isTapEnabled(*tap); }));
    const auto first = test::runningGuards();
    losses = 0;
    kill(first.at(0), SIGKILL);
    ASSERT_TRUE(spinUntil([&] { return !test::runningGuards().empty() && test::runningGuards() != first; }));
    EXPECT_TRUE(taps.isTapEnabled(*tap));
    EXPECT_EQ(losses, 0);
}

TEST_F(TapInForce, ServersKeysThatOpenForGoodAreALossOfThemAlone) {
    start();
    ASSERT_TRUE(spinUntil([&] { return taps.isTapEnabled(*tap); }));
    losses = 0;
    guard.becomes("/bin/false");
    kill(test::runningGuards().at(0), SIGKILL);
    ASSERT_TRUE(spinUntil([&] { return losses == 1; }));
    EXPECT_FALSE(taps.isTapEnabled(*tap));
    EXPECT_TRUE(taps.holdsInput());
    EXPECT_FALSE(other.grabKeyboard());
}

} // namespace tapalong
