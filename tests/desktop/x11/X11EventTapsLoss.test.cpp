#include "platform/linux/x11/X11EventTaps.h"

#include "desktop/support/EventLoop.h"
#include "desktop/x11/X11EventTapsTest.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace tapalong {

namespace {

using test::spinFor;
using test::spinUntil;
using test::X11EventTapsTest;
using namespace std::chrono_literals;

} // namespace

TEST_F(X11EventTapsTest, LostKeyboardIsReportedAndCanBeHadAgain) {
    start();
    xcb_ungrab_keyboard(connection.xcb(), XCB_CURRENT_TIME);
    xcb_flush(connection.xcb());
    ASSERT_TRUE(spinUntil([&] { return count(EventType::tapDisabledByUserInput) == 1; }));
    EXPECT_FALSE(taps.holdsInput());
    taps.enableTap(*tap, true);
    EXPECT_TRUE(taps.holdsInput());
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return text == "a"; }));
    EXPECT_TRUE(other.seen().empty());
}

TEST_F(X11EventTapsTest, LossIsReportedWhereverTheFocusIs) {
    start();
    reenable = true;
    std::size_t losses = 0;
    for (const xcb_window_t focus :
         {xcb_window_t{XCB_INPUT_FOCUS_NONE}, xcb_window_t{XCB_INPUT_FOCUS_POINTER_ROOT}, other.root(), elsewhere}) {
        other.focus(focus);
        xcb_ungrab_keyboard(connection.xcb(), XCB_CURRENT_TIME);
        xcb_flush(connection.xcb());
        ++losses;
        ASSERT_TRUE(spinUntil([&] { return count(EventType::tapDisabledByUserInput) == losses; })) << focus;
        EXPECT_TRUE(taps.holdsInput());
    }
}

TEST_F(X11EventTapsTest, TapThatIsReenabledWhileTheKeyboardIsElsewhereIsToldUntilItHasIt) {
    start();
    reenable = true;
    xcb_ungrab_keyboard(connection.xcb(), XCB_CURRENT_TIME);
    xcb_flush(connection.xcb());
    while (!other.grabKeyboard()) {
    }
    ASSERT_TRUE(spinUntil([&] { return count(EventType::tapDisabledByUserInput) >= 2; }));
    EXPECT_FALSE(taps.isTapEnabled(*tap));
    other.ungrabKeyboard();
    ASSERT_TRUE(spinUntil([&] { return taps.isTapEnabled(*tap); }));
}

TEST_F(X11EventTapsTest, TapThatWasRefusedAMomentAgoIsAskedForOnce) {
    const auto requestsOfCreating = [this] {
        const auto before = xcb_no_operation(connection.xcb()).sequence;
        tap = create();
        return xcb_no_operation(connection.xcb()).sequence - before - 1;
    };
    ASSERT_TRUE(other.grabKeyboard());
    EXPECT_GT(requestsOfCreating(), 1U) << "a window manager may be about to let go";
    EXPECT_FALSE(tap.has_value());
    EXPECT_EQ(requestsOfCreating(), 1U) << "nothing may stand still for it every two seconds";
    EXPECT_FALSE(tap.has_value());
    other.ungrabKeyboard();
    other.sync();
    (void)create();
    EXPECT_TRUE(taps.holdsInput());
}

TEST_F(X11EventTapsTest, CutConnectionIsReported) {
    start();
    const xcb_window_t anything = xcb_generate_id(connection.xcb());
    xcb_create_window(connection.xcb(), 0, anything, connection.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, 0,
                      0, nullptr);
    connection.dispatchPending();
    spinFor(20ms);
    xcb_kill_client(other.xcb(), anything);
    other.sync();
    ASSERT_TRUE(spinUntil([&] { return count(EventType::tapDisabledByUserInput) == 1; }));
    EXPECT_FALSE(taps.isTapEnabled(*tap));
    EXPECT_TRUE(other.grabKeyboard());
}

} // namespace tapalong
