#include "platform/linux/x11/X11EventMonitors.h"

#include "desktop/x11/OwnWindow.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <algorithm>

namespace tapalong {

namespace {

using test::OwnWindow;
using test::setLayout;
using test::spinFor;
using test::spinUntil;
using namespace std::chrono_literals;

constexpr EventMask allKeys = maskOf(EventType::keyDown) | maskOf(EventType::keyUp) | maskOf(EventType::flagsChanged) |
                              maskOf(EventType::systemDefined);
constexpr EventMask allPointer = maskOf(EventType::leftMouseDown) | maskOf(EventType::leftMouseUp) |
                                 maskOf(EventType::rightMouseDown) | maskOf(EventType::mouseMoved) |
                                 maskOf(EventType::leftMouseDragged) | maskOf(EventType::scrollWheel) |
                                 maskOf(EventType::otherMouseDown) | maskOf(EventType::otherMouseUp);

class X11EventMonitorsTest : public testing::Test {
protected:
    X11EventMonitorsTest() { setLayout("us"); }

    void watchOwn(EventMask mask, Verdict verdict = Verdict::pass) {
        (void)monitors.addLocalMonitorForEvents(mask, [this, verdict](const InputEvent& event) {
            note(event);
            return verdict;
        });
    }

    [[nodiscard]] MonitorToken watchOthers(EventMask mask) {
        return monitors.addGlobalMonitorForEvents(mask, [this](const InputEvent& event) { note(event); });
    }

    void note(const InputEvent& event) {
        events.push_back(event);
        text += event.text().value_or("");
    }

    [[nodiscard]] std::size_t count(EventType type) const {
        return static_cast<std::size_t>(
            std::count_if(events.begin(), events.end(), [type](const auto& event) { return event.type == type; }));
    }

    X11Connection connection;
    X11EventMonitors monitors{connection};
    test::XClient other;
    std::vector<InputEvent> events;
    std::string text;
};

} // namespace

TEST_F(X11EventMonitorsTest, LocalMonitorSeesKeysOfOurWindowWithTheirText) {
    OwnWindow window;
    watchOwn(allKeys);
    other.tap(KEY_A);
    other.chord({KEY_LEFTSHIFT, KEY_B});
    ASSERT_TRUE(spinUntil([&] { return events.size() == 6; }));
    EXPECT_EQ(text, "aB");
    EXPECT_EQ(events[0].type, EventType::keyDown);
    EXPECT_EQ(events[0].keyCode, 0);
    EXPECT_EQ(events[1].type, EventType::keyUp);
    EXPECT_EQ(events[2].type, EventType::flagsChanged);
    EXPECT_EQ(events[2].modifierFlags, Modifier::shift);
    EXPECT_EQ(events[5].modifierFlags, 0U);
    ASSERT_TRUE(spinUntil([&] { return window.typed == "aB"; }));
}

TEST_F(X11EventMonitorsTest, ConsumedKeyReachesNothingOfOurs) {
    OwnWindow window;
    watchOwn(allKeys, Verdict::consume);
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return events.size() == 2; }));
    spinFor(50ms);
    EXPECT_EQ(window.keyPresses, 0);
    EXPECT_EQ(window.keyReleases, 0);
}

TEST_F(X11EventMonitorsTest, TextFollowsTheLayoutAndItsChange) {
    OwnWindow window;
    watchOwn(maskOf(EventType::keyDown));
    setLayout("de");
    other.tap(KEY_Y);
    ASSERT_TRUE(spinUntil([&] { return events.size() == 1; }));
    setLayout("gr");
    other.tap(KEY_Y);
    ASSERT_TRUE(spinUntil([&] { return events.size() == 2; }));
    setLayout("us,ru -option grp:menu_toggle");
    other.tap(KEY_Y);
    other.tap(KEY_COMPOSE);
    other.tap(KEY_Y);
    ASSERT_TRUE(spinUntil([&] { return events.size() == 5; }));
    EXPECT_EQ(text, "zυyн");
    EXPECT_EQ(events.back().keyCode, 16);
}

TEST_F(X11EventMonitorsTest, DeadKeyGivesItsTextOnTheLastKey) {
    setLayout("us -variant intl");
    OwnWindow window;
    watchOwn(maskOf(EventType::keyDown));
    other.tap(KEY_APOSTROPHE);
    other.tap(KEY_E);
    ASSERT_TRUE(spinUntil([&] { return events.size() == 2; }));
    EXPECT_EQ(events[0].text(), std::nullopt);
    EXPECT_EQ(events[1].text(), "é");
}

TEST_F(X11EventMonitorsTest, HeldKeyArrivesAsRepeatedKeyDowns) {
    OwnWindow window;
    watchOwn(allKeys);
    other.press(KEY_X);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::keyDown) >= 4; }));
    EXPECT_EQ(count(EventType::keyUp), 0U);
    other.release(KEY_X);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::keyUp) == 1; }));
}

TEST_F(X11EventMonitorsTest, LockSetWhileAnotherWindowHasTheFocusIsKnown) {
    OwnWindow window;
    watchOwn(maskOf(EventType::keyDown));
    const auto elsewhere = other.openWindow(0, 0, 50, 50);
    other.focus(elsewhere);
    other.tap(KEY_CAPSLOCK);
    window.activate();
    other.tap(KEY_A);
    other.tap(KEY_CAPSLOCK);
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return events.size() == 2; }));
    EXPECT_EQ(text, "Aa");
    EXPECT_EQ(events[0].modifierFlags, Modifier::capsLock);
}

