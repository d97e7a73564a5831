// The guard that dies, the one that fails, and the one that stays although all around it goes.

#include "platform/linux/x11/ServerKeys.h"

#include "desktop/support/EventLoop.h"
#include "desktop/x11/Guards.h"
#include "desktop/x11/ServerKeysTest.h"
#include "platform/linux/x11/ServerKeysNote.h"

#include <linux/input-event-codes.h>
#include <sys/wait.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <stop_token>
#include <thread>
#include <utility>

namespace tapalong {

namespace {

using test::controlsOn;
using test::countActions;
using test::FakeGuard;
using test::runningGuards;
using test::serverActions;
using test::ServerState;
using test::spinFor;
using test::spinUntil;
using namespace std::chrono_literals;

/// Another program that switches the accessibility hot keys on again and again, for as long as this lives.
class HotKeysInsister {
private:
    static void insist(const std::stop_token& stop) {
        const test::XClient client;
        auto* const xcb = client.xcb();
        (void)own(xcb_xkb_use_extension_reply(xcb, xcb_xkb_use_extension(xcb, 1, 0), nullptr));
        (void)own(xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
        while (!stop.stop_requested()) {
            test::setControls(xcb, XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS, XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS);
            std::this_thread::sleep_for(5ms);
        }
    }

    std::jthread m_thread{insist};
};

class ServerKeysGuardTest : public test::ServerKeysTest {
protected:
    /// By which the server knows the guard that is at work; none where there is none.
    [[nodiscard]] xcb_window_t windowOfGuard() const {
        const auto request = xcb_intern_atom(xcb, 0, serverKeysNote.size(), serverKeysNote.data());
        const auto name = own(xcb_intern_atom_reply(xcb, request, nullptr));
        return own(xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, name->atom), nullptr))->owner;
    }

    /// While the keys are closed, in the same instant, with Caps Lock on that was off before.
    void killProgramAndGuard() {
        const auto controls = controlsOn(xcb);
        std::array<int, 2> ready{};
        ASSERT_EQ(pipe(ready.data()), 0);
        const pid_t program = fork();
        if (program == 0) {
            const auto guard = GuardProcess::start(ServerKeys::guardBesideProgram());
            const bool isClosed = guard && guard->listen(10s) == GuardProcess::Word::closed;
            const pid_t process = isClosed ? runningGuards().at(0) : 0;
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
        ASSERT_TRUE(spinUntil([&] { return windowOfGuard() == XCB_NONE && controlsOn(xcb) == controls; }));
    }
};

} // namespace

TEST_F(ServerKeysGuardTest, EverythingIsPutBackWhenTheProgramIsKilled) {
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

TEST_F(ServerKeysGuardTest, KilledGuardIsReplacedAndNothingIsForgotten) {
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    const auto first = runningGuards();
    ASSERT_EQ(first.size(), 1U);
    other.tap(KEY_CAPSLOCK);
    kill(first.front(), SIGKILL);
    ASSERT_TRUE(spinUntil([&] { return !runningGuards().empty() && runningGuards() != first && keys.areClosed(); }));
    EXPECT_EQ(countActions(xcb, serverActions), 0U);
    keys.reopen();
    EXPECT_TRUE(runningGuards().empty());
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysGuardTest, GuardKilledAtTheVeryEndStillLeavesNothing) {
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    kill(runningGuards().at(0), SIGKILL);
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysGuardTest, GuardThatLosesTheServerAtTheVeryEndStillLeavesNothing) {
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    ASSERT_NE(windowOfGuard(), XCB_NONE);
    ASSERT_EQ(own(xcb_request_check(xcb, xcb_kill_client_checked(xcb, windowOfGuard()))), nullptr);
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysGuardTest, OnlyAGuardThatLeavesAndSaysSoHasEnded) {
    const auto wordOf = [](const std::string& line) {
        const FakeGuard fake(line);
        const auto guard = GuardProcess::start(fake.program());
        guard->endInput();
        return guard->listen(10s);
    };
    EXPECT_EQ(wordOf("exit 0"), GuardProcess::Word::ended);
    EXPECT_EQ(wordOf("exit 1"), GuardProcess::Word::failed);
    EXPECT_EQ(wordOf("kill -KILL $$"), GuardProcess::Word::failed);
    // As a program does whose starter ignored it.
    std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(wordOf("exit 0"), GuardProcess::Word::failed) << "nobody can know";
    std::signal(SIGCHLD, SIG_DFL);
}

TEST_F(ServerKeysGuardTest, WhatProgramAndGuardLeftThatWereKilledTogetherIsPutBackByTheNextProgram) {
    const auto before = ServerState::read(xcb);
    killProgramAndGuard();
    EXPECT_EQ(countActions(xcb, serverActions), 0U) << "nobody is left to put them back";
    EXPECT_NE(controlsOn(xcb) & XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS, 0U) << "the server does this by itself";
    ServerKeys next;
    next.putBackLeftOver(connection);
    EXPECT_FALSE(next.areClosed());
    EXPECT_TRUE(runningGuards().empty());
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
    next.putBackLeftOver(connection);
    EXPECT_TRUE(runningGuards().empty());
}

TEST_F(ServerKeysGuardTest, WhatProgramAndGuardLeftThatWereKilledTogetherIsPutBackByTheNextSession) {
    const auto before = ServerState::read(xcb);
    killProgramAndGuard();
    ServerKeys next;
    next.close();
    EXPECT_TRUE(next.areClosed());
    next.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysGuardTest, WhoeverPutsBackWhatWasLeftHoldsNoDevice) {
    constexpr std::uint8_t middle = 2;
    // The hot keys are off on most desktops, and a guard has less to ask of the server then.
    test::setControls(xcb, XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS, 0);
    const auto before = ServerState::read(xcb);
    killProgramAndGuard();
    other.pressButton(middle);
    ServerKeys next;
    next.putBackLeftOver(connection);
    EXPECT_EQ(runningGuards().size(), 1U) << "which waits for the button";
    EXPECT_TRUE(next.canBeClosed());
    EXPECT_TRUE(other.grabKeyboard());
    other.ungrabKeyboard();
    other.releaseButton(middle);
    EXPECT_TRUE(spinUntil([&] { return before.differencesTo(ServerState::read(xcb)).empty(); }))
        << before.differencesTo(ServerState::read(xcb));
}

TEST_F(ServerKeysGuardTest, GuardThatWakesUpInTheNextSessionLeavesItAlone) {
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    const pid_t late = runningGuards().at(0);
    kill(late, SIGSTOP);
    keys.reopen();
    keys.close();
    EXPECT_TRUE(keys.areClosed());
    other.tap(KEY_NUMLOCK);
    const auto during = ServerState::read(xcb);
    kill(late, SIGCONT);
    siginfo_t end{};
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(late), &end, WEXITED | WNOWAIT), 0);
    spinFor(200ms);
    EXPECT_EQ(during.differencesTo(ServerState::read(xcb)), "");
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysGuardTest, WhatAnotherProgramHasClosedIsNoLeftOver) {
    ServerKeys another;
    another.close();
    ServerKeys next;
    next.putBackLeftOver(connection);
    EXPECT_EQ(countActions(xcb, serverActions), 0U);
    another.reopen();
    EXPECT_GT(countActions(xcb, serverActions), 0U);
}

