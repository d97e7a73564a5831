#include "platform/linux/x11/ServerKeys.h"

#include "desktop/support/EventLoop.h"
#include "desktop/x11/ServerKeysTest.h"
#include "platform/linux/x11/X11EventTaps.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <utility>

namespace tapalong {

namespace {

using test::accessibility;
using test::controlsOn;
using test::countActions;
using test::serverActions;
using test::ServerKeysTest;
using test::serversOwn;
using test::ServerState;
using test::setControls;
using test::setLayout;
using test::spinFor;
using test::spinUntil;
using namespace std::chrono_literals;

} // namespace

TEST_F(ServerKeysTest, ServersActionsAreOutOfEveryKeymapAndBackAfterwards) {
    ASSERT_GT(countActions(xcb, {XCB_XKB_SA_TYPE_TERMINATE}), 0U);
    ASSERT_GT(countActions(xcb, {XCB_XKB_SA_TYPE_SWITCH_SCREEN}), 0U);
    ASSERT_GT(countActions(xcb, {serversOwn}), 0U);
    const auto typing = countActions(xcb, {XCB_XKB_SA_TYPE_SET_MODS, XCB_XKB_SA_TYPE_LOCK_MODS,
                                           XCB_XKB_SA_TYPE_LOCK_GROUP, XCB_XKB_SA_TYPE_SET_GROUP});
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    ASSERT_TRUE(keys.areClosed());
    EXPECT_EQ(countActions(xcb, serverActions), 0U);
    EXPECT_EQ(countActions(xcb, {XCB_XKB_SA_TYPE_SET_MODS, XCB_XKB_SA_TYPE_LOCK_MODS, XCB_XKB_SA_TYPE_LOCK_GROUP,
                                 XCB_XKB_SA_TYPE_SET_GROUP}),
              typing);
    keys.reopen();
    EXPECT_FALSE(keys.areClosed());
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysTest, ZapReachesTheProgramAsAKeyAndEndsNothing) {
    const auto window = other.openWindow(0, 0, 50, 50);
    other.focus(window);
    ServerKeys keys;
    keys.close();
    other.chord({KEY_LEFTCTRL, KEY_LEFTALT, KEY_BACKSPACE});
    other.chord({KEY_LEFTCTRL, KEY_LEFTALT, KEY_F1});
    EXPECT_EQ(other.count(XCB_KEY_PRESS, KEY_BACKSPACE), 1U);
    EXPECT_EQ(other.count(XCB_KEY_PRESS, KEY_F1), 1U);
}

TEST_F(ServerKeysTest, BindingToTheKeysOfASingleDeviceGetsNothing) {
    auto binding = test::DeviceBinding::ofKey(KEY_F9);
    ASSERT_TRUE(other.grabKeyboard()) << "a grab alone does not stop it";
    other.tap(KEY_F9);
    EXPECT_EQ(binding.presses(), 1U);
    other.forget();
    ServerKeys keys;
    keys.close();
    other.tap(KEY_F9);
    other.chord({KEY_LEFTCTRL, KEY_LEFTALT, KEY_F9});
    EXPECT_EQ(binding.presses(), 1U);
    EXPECT_EQ(other.count(XCB_KEY_PRESS, KEY_F9), 2U);
    keys.reopen();
    other.tap(KEY_F9);
    EXPECT_EQ(binding.presses(), 2U);
}

TEST_F(ServerKeysTest, BindingToTheButtonsOfASingleDeviceGetsNothing) {
    constexpr std::uint8_t middle = 2;
    constexpr std::uint8_t wheelUp = 4;
    constexpr std::uint8_t forward = 9;
    for (const std::uint8_t button : {middle, wheelUp, forward}) {
        auto binding = test::DeviceBinding::ofButton(button);
        other.click(button);
        ASSERT_EQ(binding.presses(), 1U) << int{button};
        ServerKeys keys;
        keys.close();
        ASSERT_TRUE(keys.areClosed());
        other.click(button);
        EXPECT_EQ(binding.presses(), 1U) << int{button};
        keys.reopen();
        other.click(button);
        EXPECT_EQ(binding.presses(), 2U) << int{button};
    }
}

TEST_F(ServerKeysTest, LeftAndRightClicksArriveOfALeftHandedMouseToo) {
    const auto device = test::clickingDevice(xcb);
    const auto before = test::buttonMap(xcb, device);
    ASSERT_GE(before.size(), 9U);
    auto leftHanded = before;
    std::swap(leftHanded[0], leftHanded[2]);
    ASSERT_TRUE(test::setButtonMap(xcb, device, leftHanded));
    const auto window = other.openWindow(0, 0, 50, 50);
    other.movePointer(10, 10);
    ServerKeys keys;
    keys.close();
    for (const std::uint8_t button : {std::uint8_t{1}, std::uint8_t{2}, std::uint8_t{3}, std::uint8_t{9}}) {
        other.click(button);
    }
    // XTest's own numbers are those of the buttons.
    EXPECT_EQ(other.count(XCB_BUTTON_PRESS, 1), 1U);
    EXPECT_EQ(other.count(XCB_BUTTON_PRESS, 3), 1U);
    EXPECT_EQ(other.seen().size(), 4U) << "two clicks, in window " << window;
    keys.reopen();
    EXPECT_EQ(test::buttonMap(xcb, device), leftHanded);
    ASSERT_TRUE(test::setButtonMap(xcb, device, before));
}

TEST_F(ServerKeysTest, ButtonsThatTheDesktopChangesMeanwhileAreClosedAgainAndThenLeftAsItWasMeant) {
    const auto device = test::clickingDevice(xcb);
    const auto before = test::buttonMap(xcb, device);
    auto meant = before;
    std::swap(meant[0], meant[2]);
    std::swap(meant[3], meant[4]);
    ServerKeys keys;
    keys.close();
    const auto closed = test::buttonMap(xcb, device);
    ASSERT_TRUE(test::setButtonMap(xcb, device, meant));
    const auto isSilent = [&] {
        const auto map = test::buttonMap(xcb, device);
        return std::count(map.begin(), map.end(), 0) == std::count(closed.begin(), closed.end(), 0);
    };
    EXPECT_TRUE(spinUntil(isSilent));
    keys.reopen();
    EXPECT_EQ(test::buttonMap(xcb, device), meant);
    ASSERT_TRUE(test::setButtonMap(xcb, device, before));
}

TEST_F(ServerKeysTest, ButtonThatIsHeldAtTheEndIsPutBackWhenItComesUp) {
    constexpr std::uint8_t middle = 2;
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    other.pressButton(middle);
    keys.reopen();
    EXPECT_NE(before.differencesTo(ServerState::read(xcb)), "");
    EXPECT_GT(countActions(xcb, {XCB_XKB_SA_TYPE_TERMINATE}), 0U) << "all else is";
    other.releaseButton(middle);
    EXPECT_TRUE(spinUntil([&] { return before.differencesTo(ServerState::read(xcb)).empty(); }))
        << before.differencesTo(ServerState::read(xcb));
}

TEST_F(ServerKeysTest, ButtonThatIsHeldOverTheStartOfTheNextSessionIsPutBackAfterThatOne) {
    constexpr std::uint8_t middle = 2;
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    other.pressButton(middle);
    keys.reopen();
    other.tap(KEY_NUMLOCK); // between the two, so that it is to be kept
    keys.close();
    EXPECT_TRUE(keys.areClosed());
    other.releaseButton(middle);
    other.tap(KEY_CAPSLOCK);
    keys.reopen();
    EXPECT_NE(before.differencesTo(ServerState::read(xcb)), "");
    other.tap(KEY_NUMLOCK);
    EXPECT_TRUE(spinUntil([&] { return before.differencesTo(ServerState::read(xcb)).empty(); }))
        << before.differencesTo(ServerState::read(xcb));
}

TEST_F(ServerKeysTest, FiveShiftsSwitchNothingOn) {
    const auto fiveShifts = [this] {
        for (int i = 0; i < 5; ++i) {
            other.tap(KEY_LEFTSHIFT);
        }
    };
    const auto before = ServerState::read(xcb);
    {
        ServerKeys keys;
        keys.close();
        fiveShifts();
        EXPECT_EQ(controlsOn(xcb) & (accessibility | XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS), 0U);
    }
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
    fiveShifts();
    EXPECT_NE(controlsOn(xcb) & XCB_XKB_BOOL_CTRL_STICKY_KEYS, 0U) << "with the keys open they do";
}

TEST_F(ServerKeysTest, ShiftHeldForLongSwitchesNothingOn) {
    const auto shiftForLong = [this] {
        other.press(KEY_LEFTSHIFT);
        spinFor(9s);
        other.release(KEY_LEFTSHIFT);
    };
    const auto before = ServerState::read(xcb);
    {
        ServerKeys keys;
        keys.close();
        shiftForLong();
        EXPECT_EQ(controlsOn(xcb) & (accessibility | XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS), 0U);
    }
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
    shiftForLong();
    EXPECT_NE(controlsOn(xcb) & XCB_XKB_BOOL_CTRL_SLOW_KEYS, 0U) << "with the keys open it does";
}

TEST_F(ServerKeysTest, LocksAndLayoutOfTheChildAreUndone) {
    other.tap(KEY_NUMLOCK);
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    other.tap(KEY_CAPSLOCK);
    other.tap(KEY_NUMLOCK);
    other.tap(KEY_COMPOSE);
    const auto during = own(xcb_xkb_get_state_reply(xcb, xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    EXPECT_EQ(during->lockedMods, XCB_MOD_MASK_LOCK);
    EXPECT_EQ(during->lockedGroup, 1);
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
    other.tap(KEY_NUMLOCK);
}

TEST_F(ServerKeysTest, LockThatWasOnStaysOnWhenOnlyAnotherIsUndone) {
    other.tap(KEY_NUMLOCK);
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    other.tap(KEY_CAPSLOCK);
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
    other.tap(KEY_NUMLOCK);
}

TEST_F(ServerKeysTest, LatchedModifierIsBackAfterwards) {
    setControls(xcb, XCB_XKB_BOOL_CTRL_STICKY_KEYS, XCB_XKB_BOOL_CTRL_STICKY_KEYS);
    other.tap(KEY_LEFTSHIFT);
    const auto latched = own(xcb_xkb_get_state_reply(xcb, xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    ASSERT_EQ(latched->latchedMods, XCB_MOD_MASK_SHIFT);
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    EXPECT_NE(controlsOn(xcb) & XCB_XKB_BOOL_CTRL_STICKY_KEYS, 0U) << "who needs them has them on";
    other.tap(KEY_A);
    EXPECT_NE(before.differencesTo(ServerState::read(xcb)), "");
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
    other.tap(KEY_A);
}

TEST_F(ServerKeysTest, NewKeymapDuringTheSessionIsClosedAndThenLeftAsItWasMeant) {
    ServerKeys keys;
    keys.close();
    setLayout("de -option terminate:ctrl_alt_bksp");
    EXPECT_TRUE(spinUntil([&] { return countActions(xcb, serverActions) == 0; }));
    keys.reopen();
    const auto left = ServerState::read(xcb);
    setLayout("de -option terminate:ctrl_alt_bksp");
    EXPECT_EQ(left.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysTest, KeyboardPluggedInMeanwhileIsClosedToo) {
    ServerKeys keys;
    keys.close();
    test::PluggedSeat seat(xcb);
    ASSERT_FALSE(seat.keyboards().empty());
    const auto isClosed = [&](auto device) { return countActions(xcb, device, serverActions) == 0; };
    EXPECT_TRUE(spinUntil([&] { return std::all_of(seat.keyboards().begin(), seat.keyboards().end(), isClosed); }, 1s));
    keys.reopen();
    EXPECT_FALSE(isClosed(seat.keyboards().front()));
}

TEST_F(ServerKeysTest, KeyboardPulledOutMeanwhileEndsNothing) {
    const auto before = ServerState::read(xcb);
    test::PluggedSeat seat(xcb);
    ServerKeys keys;
    keys.close();
    seat.unplug();
    spinFor(200ms);
    EXPECT_TRUE(keys.areClosed());
    EXPECT_EQ(countActions(xcb, serverActions), 0U);
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysTest, KeysOfAnotherSeatReachNobody) {
    const test::PluggedSeat seat(xcb);
    const auto window = other.openWindow(0, 0, 50, 50);
    seat.focus(window);
    const auto reaches = [&] {
        other.forget();
        seat.tap(KEY_A);
        return spinUntil([&] { return other.count(XCB_KEY_PRESS, KEY_A) > 0; }, 100ms);
    };
    EXPECT_TRUE(reaches());
    ServerKeys keys;
    keys.close();
    EXPECT_TRUE(keys.areClosed());
    EXPECT_FALSE(reaches());
    keys.reopen();
    EXPECT_TRUE(reaches());
}

TEST_F(ServerKeysTest, KeysOfASeatThatComesMeanwhileReachNobodyAfterASecond) {
    const auto window = other.openWindow(0, 0, 50, 50);
    ServerKeys keys;
    keys.close();
    const test::PluggedSeat seat(xcb);
    seat.focus(window);
    spinFor(1s);
    seat.tap(KEY_A);
    spinFor(100ms);
    EXPECT_EQ(other.count(XCB_KEY_PRESS, KEY_A), 0U);
}

TEST_F(ServerKeysTest, TheyAreClosedFromTheFirstTapToTheLast) {
    SecureInput secureInput;
    X11EventMonitors monitors(connection);
    X11EventTaps taps(connection, monitors, secureInput);
    EXPECT_FALSE(taps.serverKeysAreClosed());
    const auto swallow = [](const InputEvent&) { return Verdict::consume; };
    const auto create = [&] {
        return taps.createTap(TapLocation::session, TapPlacement::headInsert, TapOptions::activeFilter, ~EventMask{0},
                              swallow);
    };
    const auto first = create();
    const auto second = create();
    EXPECT_TRUE(taps.serverKeysAreClosed());
    taps.removeSource(taps.createRunLoopSource(first.value()));
    taps.enableTap(second.value(), false);
    EXPECT_TRUE(taps.serverKeysAreClosed());
    taps.removeSource(taps.createRunLoopSource(second.value()));
    EXPECT_FALSE(taps.serverKeysAreClosed());
    EXPECT_GT(countActions(xcb, serverActions), 0U);
}

} // namespace tapalong