TEST_F(X11EventMonitorsTest, LocalMonitorSeesThePointerOverOurWindow) {
    OwnWindow window;
    other.movePointer(300, 300);
    spinFor(50ms);
    watchOwn(allPointer);
    other.movePointer(310, 310);
    spinFor(20ms); // Qt drops motion that more motion follows
    other.pressButton(1);
    other.movePointer(320, 320);
    other.releaseButton(1);
    other.click(2);
    other.click(4);
    other.click(9);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::otherMouseUp) == 2; }));
    EXPECT_EQ(count(EventType::leftMouseDown), 1U);
    EXPECT_EQ(count(EventType::leftMouseUp), 1U);
    EXPECT_GE(count(EventType::mouseMoved), 1U);
    EXPECT_GE(count(EventType::leftMouseDragged), 1U);
    EXPECT_EQ(count(EventType::scrollWheel), 1U);
    EXPECT_EQ(count(EventType::otherMouseDown), 2U);
}

TEST_F(X11EventMonitorsTest, GlobalMonitorSeesKeysOfAnotherWindowWithFlagsAndLeavesThemThere) {
    const auto elsewhere = other.openWindow(0, 0, 50, 50);
    other.focus(elsewhere);
    (void)watchOthers(maskOf(EventType::keyDown));
    spinFor(20ms);
    other.chord({KEY_LEFTCTRL, KEY_LEFTALT, KEY_LEFTMETA, KEY_T});
    ASSERT_TRUE(spinUntil([&] { return events.size() == 1; }));
    EXPECT_EQ(events[0].keyCode, 17);
    EXPECT_EQ(events[0].modifierFlags, 0x1C0000U);
    EXPECT_EQ(other.count(XCB_KEY_PRESS, KEY_T), 1U);
}

TEST_F(X11EventMonitorsTest, GlobalMonitorSeesNothingOfOurOwnWindow) {
    OwnWindow window;
    (void)watchOthers(allKeys);
    other.tap(KEY_T);
    ASSERT_TRUE(spinUntil([&] { return window.typed == "t"; }));
    spinFor(100ms);
    EXPECT_TRUE(events.empty());
}

TEST_F(X11EventMonitorsTest, ModifierHeldBeforeAGlobalMonitorIsSetCounts) {
    other.focus(other.openWindow(0, 0, 50, 50));
    other.press(KEY_LEFTCTRL);
    (void)watchOthers(maskOf(EventType::keyDown) | maskOf(EventType::flagsChanged));
    other.tap(KEY_K);
    other.release(KEY_LEFTCTRL);
    ASSERT_TRUE(spinUntil([&] { return events.size() == 2; }));
    EXPECT_EQ(events[0].modifierFlags, Modifier::control);
    EXPECT_EQ(events[1].modifierFlags, 0U);
}

TEST_F(X11EventMonitorsTest, GlobalMonitorSeesMotionAndDragging) {
    other.focus(other.openWindow(0, 0, 50, 50));
    (void)watchOthers(maskOf(EventType::mouseMoved) | maskOf(EventType::leftMouseDragged));
    spinFor(20ms);
    other.movePointer(600, 600);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::mouseMoved) >= 1; }));
    other.pressButton(1);
    other.movePointer(610, 610);
    other.releaseButton(1);
    ASSERT_TRUE(spinUntil([&] { return count(EventType::leftMouseDragged) >= 1; }));
}

TEST_F(X11EventMonitorsTest, MotionWakesNobodyWhileATapHoldsTheInput) {
    const auto token = watchOthers(allPointer);
    int motions = 0;
    int presses = 0;
    const auto listener = connection.listen([&](const auto& event) {
        const auto type = xinputTypeOf(event, connection.xinputOpcode());
        motions += type == XCB_INPUT_RAW_MOTION ? 1 : 0;
        presses += type == XCB_INPUT_RAW_BUTTON_PRESS ? 1 : 0;
    });
    const auto moveAndClick = [&] {
        // What was selected before holds now: the server does not serve two connections in the order of their requests.
        (void)own(xcb_get_input_focus_reply(connection.xcb(), xcb_get_input_focus(connection.xcb()), nullptr));
        presses = 0;
        other.movePointer(10, 10);
        other.movePointer(20, 20);
        other.click(1);
        return spinUntil([&] { return presses == 1; });
    };
    monitors.setTapHoldsInput(true);
    ASSERT_TRUE(moveAndClick());
    EXPECT_EQ(motions, 0);
    monitors.setTapHoldsInput(false);
    ASSERT_TRUE(moveAndClick());
    EXPECT_GE(motions, 2);
    EXPECT_GE(count(EventType::mouseMoved), 1U);
    monitors.removeMonitor(token);
}

TEST_F(X11EventMonitorsTest, RemovedGlobalMonitorSeesNothingMore) {
    other.focus(other.openWindow(0, 0, 50, 50));
    const auto token = watchOthers(allKeys);
    monitors.removeMonitor(token);
    monitors.removeMonitor(token);
    other.tap(KEY_A);
    spinFor(100ms);
    EXPECT_TRUE(events.empty());
}

} // namespace tapalong
