#include "views/SettingsView.h"

#include "session/RecordingDelegate.test.h"
#include "session/SessionManager.h"
#include "settings/SettingsFixture.test.h"
#include "views/ShortcutRecorder.h"

#include <memory>

namespace tapalong {
namespace {

struct SettingsViewTest : SettingsFixture {
    RecordingDelegate delegate{world.effects};
    std::shared_ptr<SessionManager> manager = std::make_shared<SessionManager>(settings, platform);
    std::shared_ptr<SettingsView> view = std::make_shared<SettingsView>(manager, settings, platform);
};

TEST_F(SettingsViewTest, AppearingAsksForThePermissionAndThenWatchesItEveryTwoSeconds) {
    EXPECT_FALSE(view->accessibilityGranted());
    EXPECT_EQ(effectsOf(world, [this] { view->onAppear(); }), Effects{"timer.every 2"});
    EXPECT_TRUE(view->accessibilityGranted());
}

TEST_F(SettingsViewTest, APermissionThatComesOrGoesIsNoticedWithinTwoSeconds) {
    world.desktop.trusted = false;
    view->onAppear();
    EXPECT_FALSE(view->accessibilityGranted());
    world.desktop.trusted = true;
    world.time.advance(1.9);
    EXPECT_FALSE(view->accessibilityGranted());
    world.time.advance(0.1);
    EXPECT_TRUE(view->accessibilityGranted());
    world.desktop.trusted = false;
    world.time.advance(2);
    EXPECT_FALSE(view->accessibilityGranted());
}

TEST_F(SettingsViewTest, AnUnchangedPermissionIsNotAnnounced) {
    view->onAppear();
    int announcements = 0;
    const auto subscription = view->objectWillChange([&] { ++announcements; });
    world.time.advance(20);
    EXPECT_EQ(announcements, 0);
    world.desktop.trusted = false;
    world.time.advance(2);
    EXPECT_EQ(announcements, 1);
}

TEST_F(SettingsViewTest, DisappearingEndsTheWatchAndThenAnyRecording) {
    view->onAppear();
    view->shortcutRecorder().startRecordingShortcut();
    EXPECT_EQ(effectsOf(world, [this] { view->onDisappear(); }), (Effects{"timer.invalidate", "monitor.remove"}));
    EXPECT_FALSE(view->shortcutRecorder().isRecordingShortcut());
    EXPECT_EQ(world.time.timerCount(), 0U);
    EXPECT_TRUE(effectsOf(world, [this] { view->onDisappear(); }).empty());
}

TEST_F(SettingsViewTest, AWindowThatComesBackWatchesAgainWithOneTimer) {
    view->onAppear();
    view->onDisappear();
    view->onAppear();
    EXPECT_EQ(world.time.timerCount(), 1U);
}

TEST_F(SettingsViewTest, EachRequestAsksTheSystemAndThenWatchesEverySecond) {
    world.desktop.trusted = false;
    EXPECT_EQ(effectsOf(world,
                        [this] {
                            view->requestAccessibilityPermission();
                            view->requestAccessibilityPermission();
                        }),
              (Effects{"accessibility.prompt", "timer.every 1", "accessibility.prompt", "timer.every 1"}));
    EXPECT_EQ(world.time.timerCount(), 2U);
}

TEST_F(SettingsViewTest, DisappearingDoesNotEndTheWatchForAGrant) {
    world.desktop.trusted = false;
    view->onAppear();
    view->requestAccessibilityPermission();
    view->onDisappear();
    EXPECT_EQ(world.time.timerCount(), 1U);
    world.desktop.trusted = true;
    world.time.advance(1);
    EXPECT_TRUE(view->accessibilityGranted());
}

TEST_F(SettingsViewTest, AGrantEndsEveryWatchForIt) {
    world.desktop.trusted = false;
    view->requestAccessibilityPermission();
    view->requestAccessibilityPermission();
    world.time.advance(5);
    EXPECT_EQ(world.time.timerCount(), 2U);
    world.desktop.trusted = true;
    world.time.advance(1);
    EXPECT_TRUE(view->accessibilityGranted());
    EXPECT_EQ(world.time.timerCount(), 0U);
}

TEST_F(SettingsViewTest, TheWatchesOfAViewThatIsGoneEndByThemselves) {
    world.desktop.trusted = false;
    view->onAppear();
    view->requestAccessibilityPermission();
    view.reset();
    EXPECT_EQ(world.time.timerCount(), 0U);
    world.time.advance(5);
}

TEST_F(SettingsViewTest, WithoutThePermissionLockdownCanBeSwitchedNeitherOnNorOff) {
    world.desktop.trusted = false;
    view->onAppear();
    EXPECT_FALSE(view->isLockdownToggleEnabled());
    settings.kioskMode.set(true);
    EXPECT_FALSE(view->isLockdownToggleEnabled());
    world.desktop.trusted = true;
    view->checkAccessibilityPermission();
    EXPECT_TRUE(view->isLockdownToggleEnabled());
}

TEST_F(SettingsViewTest, LockdownLeftOnWithoutPermissionWarnsAndDoesNotPreventTheStart) {
    world.desktop.trusted = false;
    settings.kioskMode.set(true);
    settings.exitPassword.set("x");
    view->onAppear();
    EXPECT_TRUE(view->showsAccessibilityWarning());
    EXPECT_TRUE(view->isStartEnabled());
}

TEST_F(SettingsViewTest, TheAccessibilityWarningNeedsBothLockdownAndAMissingPermission) {
    world.desktop.trusted = false;
    view->checkAccessibilityPermission();
    EXPECT_FALSE(view->showsAccessibilityWarning());
    world.desktop.trusted = true;
    view->checkAccessibilityPermission();
    settings.kioskMode.set(true);
    EXPECT_FALSE(view->showsAccessibilityWarning());
}

TEST_F(SettingsViewTest, WithAnEmptyPasswordTheStartIsDisabledAndPaleAndWarnedAbout) {
    EXPECT_FALSE(view->isStartEnabled());
    EXPECT_EQ(view->startOpacity(), 0.4);
    EXPECT_TRUE(view->showsPasswordWarning());
}

TEST_F(SettingsViewTest, OneCharacterOfPasswordEnablesTheStart) {
    settings.exitPassword.set(" ");
    EXPECT_TRUE(view->isStartEnabled());
    EXPECT_EQ(view->startOpacity(), 1.0);
    EXPECT_FALSE(view->showsPasswordWarning());
}

TEST_F(SettingsViewTest, TheStartButtonStartsASession) {
    settings.exitPassword.set("x");
    view->startSession();
    EXPECT_TRUE(manager->isSessionActive());
}

TEST_F(SettingsViewTest, TheLockdownInformationDependsOnThePermission) {
    EXPECT_EQ(view->lockdownInfo(), "Grant accessibility permission to enable lockdown mode. Required for intercepting "
                                    "system shortcuts.");
    view->checkAccessibilityPermission();
    EXPECT_EQ(view->lockdownInfo(), "Blocks Cmd+Tab, Cmd+Q, and other system shortcuts. Hides the dock and disables "
                                    "force quit. Mouse cursor stays visible for hot corner exit.");
}

TEST_F(SettingsViewTest, TheEmojiInformationIsFixed) {
    EXPECT_EQ(view->emojiInfo(),
              "Shift, Cmd, Option, Control, and Caps Lock will produce random toddler-friendly emoji "
              "instead of being silently ignored.");
}

TEST_F(SettingsViewTest, BothInformationPopoversStartClosed) {
    EXPECT_FALSE(view->showLockdownInfo.get());
    EXPECT_FALSE(view->showEmojiInfo.get());
    int announcements = 0;
    const auto subscription = view->objectWillChange([&] { ++announcements; });
    view->showEmojiInfo.set(true);
    EXPECT_EQ(announcements, 1);
    EXPECT_FALSE(view->showLockdownInfo.get());
}

TEST_F(SettingsViewTest, WithSoundOffThePickerAndItsPreviewAreAbsent) {
    EXPECT_TRUE(view->showsSoundPicker());
    settings.soundEnabled.set(false);
    EXPECT_FALSE(view->showsSoundPicker());
}

TEST_F(SettingsViewTest, ThePreviewPlaysTheSelectedPackOnce) {
    settings.selectedSoundPack.set("glass");
    EXPECT_EQ(effectsOf(world, [this] { view->previewSound(); }), (Effects{"sound.load Glass", "sound.play Glass"}));
}

TEST_F(SettingsViewTest, APreviewThatCannotBeLoadedIsSilentWithoutALine) {
    world.sounds.names.clear();
    EXPECT_EQ(effectsOf(world, [this] { view->previewSound(); }), Effects{"sound.load Tink"});
}

TEST_F(SettingsViewTest, TheColourPickersAreAbsentWhileTheSystemsAppearanceIsFollowed) {
    EXPECT_FALSE(view->showsColorPickers());
    settings.useSystemAppearance.set(false);
    EXPECT_TRUE(view->showsColorPickers());
}

TEST_F(SettingsViewTest, ThePickersShowTheStoredColours) {
    settings.customFGColorHex.set("#FF8000");
    settings.customBGColorHex.set("#102030");
    EXPECT_EQ(view->customFG(), Color::fromHex("#FF8000"));
    EXPECT_EQ(view->customBG(), Color::fromHex("#102030"));
}

TEST_F(SettingsViewTest, UnreadableColoursShowAsWhiteAndBlackAndStayStored) {
    settings.customFGColorHex.set("orange");
    settings.customBGColorHex.set("navy");
    EXPECT_EQ(view->customFG(), Color(NamedColor::white));
    EXPECT_EQ(view->customBG(), Color(NamedColor::black));
    EXPECT_EQ(settings.customFGColorHex.get(), "orange");
    EXPECT_EQ(settings.customBGColorHex.get(), "navy");
}

TEST_F(SettingsViewTest, APickedColourIsStoredAsHexText) {
    view->setCustomFG(SrgbColor{1, 0.5, 0});
    view->setCustomBG(SrgbColor{0, 0, 1});
    EXPECT_EQ(settings.customFGColorHex.get(), "#FF7F00");
    EXPECT_EQ(settings.customBGColorHex.get(), "#0000FF");
}

TEST_F(SettingsViewTest, TheHintNamesTheExitCorner) {
    EXPECT_EQ(view->exitHint(), "Move mouse to Top Right corner to exit");
    settings.exitCorner.set(ScreenCorner::bottomLeft);
    EXPECT_EQ(view->exitHint(), "Move mouse to Bottom Left corner to exit");
}

TEST_F(SettingsViewTest, TroublesOfTheDesktopAreShown) {
    world.notices.set({"The disk is full."});
    EXPECT_EQ(view->notices(), std::vector<std::string>{"The disk is full."});
}

TEST_F(SettingsViewTest, ASessionWithoutItsLockdownIsSaidAfterwardsUntilTheNextOne) {
    const auto session = [this] {
        manager->startSession();
        world.time.advance(3);
        manager->endSession();
    };
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    session();
    ASSERT_EQ(view->notices().size(), 1U);
    EXPECT_TRUE(view->notices().front().starts_with("Lockdown Mode was not in force in the last session: "));
    manager->startSession();
    world.input.setTapsAvailable(true);
    world.time.advance(2);
    manager->endSession();
    ASSERT_EQ(view->notices().size(), 1U);
    EXPECT_TRUE(view->notices().front().starts_with("Lockdown Mode was not in force for a part of the last session: "));
    session();
    EXPECT_TRUE(view->notices().empty());
}

TEST_F(SettingsViewTest, TheLastSessionsNoticeComesAfterTheDesktopsAndIsAnnounced) {
    world.notices.set({"The disk is full."});
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    manager->startSession();
    bool announced = false;
    const auto subscription = view->objectWillChange([&] { announced = true; });
    world.time.advance(10);
    EXPECT_FALSE(announced) << "nobody sees the window while a session runs";
    manager->endSession();
    EXPECT_TRUE(announced);
    ASSERT_EQ(view->notices().size(), 2U);
    EXPECT_EQ(view->notices().front(), "The disk is full.");
}

struct LockdownLimitsInSettingsTest : SettingsViewTest {
    void setLockdownMode(bool on) {
        settings.kioskMode.set(on);
        world.time.advance(0);
    }
};

TEST_F(LockdownLimitsInSettingsTest, WhatLockdownModeCannotStopIsSaidWhileItIsOn) {
    world.inputLimits.set({InputLimit::powerButton});
    view->onAppear();
    EXPECT_TRUE(view->lockdownLimits().empty());
    settings.kioskMode.set(true);
    EXPECT_EQ(view->lockdownLimits(), std::vector<std::string>{"The power button can still switch this computer off."});
    world.inputLimits.set({});
    EXPECT_TRUE(view->lockdownLimits().empty());
}

TEST_F(LockdownLimitsInSettingsTest, WithoutThePermissionNothingIsSaidOfWhatItCouldNotStop) {
    world.desktop.trusted = false;
    world.inputLimits.set({InputLimit::powerButton});
    settings.kioskMode.set(true);
    view->onAppear();
    EXPECT_TRUE(view->lockdownLimits().empty());
}

TEST_F(LockdownLimitsInSettingsTest, TheyAreLookedForWhenLockdownModeIsSwitchedOn) {
    view->onAppear();
    EXPECT_EQ(world.inputLimits.looks, 0);
    setLockdownMode(true);
    EXPECT_EQ(world.inputLimits.looks, 1);
    setLockdownMode(true);
    setLockdownMode(false);
    EXPECT_EQ(world.inputLimits.looks, 1);
    setLockdownMode(true);
    EXPECT_EQ(world.inputLimits.looks, 2);
}

TEST_F(LockdownLimitsInSettingsTest, TheyAreLookedForEachTimeTheWindowAppears) {
    world.defaults.stored["kioskMode"] = true;
    view->onAppear();
    EXPECT_EQ(world.inputLimits.looks, 1);
    view->onDisappear();
    view->onAppear();
    EXPECT_EQ(world.inputLimits.looks, 2);
}

TEST_F(LockdownLimitsInSettingsTest, TheyAreLookedForAfterASessionWhichMayHaveShownMore) {
    world.defaults.stored["kioskMode"] = true;
    view->onAppear();
    manager->startSession();
    world.time.advance(10);
    EXPECT_EQ(world.inputLimits.looks, 1) << "nobody sees the window while a session runs";
    manager->endSession();
    world.time.advance(0);
    EXPECT_EQ(world.inputLimits.looks, 2);
}

TEST_F(LockdownLimitsInSettingsTest, ASessionThatEndsWithoutTheWindowLooksForNothing) {
    world.defaults.stored["kioskMode"] = true;
    view->onAppear();
    view->onDisappear();
    manager->startSession();
    world.time.advance(0);
    manager->endSession();
    world.time.advance(0);
    EXPECT_EQ(world.inputLimits.looks, 1);
    view->onAppear();
    EXPECT_EQ(world.inputLimits.looks, 2);
}

TEST_F(LockdownLimitsInSettingsTest, AChangeIsAnnounced) {
    int announcements = 0;
    const auto subscription = view->objectWillChange([&] { ++announcements; });
    world.inputLimits.set({InputLimit::serverKeys});
    EXPECT_EQ(announcements, 1);
}

TEST_F(LockdownLimitsInSettingsTest, AViewThatIsGoneLooksForNothing) {
    settings.kioskMode.set(true);
    view.reset();
    world.time.advance(0);
    EXPECT_EQ(world.inputLimits.looks, 0);
}

TEST_F(SettingsViewTest, ItsControlsAreBoundToTheStoreItWasGiven) {
    EXPECT_EQ(&view->settings(), &settings);
}

} // namespace
} // namespace tapalong
