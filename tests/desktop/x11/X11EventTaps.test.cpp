#include "platform/linux/x11/X11EventTaps.h"

#include "desktop/x11/OwnWindow.h"
#include "desktop/x11/X11EventTapsTest.h"
#include "platform/linux/x11/QtConnection.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace tapalong {

namespace {

using test::GrabsAloneTest;
using test::OwnWindow;
using test::setLayout;
using test::spinFor;
using test::spinUntil;
using test::X11EventTapsTest;
using namespace std::chrono_literals;

constexpr EventMask everything = ~EventMask{0};

} // namespace

TEST_F(X11EventTapsTest, WithoutATapKeysReachOthers) {
    other.bindKey(KEY_F9);
    other.tap(KEY_A);
    other.tap(KEY_F9);
    EXPECT_EQ(other.count(XCB_KEY_PRESS, KEY_A), 1U);
    EXPECT_EQ(other.count(XCB_KEY_PRESS, KEY_F9), 1U);
}

TEST_F(X11EventTapsTest, TapSwallowsEveryKeyBeforeAnyWindowOfOursIsUp) {
    other.bindKey(KEY_TAB);
    other.bindKey(KEY_VOLUMEUP);
    start();
    other.tap(KEY_A);
    other.chord({KEY_LEFTALT, KEY_TAB});
    other.tap(KEY_LEFTMETA);
    other.tap(KEY_VOLUMEUP);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::systemDefined) == 2; }));
    EXPECT_EQ(count(EventType::keyDown), 2U);
    EXPECT_EQ(count(EventType::keyUp), 2U);
    EXPECT_EQ(count(EventType::flagsChanged), 4U);
    EXPECT_EQ(text, "a\t");
    EXPECT_TRUE(other.seen().empty());
}

TEST_F(X11EventTapsTest, EndedTapGivesTheKeyboardBack) {
    start();
    stop();
    other.tap(KEY_A);
    spinFor(50ms);
    EXPECT_EQ(other.count(XCB_KEY_PRESS, KEY_A), 1U);
    EXPECT_TRUE(events.empty());
    EXPECT_TRUE(other.grabKeyboard());
}

TEST_F(X11EventTapsTest, DisabledTapLetsGoAndEnabledAgainTakesHold) {
    start();
    taps.enableTap(*tap, false);
    other.tap(KEY_A);
    EXPECT_EQ(other.count(XCB_KEY_PRESS, KEY_A), 1U);
    taps.enableTap(*tap, true);
    other.tap(KEY_B);
    ASSERT_TRUE(spinUntil([&] { return text == "b"; }));
    EXPECT_EQ(other.count(XCB_KEY_PRESS, KEY_B), 0U);
}

TEST_F(X11EventTapsTest, TapIsRefusedWhileAnotherProgramHasTheKeyboardAndLeavesNothingBehind) {
    ASSERT_TRUE(other.grabKeyboard());
    EXPECT_FALSE(create().has_value());
    EXPECT_FALSE(taps.holdsInput());
    other.ungrabKeyboard();
    other.tap(KEY_A);
    other.movePointer(10, 10);
    other.click(9);
    EXPECT_EQ(other.count(XCB_KEY_PRESS, KEY_A), 1U);
    EXPECT_EQ(other.count(XCB_BUTTON_PRESS, 9), 1U);
    EXPECT_TRUE(create().has_value());
}

TEST_F(X11EventTapsTest, PassedKeyGoesToOurLocalMonitorsAndToNobodyElse) {
    OwnWindow window;
    std::string seenLocally;
    (void)monitors.addLocalMonitorForEvents(maskOf(EventType::keyDown), [&](const InputEvent& event) {
        seenLocally += event.text().value_or("");
        return Verdict::pass;
    });
    verdict = Verdict::pass;
    start();
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return seenLocally == "a"; }));
    spinFor(50ms);
    EXPECT_EQ(window.keyPresses, 0);
    EXPECT_TRUE(other.seen().empty());
}

