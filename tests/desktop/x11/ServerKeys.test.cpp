#include "platform/linux/x11/ServerKeys.h"

#include "desktop/support/EventLoop.h"
#include "desktop/support/XClient.h"
#include "desktop/x11/ServerState.h"
#include "platform/linux/x11/X11EventTaps.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <fstream>

namespace tapalong {

namespace {

using test::controlsOn;
using test::countActions;
using test::ServerState;
using test::setLayout;
using test::spinFor;
using test::spinUntil;
using namespace std::chrono_literals;

constexpr std::uint8_t serversOwn = 0x86; // breaking grabs, changing the video mode
const std::vector<std::uint8_t> serverActions{XCB_XKB_SA_TYPE_TERMINATE,      XCB_XKB_SA_TYPE_SWITCH_SCREEN,
                                              XCB_XKB_SA_TYPE_SET_CONTROLS,   XCB_XKB_SA_TYPE_LOCK_CONTROLS,
                                              XCB_XKB_SA_TYPE_LOCK_PTR_BTN,   XCB_XKB_SA_TYPE_SET_PTR_DFLT,
                                              XCB_XKB_SA_TYPE_ACTION_MESSAGE, serversOwn};
constexpr std::uint32_t accessibility = XCB_XKB_BOOL_CTRL_SLOW_KEYS | XCB_XKB_BOOL_CTRL_STICKY_KEYS |
                                        XCB_XKB_BOOL_CTRL_BOUNCE_KEYS | XCB_XKB_BOOL_CTRL_MOUSE_KEYS;

class ServerKeysTest : public testing::Test {
protected:
    ServerKeysTest() {
        setLayout("us,ru -option terminate:ctrl_alt_bksp,grab:break_actions,grp:menu_toggle");
        setAllControls(XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS, XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS);
    }

    ~ServerKeysTest() override { setAllControls(XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS | accessibility, 0); }

    void setAllControls(std::uint32_t which, std::uint32_t enabled) {
        constexpr std::array<std::uint8_t, 32> repeats{};
        for (const auto device : test::keyboardDevices(xcb)) {
            xcb_xkb_set_controls(xcb, device, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, which, enabled,
                                 XCB_XKB_CONTROL_CONTROLS_ENABLED, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                 repeats.data());
        }
        (void)controlsOn(xcb); // an answer, so it is done
    }

    /// The process that closes the keys, as the only child of this one besides the display's server.
    static std::vector<pid_t> guards() {
        std::vector<pid_t> found;
        std::ifstream children("/proc/self/task/" + std::to_string(getpid()) + "/children");
        for (pid_t child = 0; children >> child;) {
            std::string name;
            std::getline(std::ifstream("/proc/" + std::to_string(child) + "/comm") >> std::ws, name);
            if (name == "x11-keys-guard") {
                found.push_back(child);
            }
        }
        return found;
    }

    /// While the keys are closed, in the same instant, with Caps Lock on that was off before.
    void killProgramAndGuard() {
        std::array<int, 2> ready{};
        ASSERT_EQ(pipe(ready.data()), 0);
        const pid_t program = fork();
        if (program == 0) {
            const auto guard = GuardProcess::start(ServerKeys::guardBesideProgram());
            const bool isClosed = guard && guard->listen(10s) == GuardProcess::Word::closed;
            const pid_t process = isClosed ? guards().at(0) : 0;
            (void)!write(ready[1], &process, sizeof process);
            pause();
            _exit(0);
        }
        pid_t guard = 0;
        ASSERT_EQ(read(ready[0], &guard, sizeof guard), static_cast<ssize_t>(sizeof guard));
        ASSERT_NE(guard, 0);
        other.tap(KEY_CAPSLOCK);
        kill(guard, SIGKILL);
        kill(program, SIGKILL);
        waitpid(program, nullptr, 0);
        close(ready[0]);
        close(ready[1]);
        // What the server does when a connection ends, it does a moment later.
        (void)spinUntil([&] { return (controlsOn(xcb) & XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS) != 0; });
    }

