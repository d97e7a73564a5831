#include "views/ShortcutRecorder.h"

#include "session/RecordingDelegate.test.h"
#include "settings/SettingsFixture.test.h"

#include <memory>

namespace tapalong {
namespace {

using simulated::keyEvent;
using Receiver = simulated::SimulatedInput::Receiver;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyT = 17;
constexpr std::int64_t keyK = 40;
constexpr std::int64_t keyEscape = 53;
constexpr std::int64_t keyF5 = 96;
constexpr std::int64_t keyLeft = 123;

struct ShortcutRecorderTest : SettingsFixture {
    RecordingDelegate delegate{world.effects};
    std::shared_ptr<ShortcutRecorder> recorder = std::make_shared<ShortcutRecorder>(settings, platform);

    Receiver press(std::int64_t keyCode, ModifierFlags flags = 0) { return world.send(keyEvent(keyCode, flags)); }

    void expectStored(std::int64_t keyCode, std::int64_t modifiers) {
        EXPECT_EQ(settings.globalShortcutKeyCode.get(), keyCode);
        EXPECT_EQ(settings.globalShortcutModifiers.get(), modifiers);
    }
    void expectNothingStored() {
        EXPECT_FALSE(world.defaults.stored.contains("globalShortcutKeyCode"));
        EXPECT_FALSE(world.defaults.stored.contains("globalShortcutModifiers"));
    }
};

TEST_F(ShortcutRecorderTest, NothingIsRecordedBeforeTheBadgeIsClicked) {
    EXPECT_FALSE(recorder->isRecordingShortcut());
    EXPECT_EQ(press(keyK, Modifier::command), Receiver::ownWindow);
    expectNothingStored();
}

TEST_F(ShortcutRecorderTest, RecordingWatchesKeyDownsAndModifierChanges) {
    EXPECT_EQ(effectsOf(world, [this] { recorder->startRecordingShortcut(); }), Effects{"monitor.addLocal mask=5120"});
    EXPECT_TRUE(recorder->isRecordingShortcut());
}

TEST_F(ShortcutRecorderTest, StoppingRemovesTheMonitorOnce) {
    recorder->startRecordingShortcut();
    EXPECT_EQ(effectsOf(world,
                        [this] {
                            recorder->stopRecordingShortcut();
                            recorder->stopRecordingShortcut();
                        }),
              Effects{"monitor.remove"});
    EXPECT_FALSE(recorder->isRecordingShortcut());
}

TEST_F(ShortcutRecorderTest, ASecondClickOnTheBadgeCancels) {
    recorder->toggle();
    EXPECT_TRUE(recorder->isRecordingShortcut());
    recorder->toggle();
    EXPECT_FALSE(recorder->isRecordingShortcut());
    EXPECT_EQ(world.input.localMonitorCount(), 0U);
    expectNothingStored();
}

TEST_F(ShortcutRecorderTest, EscapeEndsRecordingAndLeavesTheShortcutUnchanged) {
    recorder->startRecordingShortcut();
    EXPECT_EQ(press(keyEscape), Receiver::localMonitor) << "consumed like every other key";
    EXPECT_FALSE(recorder->isRecordingShortcut());
    expectNothingStored();
}

TEST_F(ShortcutRecorderTest, EscapeCancelsWithModifiersToo) {
    recorder->startRecordingShortcut();
    EXPECT_EQ(press(keyEscape, Modifier::command | Modifier::shift), Receiver::localMonitor);
    EXPECT_FALSE(recorder->isRecordingShortcut());
    expectNothingStored();
}

TEST_F(ShortcutRecorderTest, AKeyAloneChangesNothingAndReachesNoControl) {
    recorder->startRecordingShortcut();
    EXPECT_EQ(press(keyT), Receiver::localMonitor);
    EXPECT_TRUE(recorder->isRecordingShortcut());
    expectNothingStored();
}

TEST_F(ShortcutRecorderTest, ABareModifierIsConsumedAndRecordingGoesOn) {
    recorder->startRecordingShortcut();
    const auto command = keyEvent(55, Modifier::command, std::nullopt, EventType::flagsChanged);
    EXPECT_EQ(world.send(command), Receiver::localMonitor);
    EXPECT_TRUE(recorder->isRecordingShortcut());
    expectNothingStored();
}

TEST_F(ShortcutRecorderTest, ModifierBitsOfTheDeviceAloneDoNotCount) {
    recorder->startRecordingShortcut();
    EXPECT_EQ(press(keyK, 0xFFFF), Receiver::localMonitor);
    EXPECT_TRUE(recorder->isRecordingShortcut());
    expectNothingStored();
}

TEST_F(ShortcutRecorderTest, CommandShiftKIsStoredAndShown) {
    recorder->startRecordingShortcut();
    EXPECT_EQ(press(keyK, Modifier::command | Modifier::shift | 0x108), Receiver::localMonitor);
    expectStored(40, 0x120000);
    EXPECT_EQ(recorder->shortcutDisplayString(), "⇧⌘K");
    EXPECT_FALSE(recorder->isRecordingShortcut());
}

TEST_F(ShortcutRecorderTest, AnAcceptedKeyIsStoredThenRecordingStopsThenTheShortcutIsRegistered) {
    recorder->startRecordingShortcut();
    EXPECT_EQ(effectsOf(world, [this] { press(keyK, Modifier::control); }),
              (Effects{"defaults.set globalShortcutKeyCode", "defaults.set globalShortcutModifiers", "monitor.remove",
                       "delegate.registerGlobalShortcut"}));
}

TEST_F(ShortcutRecorderTest, CapsLockAloneIsModifierEnough) {
    recorder->startRecordingShortcut();
    press(keyA, Modifier::capsLock);
    expectStored(keyA, 0x10000);
    EXPECT_EQ(recorder->shortcutDisplayString(), "A");
}

TEST_F(ShortcutRecorderTest, TheOwnBitOfAFunctionKeyIsModifierEnough) {
    recorder->startRecordingShortcut();
    press(keyF5, Modifier::function);
    expectStored(keyF5, 0x800000);
    EXPECT_EQ(recorder->shortcutDisplayString(), "F5");
}

TEST_F(ShortcutRecorderTest, TheOwnBitsOfAnArrowKeyAreModifierEnough) {
    recorder->startRecordingShortcut();
    press(keyLeft, Modifier::function | Modifier::numericPad);
    expectStored(keyLeft, 0xA00000);
    EXPECT_EQ(recorder->shortcutDisplayString(), "←");
}

TEST_F(ShortcutRecorderTest, AStoredKeyWithoutANameShowsItsNumber) {
    settings.globalShortcutKeyCode.set(10);
    settings.globalShortcutModifiers.set(0);
    EXPECT_EQ(recorder->shortcutDisplayString(), "Key10");
    settings.globalShortcutKeyCode.set(65535);
    EXPECT_EQ(recorder->shortcutDisplayString(), "Key65535");
}

TEST_F(ShortcutRecorderTest, TheDefaultShortcutShowsItsThreeSymbolsAndT) {
    EXPECT_EQ(recorder->shortcutDisplayString(), "⌃⌥⌘T");
}

TEST_F(ShortcutRecorderTest, TheBadgeIsToldBeforeRecordingStartsAndStops) {
    std::vector<bool> before;
    const auto subscription = recorder->objectWillChange([&] { before.push_back(recorder->isRecordingShortcut()); });
    recorder->toggle();
    recorder->toggle();
    EXPECT_EQ(before, (std::vector<bool>{false, true}));
}

TEST_F(ShortcutRecorderTest, KeysStayConsumedWhenTheRecorderIsGoneWithoutHavingStopped) {
    recorder->startRecordingShortcut();
    recorder.reset();
    EXPECT_EQ(press(keyK, Modifier::command), Receiver::localMonitor);
    expectNothingStored();
}

using ShortcutRecorderDeathTest = ShortcutRecorderTest;

TEST_F(ShortcutRecorderDeathTest, ANegativeMaskOnTheBadgeStopsTheProgram) {
    settings.globalShortcutModifiers.set(-1);
    EXPECT_DEATH(std::ignore = recorder->shortcutDisplayString(), "modifier mask must not be negative");
}

TEST_F(ShortcutRecorderDeathTest, AKeyCodeBeyondSixteenBitsOnTheBadgeStopsTheProgram) {
    settings.globalShortcutKeyCode.set(65536);
    EXPECT_DEATH(std::ignore = recorder->shortcutDisplayString(), "key code must be within 0\\.\\.\\.65535");
    settings.globalShortcutKeyCode.set(-1);
    EXPECT_DEATH(std::ignore = recorder->shortcutDisplayString(), "key code must be within 0\\.\\.\\.65535");
}

TEST_F(ShortcutRecorderDeathTest, RecordingWithoutADelegateStopsTheProgram) {
    recorder->startRecordingShortcut();
    ApplicationDelegate::setShared(nullptr);
    EXPECT_DEATH(press(keyK, Modifier::command), "delegate must be there before a shortcut is recorded");
}

} // namespace
} // namespace tapalong