TEST_F(ServerKeysGuardTest, SignalsThatAskAProgramToEndDoNotEndTheGuard) {
    ServerKeys keys;
    keys.close();
    const pid_t guard = runningGuards().at(0);
    for (const int each : {SIGHUP, SIGINT, SIGTERM}) {
        kill(guard, each);
    }
    spinFor(100ms);
    EXPECT_EQ(runningGuards(), std::vector<pid_t>{guard});
    EXPECT_TRUE(keys.areClosed());
}

TEST_F(ServerKeysGuardTest, ProgramThatInsistsOnTheHotKeysDoesNotKeepTheGuardFromPuttingBack) {
    ServerKeys keys;
    keys.close();
    const HotKeysInsister insister;
    ASSERT_TRUE(spinUntil([&] { return (controlsOn(xcb) & XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS) != 0; }));
    spinFor(200ms);
    EXPECT_EQ(countActions(xcb, serverActions), 0U);
    keys.reopen();
    EXPECT_TRUE(spinUntil([&] { return countActions(xcb, {XCB_XKB_SA_TYPE_TERMINATE}) > 0; }));
}

TEST_F(ServerKeysGuardTest, GuardThatCannotBeStartedIsSaid) {
    for (const char* const program : {"/nowhere/guard", ""}) {
        ServerKeys keys(program);
        EXPECT_FALSE(keys.canBeClosed());
        keys.close();
        EXPECT_FALSE(keys.areClosed());
        keys.reopen();
        EXPECT_FALSE(keys.areClosed());
    }
}

TEST_F(ServerKeysGuardTest, GuardThatFailedIsExpectedToFailAgain) {
    ServerKeys keys("/bin/false");
    EXPECT_TRUE(keys.canBeClosed());
    keys.close();
    EXPECT_FALSE(keys.areClosed());
    keys.reopen();
    EXPECT_FALSE(keys.canBeClosed());
}

