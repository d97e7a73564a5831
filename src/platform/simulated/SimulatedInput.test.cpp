#include "platform/simulated/SimulatedInput.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tapalong::simulated {
namespace {

using Receiver = SimulatedInput::Receiver;

constexpr EventMask keyDowns = maskOf(EventType::keyDown);
const InputEvent keyDown{.type = EventType::keyDown};
const InputEvent wheel{.type = EventType::scrollWheel};

struct SimulatedInputTest : testing::Test {
    EffectLog effects;
    SimulatedInput input{effects};
    std::string seen;

    std::optional<TapHandle> createTap(char name, Verdict verdict,
                                       EventMask mask = keyDowns | maskOf(EventType::scrollWheel)) {
        return input.createTap(TapLocation::session, TapPlacement::headInsert, TapOptions::activeFilter, mask,
                               [this, name, verdict](const InputEvent&) {
                                   seen += name;
                                   return verdict;
                               });
    }
    TapHandle install(char name, Verdict verdict) {
        const auto tap = createTap(name, verdict).value();
        input.addSource(input.createRunLoopSource(tap));
        input.enableTap(tap, true);
        return tap;
    }
};

TEST_F(SimulatedInputTest, ATapComesBeforeEverybodyElse) {
    install('t', Verdict::consume);
    std::ignore = input.addLocalMonitorForEvents(keyDowns, [this](const InputEvent&) {
        seen += 'l';
        return Verdict::pass;
    });
    EXPECT_EQ(input.deliver(keyDown, true), Receiver::tap);
    EXPECT_EQ(input.deliver(keyDown, false), Receiver::tap);
    EXPECT_EQ(seen, "tt");
}

TEST_F(SimulatedInputTest, ATapTakesEffectOnlyEnabledAndOnTheRunLoop) {
    const auto tap = createTap('t', Verdict::consume).value();
    EXPECT_EQ(input.deliver(keyDown, true), Receiver::ownWindow);
    input.enableTap(tap, true);
    EXPECT_FALSE(input.isTapInForce());
    EXPECT_EQ(input.deliver(keyDown, true), Receiver::ownWindow);
    const auto source = input.createRunLoopSource(tap);
    input.addSource(source);
    EXPECT_TRUE(input.isTapInForce());
    EXPECT_EQ(input.deliver(keyDown, true), Receiver::tap);
    input.enableTap(tap, false);
    EXPECT_EQ(input.deliver(keyDown, true), Receiver::ownWindow);
    input.removeSource(source);
    EXPECT_EQ(input.tapCount(), 0U);
}

TEST_F(SimulatedInputTest, ATapIsHandedOnlyWhatItsMaskNames) {
    install('t', Verdict::consume);
    EXPECT_EQ(input.deliver(InputEvent{.type = EventType::keyUp}, true), Receiver::ownWindow);
    EXPECT_EQ(seen, "");
}

TEST_F(SimulatedInputTest, WhatOneTapPassesTheNextOneGets) {
    install('a', Verdict::pass);
    install('b', Verdict::consume);
    EXPECT_EQ(input.deliver(keyDown, true), Receiver::tap);
    EXPECT_EQ(seen, "ab");
}

TEST_F(SimulatedInputTest, OurEventsGoToLocalMonitorsAndThenToOurWindow) {
    Verdict verdict = Verdict::consume;
    std::ignore = input.addLocalMonitorForEvents(keyDowns, [&](const InputEvent&) { return verdict; });
    std::ignore = input.addGlobalMonitorForEvents(keyDowns, [this](const InputEvent&) { seen += 'g'; });
    input.setWindowHandler([this](const InputEvent&) { seen += 'w'; });
    EXPECT_EQ(input.deliver(keyDown, true), Receiver::localMonitor);
    verdict = Verdict::pass;
    EXPECT_EQ(input.deliver(keyDown, true), Receiver::ownWindow);
    EXPECT_EQ(seen, "w");
}

TEST_F(SimulatedInputTest, OtherApplicationsEventsAreOnlyObserved) {
    std::ignore = input.addGlobalMonitorForEvents(keyDowns, [this](const InputEvent&) { seen += 'g'; });
    EXPECT_EQ(input.deliver(keyDown, false), Receiver::otherApplication);
    EXPECT_EQ(seen, "g");
}

TEST_F(SimulatedInputTest, SecureInputKeepsKeysFromTapsAndGlobalMonitorsAndNothingElse) {
    install('t', Verdict::consume);
    std::ignore = input.addGlobalMonitorForEvents(keyDowns, [this](const InputEvent&) { seen += 'g'; });
    input.setSecureInput(true);
    EXPECT_EQ(input.deliver(keyDown, true), Receiver::ownWindow);
    EXPECT_EQ(input.deliver(keyDown, false), Receiver::otherApplication);
    EXPECT_EQ(seen, "");
    EXPECT_EQ(input.deliver(wheel, true), Receiver::tap);
}

TEST_F(SimulatedInputTest, ATakenTapIsToldAndStaysDisabledUntilItIsEnabledAgain) {
    const auto tap = install('t', Verdict::pass);
    input.disableTaps(EventType::tapDisabledByTimeout);
    EXPECT_EQ(seen, "t");
    EXPECT_FALSE(input.isTapInForce());
    input.disableTaps(EventType::tapDisabledByTimeout);
    EXPECT_EQ(seen, "t") << "what is disabled cannot be taken away";
    input.enableTap(tap, true);
    EXPECT_TRUE(input.isTapInForce());
}

TEST_F(SimulatedInputTest, ATapIsEnabledBetweenEnablingAndDisabling) {
    const auto tap = createTap('t', Verdict::pass).value();
    EXPECT_FALSE(input.isTapEnabled(tap));
    input.enableTap(tap, true);
    EXPECT_TRUE(input.isTapEnabled(tap));
    input.enableTap(tap, false);
    EXPECT_FALSE(input.isTapEnabled(tap));
}

TEST_F(SimulatedInputTest, ATapThatIsRefusedItsKeyboardIsToldWhenItMayBeHad) {
    const auto tap = install('t', Verdict::pass);
    input.disableTaps(EventType::tapDisabledByUserInput);
    input.setTapsAvailable(false);
    seen.clear();
    input.enableTap(tap, true);
    EXPECT_FALSE(input.isTapEnabled(tap));
    EXPECT_EQ(seen, "");
    input.setTapsAvailable(true);
    EXPECT_EQ(seen, "t");
    EXPECT_FALSE(input.isTapEnabled(tap)) << "it is told, and enables itself";
    input.setTapsAvailable(true);
    EXPECT_EQ(seen, "t") << "told once";
}

TEST_F(SimulatedInputTest, ATapThatWasGivenUpIsToldNothing) {
    const auto tap = install('t', Verdict::pass);
    input.setTapsAvailable(false);
    input.enableTap(tap, true);
    input.enableTap(tap, false);
    input.setTapsAvailable(true);
    EXPECT_EQ(seen, "");
}

TEST_F(SimulatedInputTest, NoTapComesWhileAnotherProgramHoldsTheKeyboard) {
    input.setTapsAvailable(false);
    EXPECT_EQ(createTap('t', Verdict::consume), std::nullopt);
    EXPECT_EQ(input.tapCount(), 0U);
}

TEST_F(SimulatedInputTest, HandlesOfATapThatIsGoneMeanNothing) {
    const auto tap = install('t', Verdict::consume);
    input.removeSource(input.createRunLoopSource(tap));
    input.enableTap(tap, true);
    input.addSource(input.createRunLoopSource(tap));
    EXPECT_FALSE(input.isTapInForce());
    EXPECT_FALSE(input.isTapEnabled(tap));
}

TEST_F(SimulatedInputTest, EveryCallIsRecorded) {
    input.removeMonitor(input.addLocalMonitorForEvents(keyDowns, [](const InputEvent&) { return Verdict::pass; }));
    std::ignore = input.addGlobalMonitorForEvents(keyDowns, [](const InputEvent&) {});
    const auto tap = createTap('t', Verdict::pass, keyDowns).value();
    const auto source = input.createRunLoopSource(tap);
    input.addSource(source);
    input.enableTap(tap, true);
    input.enableTap(tap, false);
    input.removeSource(source);
    EXPECT_EQ(effects.all(),
              (std::vector<std::string>{"monitor.addLocal mask=1024", "monitor.remove", "monitor.addGlobal mask=1024",
                                        "tap.create location=1 placement=0 options=0 mask=1024", "tap.createSource",
                                        "tap.addSource", "tap.enable", "tap.disable", "tap.removeSource"}));
}

} // namespace
} // namespace tapalong::simulated