TEST_F(X11EventTapsTest, ConsumedKeyReachesNoMonitor) {
    bool seen = false;
    const auto note = [&](const InputEvent&) { seen = true; };
    (void)monitors.addGlobalMonitorForEvents(everything, note);
    (void)monitors.addLocalMonitorForEvents(everything, [&](const InputEvent& event) {
        note(event);
        return Verdict::pass;
    });
    start();
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::keyUp) == 1; }));
    spinFor(50ms);
    EXPECT_FALSE(seen);
}

TEST_F(X11EventTapsTest, HeldKeyArrivesAsRepeatedKeyDowns) {
    start();
    other.press(KEY_BACKSPACE);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::keyDown) >= 4; }));
    EXPECT_EQ(count(EventType::keyUp), 0U);
    other.release(KEY_BACKSPACE);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::keyUp) == 1; }));
}

TEST_F(X11EventTapsTest, FlagsAreThoseAfterTheKey) {
    start();
    other.press(KEY_LEFTSHIFT);
    other.tap(KEY_A);
    other.release(KEY_LEFTSHIFT);
    other.tap(KEY_CAPSLOCK);
    other.tap(KEY_CAPSLOCK);
    ASSERT_TRUE(spinUntil([&] { return events.size() == 6; }));
    const std::vector<ModifierFlags> flags = {
        Modifier::shift, Modifier::shift, Modifier::shift, 0, Modifier::capsLock, 0};
    for (std::size_t i = 0; i < flags.size(); ++i) {
        EXPECT_EQ(events[i].modifierFlags, flags[i]) << i;
    }
    EXPECT_EQ(text, "A");
}

TEST_F(X11EventTapsTest, LayoutChangedAndSwitchedMeanwhileIsFollowed) {
    start();
    other.tap(KEY_Y);
    ASSERT_TRUE(spinUntil([&] { return text == "y"; }));
    setLayout("de");
    other.tap(KEY_Y);
    ASSERT_TRUE(spinUntil([&] { return text == "yz"; }));
    setLayout("us,ru -option grp:menu_toggle");
    other.tap(KEY_COMPOSE);
    other.tap(KEY_Y);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::keyUp) == 4; }));
    EXPECT_EQ(text, "yzн");
}

TEST_F(X11EventTapsTest, ModifierHeldBeforeTheTapCountsAndItsReleaseIsSeen) {
    other.press(KEY_LEFTCTRL);
    start();
    other.tap(KEY_A);
    other.release(KEY_LEFTCTRL);
    ASSERT_TRUE(spinUntil([&] { return events.size() == 3; }));
    EXPECT_EQ(events[0].modifierFlags, Modifier::control);
    EXPECT_EQ(text, "\x01");
    EXPECT_EQ(events[2].type, EventType::flagsChanged);
    EXPECT_EQ(events[2].modifierFlags, 0U);
}

TEST_F(GrabsAloneTest, WheelAndOtherButtonsAreSwallowedEverywhere) {
    other.bindButton(8);
    start();
    other.movePointer(10, 10);
    for (const auto button : std::vector<std::uint8_t>{2, 4, 5, 6, 7, 8, 9}) {
        other.click(button);
    }
    ASSERT_TRUE(spinUntil([&] { return count(EventType::otherMouseUp) == 3; }));
    EXPECT_EQ(count(EventType::otherMouseDown), 3U);
    EXPECT_EQ(count(EventType::scrollWheel), 4U);
    EXPECT_TRUE(other.seen().empty());
}

TEST_F(X11EventTapsTest, WheelAndOtherButtonsReachNobodyAndClicksOurWindow) {
    OwnWindow window;
    other.bindButton(8);
    start();
    other.movePointer(600, 400);
    for (const auto button : std::vector<std::uint8_t>{2, 4, 5, 6, 7, 8, 9, 1}) {
        other.click(button);
    }
    ASSERT_TRUE(spinUntil([&] { return !window.clicks.empty(); }));
    EXPECT_EQ(window.clicks, std::vector{Qt::LeftButton});
    EXPECT_EQ(window.wheels, 0);
    EXPECT_TRUE(other.seen().empty());
    EXPECT_TRUE(events.empty());
}