TEST_F(ServerKeysGuardTest, GuardThatFailedGetsASuccessorThatIsHeard) {
    const auto before = ServerState::read(xcb);
    const FakeGuard guard("exit 1");
    ServerKeys keys(guard.program());
    int changes = 0;
    keys.whenChanged([&] { ++changes; });
    keys.close();
    EXPECT_FALSE(keys.areClosed());
    guard.becomes(ServerKeys::guardBesideProgram());
    EXPECT_TRUE(spinUntil([&] { return keys.areClosed(); }));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(countActions(xcb, serverActions), 0U);
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
    EXPECT_TRUE(keys.canBeClosed());
}

TEST_F(ServerKeysGuardTest, GuardThatIsMissingAndComesIsStarted) {
    const FakeGuard guard("exit 1");
    const auto late = guard.program() + "-late";
    ServerKeys keys(late);
    keys.close();
    EXPECT_FALSE(keys.areClosed());
    std::filesystem::create_symlink(ServerKeys::guardBesideProgram(), late);
    EXPECT_TRUE(spinUntil([&] { return keys.areClosed(); }));
}

TEST_F(ServerKeysGuardTest, GuardThatFailsAgainAndAgainIsNotStartedMoreOftenThanEveryTwoSeconds) {
    for (const auto& [line, count] : {std::pair("exit 1", 1), std::pair("echo closed", 2)}) {
        const int startsAtOnce = count;
        const FakeGuard guard(line);
        ServerKeys keys(guard.program());
        keys.close();
        EXPECT_TRUE(spinUntil([&] { return guard.starts() == startsAtOnce; })) << line;
        spinFor(1s);
        EXPECT_EQ(guard.starts(), startsAtOnce) << line;
        EXPECT_FALSE(keys.areClosed());
        EXPECT_TRUE(spinUntil([&] { return guard.starts() > startsAtOnce; })) << line;
    }
}

TEST_F(ServerKeysGuardTest, NoGuardIsStartedAfterTheEnd) {
    const FakeGuard guard("exit 1");
    ServerKeys keys(guard.program());
    keys.close();
    keys.reopen();
    const int starts = guard.starts();
    spinFor(2500ms);
    EXPECT_EQ(guard.starts(), starts);
}

TEST_F(ServerKeysGuardTest, DeviceThatAnotherProgramHoldsIsSaidUntilItIsHad) {
    const test::PluggedSeat seat(xcb);
    ASSERT_TRUE(seat.grab());
    ServerKeys keys;
    keys.close();
    EXPECT_FALSE(keys.areClosed());
    EXPECT_EQ(countActions(xcb, serverActions), 0U) << "what can be closed is";
    seat.ungrab();
    EXPECT_TRUE(spinUntil([&] { return keys.areClosed(); }));
    EXPECT_FALSE(seat.grab());
    keys.reopen();
    EXPECT_TRUE(keys.canBeClosed());
}

TEST_F(ServerKeysGuardTest, DeviceThatCannotBeHadLaterIsSaidToo) {
    ServerKeys keys;
    int changes = 0;
    keys.whenChanged([&] { ++changes; });
    keys.close();
    EXPECT_TRUE(keys.areClosed());
    const pid_t guard = runningGuards().at(0);
    kill(guard, SIGSTOP);
    const test::PluggedSeat seat(xcb);
    ASSERT_TRUE(seat.grab());
    kill(guard, SIGCONT);
    EXPECT_TRUE(spinUntil([&] { return !keys.areClosed(); }));
    seat.ungrab();
    EXPECT_TRUE(spinUntil([&] { return keys.areClosed(); }));
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(runningGuards(), std::vector<pid_t>{guard});
}

TEST_F(ServerKeysGuardTest, GuardThatEndsLateIsGoneByTheEndOfTheNextSession) {
    const auto before = ServerState::read(xcb);
    ServerKeys keys;
    keys.close();
    const pid_t late = runningGuards().at(0);
    kill(late, SIGSTOP);
    keys.reopen();
    EXPECT_EQ(runningGuards(), std::vector<pid_t>{late});
    kill(late, SIGCONT);
    EXPECT_TRUE(spinUntil([&] { return before.differencesTo(ServerState::read(xcb)).empty(); }));
    siginfo_t end{};
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(late), &end, WEXITED | WNOWAIT), 0);
    keys.close();
    EXPECT_TRUE(keys.areClosed());
    keys.reopen();
    EXPECT_EQ(kill(late, 0), -1) << "not even a number in the table of processes";
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

TEST_F(ServerKeysGuardTest, GuardThatDidItsWorkIsExpectedToDoItAgain) {
    ServerKeys keys;
    EXPECT_TRUE(keys.canBeClosed());
    keys.close();
    EXPECT_TRUE(keys.areClosed());
    keys.reopen();
    EXPECT_TRUE(keys.canBeClosed());
}

} // namespace tapalong