    X11Connection connection; // speaks XKB and XInput 2, as the asking below has to
    xcb_connection_t* xcb = connection.xcb();
    test::XClient other;
};

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
    test::DeviceBinding binding(KEY_F9);
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
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    other.press(KEY_LEFTSHIFT);
    spinFor(9s);
    other.release(KEY_LEFTSHIFT);
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
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

TEST_F(ServerKeysTest, LatchedModifierIsBackAfterwards) {
    setAllControls(XCB_XKB_BOOL_CTRL_STICKY_KEYS, XCB_XKB_BOOL_CTRL_STICKY_KEYS);
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

TEST_F(ServerKeysTest, EverythingIsPutBackWhenTheProgramIsKilled) {
    const auto before = ServerState::read(xcb);
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    const pid_t program = fork();
    if (program == 0) {
        const auto guard = GuardProcess::start(ServerKeys::guardBesideProgram());
        const bool isClosed = guard && guard->listen(10s) == GuardProcess::Word::closed;
        (void)!write(ready[1], isClosed ? "y" : "n", 1);
        pause();
        _exit(0);
    }
    char answer = 0;
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    ASSERT_EQ(answer, 'y');
    EXPECT_EQ(countActions(xcb, serverActions), 0U);
    other.tap(KEY_CAPSLOCK);
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
    EXPECT_TRUE(spinUntil([&] { return before.differencesTo(ServerState::read(xcb)).empty(); }))
        << before.differencesTo(ServerState::read(xcb));
    close(ready[0]);
    close(ready[1]);
}

TEST_F(ServerKeysTest, KilledGuardIsReplacedAndNothingIsForgotten) {
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    const auto first = guards();
    ASSERT_EQ(first.size(), 1U);
    other.tap(KEY_CAPSLOCK);
    kill(first.front(), SIGKILL);
    ASSERT_TRUE(spinUntil([&] { return !guards().empty() && guards() != first && keys.areClosed(); }));
    EXPECT_EQ(countActions(xcb, serverActions), 0U);
    keys.reopen();
    EXPECT_TRUE(guards().empty());
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysTest, GuardKilledAtTheVeryEndStillLeavesNothing) {
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    kill(guards().at(0), SIGKILL);
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysTest, WhatProgramAndGuardLeftThatWereKilledTogetherIsPutBackByTheNextProgram) {
    const auto before = ServerState::read(xcb);
    killProgramAndGuard();
    EXPECT_EQ(countActions(xcb, serverActions), 0U) << "nobody is left to put them back";
    EXPECT_NE(controlsOn(xcb) & XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS, 0U) << "the server does this by itself";
    ServerKeys next;
    next.putBackLeftOver(connection);
    EXPECT_FALSE(next.areClosed());
    EXPECT_TRUE(guards().empty());
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
    next.putBackLeftOver(connection);
    EXPECT_TRUE(guards().empty());
}

TEST_F(ServerKeysTest, WhatProgramAndGuardLeftThatWereKilledTogetherIsPutBackByTheNextSession) {
    const auto before = ServerState::read(xcb);
    killProgramAndGuard();
    ServerKeys next;
    next.close();
    EXPECT_TRUE(next.areClosed());
    next.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysTest, WhatAnotherProgramHasClosedIsNoLeftOver) {
    ServerKeys another;
    another.close();
    ServerKeys next;
    next.putBackLeftOver(connection);
    EXPECT_EQ(countActions(xcb, serverActions), 0U);
    another.reopen();
    EXPECT_GT(countActions(xcb, serverActions), 0U);
}

TEST_F(ServerKeysTest, SignalsThatAskAProgramToEndDoNotEndTheGuard) {
    ServerKeys keys;
    keys.close();
    const auto guard = guards().at(0);
    for (const int each : {SIGHUP, SIGINT, SIGTERM}) {
        kill(guard, each);
    }
    spinFor(100ms);
    EXPECT_EQ(guards(), std::vector{guard});
    EXPECT_TRUE(keys.areClosed());
}

TEST_F(ServerKeysTest, GuardThatCannotBeStartedIsSaid) {
    ServerKeys keys("/nowhere/guard");
    EXPECT_FALSE(keys.canBeClosed());
    keys.close();
    EXPECT_FALSE(keys.areClosed());
    keys.reopen();
    EXPECT_FALSE(keys.areClosed());
}

TEST_F(ServerKeysTest, GuardThatFailedIsExpectedToFailAgain) {
    ServerKeys keys("/bin/false");
    EXPECT_TRUE(keys.canBeClosed());
    keys.close();
    EXPECT_FALSE(keys.areClosed());
    keys.reopen();
    EXPECT_FALSE(keys.canBeClosed());
}

TEST_F(ServerKeysTest, GuardThatDidItsWorkIsExpectedToDoItAgain) {
    ServerKeys keys;
    EXPECT_TRUE(keys.canBeClosed());
    keys.close();
    EXPECT_TRUE(keys.areClosed());
    keys.reopen();
    EXPECT_TRUE(keys.canBeClosed());
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