TEST_F(GrabsAloneTest, LeftAndRightClicksAndMotionReachOurWindowWheelAndOthersDoNot) {
    OwnWindow window;
    start();
    window.moves = 0;
    other.movePointer(600, 400);
    ASSERT_TRUE(spinUntil([&] { return window.moves >= 1; }));
    window.moves = 0;
    other.movePointer(610, 410);
    for (const auto button : std::vector<std::uint8_t>{1, 2, 3, 4, 5, 8, 9}) {
        other.click(button);
    }
    ASSERT_TRUE(spinUntil([&] { return window.clicks.size() >= 2 && count(EventType::otherMouseUp) == 3; }));
    spinFor(50ms);
    EXPECT_EQ(window.clicks, (std::vector{Qt::LeftButton, Qt::RightButton}));
    EXPECT_GE(window.moves, 1);
    EXPECT_EQ(window.wheels, 0);
    EXPECT_EQ(count(EventType::scrollWheel), 2U);
}

TEST_F(GrabsAloneTest, PointerGrabEndedByQtIsTakenAgain) {
    OwnWindow window;
    other.movePointer(600, 400);
    start();
    xcb_input_xi_ungrab_device(qtConnection(), XCB_CURRENT_TIME, 2); // the core pointer's number on every server
    xcb_flush(qtConnection());
    spinFor(100ms);
    (void)other.openWindow(600, 400, 50, 50);
    other.movePointer(620, 420);
    other.click(1);
    other.click(9);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::otherMouseUp) == 1; }));
    EXPECT_TRUE(other.seen().empty());
}

TEST_F(X11EventTapsTest, ClicksReachNoOtherProgramsWindow) {
    start();
    other.movePointer(10, 10);
    other.click(1);
    other.click(3);
    spinFor(50ms);
    EXPECT_TRUE(other.seen().empty());
    stop();
    other.click(1);
    EXPECT_EQ(other.count(XCB_BUTTON_PRESS, 1), 1U);
}

TEST_F(GrabsAloneTest, OtherButtonPressedDuringADragIsSwallowed) {
    OwnWindow window;
    start();
    other.movePointer(600, 400);
    other.pressButton(1);
    other.click(9);
    other.releaseButton(1);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::otherMouseUp) == 1; }));
    ASSERT_TRUE(spinUntil([&] { return !window.clicks.empty(); }));
    EXPECT_EQ(window.clicks, (std::vector{Qt::LeftButton}));
}

TEST_F(X11EventTapsTest, TapIsHadWhileAButtonIsDownInOurWindow) {
    OwnWindow window;
    other.movePointer(600, 400);
    other.pressButton(1);
    ASSERT_TRUE(spinUntil([&] { return !window.clicks.empty(); }));
    start();
    other.releaseButton(1);
    EXPECT_TRUE(taps.holdsInput());
}

TEST_F(X11EventTapsTest, EventsOutsideTheMaskAreNotOffered) {
    start(maskOf(EventType::keyUp));
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::keyUp) == 1; }));
    EXPECT_EQ(events.size(), 1U);
}

TEST_F(X11EventTapsTest, NewestTapComesFirst) {
    start();
    int second = 0;
    const auto newer = taps.createTap(TapLocation::session, TapPlacement::headInsert, TapOptions::activeFilter,
                                      everything, [&](const InputEvent&) {
                                          ++second;
                                          return Verdict::consume;
                                      });
    const auto newerSource = taps.createRunLoopSource(newer.value());
    taps.addSource(newerSource);
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return second == 2; }));
    EXPECT_TRUE(events.empty());
    taps.removeSource(newerSource);
    other.tap(KEY_B);
    ASSERT_TRUE(spinUntil([&] { return text == "b"; }));
}

TEST_F(X11EventTapsTest, HundredTapsLeaveNothing) {
    for (int i = 0; i < 100; ++i) {
        start();
        stop();
    }
    EXPECT_FALSE(taps.holdsInput());
    EXPECT_TRUE(other.grabKeyboard());
}

} // namespace tapalong
