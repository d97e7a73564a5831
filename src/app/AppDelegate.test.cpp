#include "app/AppDelegate.h"

#include "app/ApplicationFixture.test.h"
#include "views/SettingsView.h"

#include <algorithm>

namespace tapalong {
namespace {

constexpr std::int64_t keyT = 17;
constexpr ModifierFlags controlOptionCommand = Modifier::control | Modifier::option | Modifier::command;

const Effects creation{
    "window.make 0,0 1920x1080 style=0 backing=2 defer=no",
    "window.contentView",
    "window.level 1000",
    "window.collectionBehavior 145",
    "window.opaqueOnBlack",
    "window.ignoresMouseEvents no",
    "window.acceptsMouseMovedEvents yes",
    "window.frame 0,0 1920x1080 display=yes",
    "notification.addObserver screenParametersChanged",
};
/// What the session view does when its window comes up.
const Effects appearance{"notification.addObserver showExitOverlay", "timer.every 0.6"};
const Effects disappearance{"notification.removeObserver", "timer.invalidate"};

Effects joined(std::initializer_list<Effects> pieces) {
    Effects all;
    for (const auto& piece : pieces) {
        all.insert(all.end(), piece.begin(), piece.end());
    }
    return all;
}

struct AppDelegateTest : ApplicationFixture {
    [[nodiscard]] bool starts(std::int64_t keyCode, ModifierFlags flags) {
        manager.endSession();
        press(keyCode, flags);
        const bool started = manager.isSessionActive();
        manager.endSession();
        return started;
    }
};

TEST_F(AppDelegateTest, LaunchingRecordsTheDelegateAndRegistersTheShortcut) {
    ApplicationDelegate::setShared(nullptr);
    const auto other = std::make_shared<AppDelegate>(
        settings, std::make_shared<SessionManager>(settings, world.platform()), world.platform());
    EXPECT_EQ(AppDelegate::shared(), nullptr) << "empty until launch has finished";
    EXPECT_EQ(effectsOf(world, [&] { other->applicationDidFinishLaunching(); }),
              (Effects{"monitor.addGlobal mask=1024", "monitor.addLocal mask=1024"}));
    EXPECT_EQ(AppDelegate::shared(), other.get());
}

TEST_F(AppDelegateTest, TheDoorClosesWithItsDelegate) {
    {
        const auto other = std::make_shared<AppDelegate>(
            settings, std::make_shared<SessionManager>(settings, world.platform()), world.platform());
        EXPECT_EQ(AppDelegate::shared(), &delegate);
    }
    EXPECT_EQ(AppDelegate::shared(), &delegate) << "one that was never launched closes nothing";
}

TEST_F(AppDelegateTest, RegisteringAgainRemovesTheGlobalMonitorFirstAndKeepsTheLocalOne) {
    EXPECT_EQ(effectsOf(world, [this] { delegate.registerGlobalShortcut(); }),
              (Effects{"monitor.remove", "monitor.addGlobal mask=1024", "monitor.addLocal mask=1024"}));
    EXPECT_EQ(world.input.globalMonitorCount(), 1U);
    EXPECT_EQ(world.input.localMonitorCount(), 2U);
}

TEST_F(AppDelegateTest, ControlOptionCommandTMatchesByDefault) {
    EXPECT_TRUE(starts(keyT, controlOptionCommand));
}

TEST_F(AppDelegateTest, ControlCommandTDoesNotMatch) {
    EXPECT_FALSE(starts(keyT, Modifier::control | Modifier::command));
}

TEST_F(AppDelegateTest, ShiftHeldDownAsWellStillMatches) {
    EXPECT_TRUE(starts(keyT, controlOptionCommand | Modifier::shift));
}

TEST_F(AppDelegateTest, AnotherKeyDoesNotMatch) {
    EXPECT_FALSE(starts(16, controlOptionCommand));
}

TEST_F(AppDelegateTest, AStoredKeyCodeBeyondSixteenBitsNeverMatches) {
    for (const std::int64_t stored : {std::int64_t{65536 + keyT}, std::int64_t{keyT - 65536}, std::int64_t{-1}}) {
        settings.globalShortcutKeyCode.set(stored);
        EXPECT_FALSE(starts(keyT, controlOptionCommand)) << stored;
        EXPECT_FALSE(starts(65535, controlOptionCommand)) << stored;
        EXPECT_FALSE(starts(stored, controlOptionCommand)) << stored;
    }
}

TEST_F(AppDelegateTest, BitsOfTheDeviceDoNotCountAsModifiers) {
    settings.globalShortcutModifiers.set(0x1);
    EXPECT_FALSE(starts(keyT, 0x1));
    settings.globalShortcutModifiers.set(0);
    EXPECT_TRUE(starts(keyT, 0x1)) << "nothing is demanded";
}

TEST_F(AppDelegateTest, CapsLockRecordedIsDemandedLater) {
    settings.globalShortcutModifiers.set(0x10000);
    EXPECT_FALSE(starts(keyT, Modifier::command));
    EXPECT_TRUE(starts(keyT, Modifier::capsLock));
}

TEST_F(AppDelegateTest, TheShortcutInOurWindowIsConsumedAndStartsFromTheMainQueue) {
    EXPECT_EQ(world.send(simulated::keyEvent(keyT, controlOptionCommand)), Receiver::localMonitor);
    EXPECT_FALSE(manager.isSessionActive());
    world.time.drain();
    EXPECT_TRUE(manager.isSessionActive());
}

TEST_F(AppDelegateTest, OtherKeysInOurWindowPass) {
    EXPECT_EQ(type("a"), Receiver::ownWindow);
    EXPECT_FALSE(manager.isSessionActive());
}

TEST_F(AppDelegateTest, TheShortcutInAnotherApplicationStartsAndReachesThatApplicationToo) {
    world.desktop.active = false;
    EXPECT_EQ(world.send(simulated::keyEvent(keyT, controlOptionCommand)), Receiver::otherApplication);
    EXPECT_FALSE(manager.isSessionActive());
    world.time.drain();
    EXPECT_TRUE(manager.isSessionActive());
}

TEST_F(AppDelegateTest, AChangedShortcutCountsEvenBeforeItIsRegistered) {
    settings.globalShortcutKeyCode.set(40);
    EXPECT_FALSE(starts(keyT, controlOptionCommand));
    EXPECT_TRUE(starts(40, controlOptionCommand));
}

TEST_F(AppDelegateTest, AfterSeveralRegistrationsOneKeystrokeSchedulesOneStartEach) {
    delegate.registerGlobalShortcut();
    delegate.registerGlobalShortcut();
    EXPECT_EQ(world.send(simulated::keyEvent(keyT, controlOptionCommand)), Receiver::localMonitor);
    EXPECT_EQ(world.time.postedCount(), 3U);
    world.time.drain();
    EXPECT_TRUE(manager.isSessionActive()) << "the second and the third start do nothing";
}

TEST_F(AppDelegateTest, ADelegateThatIsGoneStartsNothing) {
    auto other = std::make_shared<AppDelegate>(settings, std::make_shared<SessionManager>(settings, world.platform()),
                                               world.platform());
    other->registerGlobalShortcut();
    other.reset();
    settings.globalShortcutKeyCode.set(99999);
    EXPECT_EQ(pressQuickStart(), Receiver::ownWindow);
    world.desktop.active = false;
    EXPECT_EQ(pressQuickStart(), Receiver::otherApplication);
    EXPECT_FALSE(manager.isSessionActive());
}

TEST_F(AppDelegateTest, ShowingCreatesTheWindowAppliesTheOptionsBringsItUpAndActivates) {
    EXPECT_EQ(effectsOf(world, [this] { delegate.showSessionWindow(); }),
              joined({creation,
                      {"app.presentationOptions 10", "window.makeKeyAndOrderFront"},
                      appearance,
                      {"window.orderFrontRegardless", "app.activate"}}));
    EXPECT_NE(delegate.sessionWindow(), nullptr);
}

TEST_F(AppDelegateTest, InLockdownAllOptionsAreApplied) {
    settings.kioskMode.set(true);
    delegate.showSessionWindow();
    EXPECT_EQ(world.desktop.presentationOptions, 506U);
}

TEST_F(AppDelegateTest, WithoutAScreenTheWindowHasAFixedFrameThatIsNotSetAgain) {
    world.desktop.mainScreen.reset();
    const auto effects = effectsOf(world, [this] { delegate.showSessionWindow(); });
    EXPECT_EQ(effects.front(), "window.make 0,0 1920x1080 style=0 backing=2 defer=no");
    EXPECT_TRUE(
        std::none_of(effects.begin(), effects.end(), [](const auto& line) { return line.find("window.frame") == 0; }));
}

TEST_F(AppDelegateTest, TheWindowFillsTheMainScreenWhereverItLies) {
    world.desktop.mainScreen = Rect{100, 50, 800, 600};
    EXPECT_EQ(effectsOf(world, [this] { delegate.showSessionWindow(); }).front(),
              "window.make 100,50 800x600 style=0 backing=2 defer=no");
}

TEST_F(AppDelegateTest, TheWindowFollowsTheMainScreenForAsLongAsTheSessionLasts) {
    manager.startSession();
    EXPECT_EQ(effectsOf(world,
                        [this] {
                            world.setMainScreen(Rect{0, 0, 1080, 1920});
                        }),
              (Effects{"notification.post screenParametersChanged", "window.frame 0,0 1080x1920 display=yes"}));
    EXPECT_EQ(effectsOf(world,
                        [this] {
                            world.setMainScreen(Rect{0, 0, 2560, 1440});
                        })
                  .back(),
              "window.frame 0,0 2560x1440 display=yes");
    manager.endSession();
    EXPECT_EQ(effectsOf(world,
                        [this] {
                            world.setMainScreen(Rect{0, 0, 800, 600});
                        }),
              Effects{"notification.post screenParametersChanged"});
}

TEST_F(AppDelegateTest, TheWindowStaysAsItIsUntilThereIsAMainScreenAgain) {
    manager.startSession();
    EXPECT_EQ(effectsOf(world, [this] { world.setMainScreen(std::nullopt); }),
              Effects{"notification.post screenParametersChanged"});
    type("a");
    EXPECT_EQ(manager.typedContent().size(), 1U);
    EXPECT_EQ(effectsOf(world,
                        [this] {
                            world.setMainScreen(Rect{0, 0, 1280, 800});
                        })
                  .back(),
              "window.frame 0,0 1280x800 display=yes");
}

TEST_F(AppDelegateTest, AWindowMadeWithoutAScreenFillsTheOneThatAppears) {
    world.setMainScreen(std::nullopt);
    manager.startSession();
    EXPECT_EQ(effectsOf(world,
                        [this] {
                            world.setMainScreen(Rect{0, 0, 1280, 800});
                        })
                  .back(),
              "window.frame 0,0 1280x800 display=yes");
}

TEST_F(AppDelegateTest, TheWayOutLiesInTheCornerOfTheScreenAsItIsNow) {
    manager.startSession();
    world.setMainScreen(Rect{0, 0, 800, 600});
    world.desktop.mouse = {799, 600};
    world.time.advance(2);
    EXPECT_NE(sessionView()->exitOverlay(), nullptr);
}

TEST_F(AppDelegateTest, ADwellInTheOldCornerEndsWithTheOldScreen) {
    manager.startSession();
    world.desktop.mouse = {1919, 1080};
    world.time.advance(1);
    world.setMainScreen(Rect{0, 0, 2560, 1440});
    world.time.advance(5);
    EXPECT_EQ(sessionView()->exitOverlay(), nullptr);
}

TEST_F(AppDelegateTest, ShowingTwiceMakesOneWindowAndAppliesTheOptionsAgain) {
    delegate.showSessionWindow();
    const auto* first = delegate.sessionWindow();
    EXPECT_EQ(effectsOf(world, [this] { delegate.showSessionWindow(); }),
              (Effects{"app.presentationOptions 10", "window.makeKeyAndOrderFront", "window.orderFrontRegardless",
                       "app.activate"}));
    EXPECT_EQ(delegate.sessionWindow(), first);
}

TEST_F(AppDelegateTest, DismissingLiftsTheOptionsTakesTheWindowDownAndBringsTheSettingsBack) {
    delegate.showSessionWindow();
    EXPECT_EQ(effectsOf(world, [this] { delegate.dismissSessionWindow(); }),
              joined({{"app.presentationOptions 0", "window.orderOut"},
                      disappearance,
                      {"notification.removeObserver", "window[Tapalong Settings].makeKeyAndOrderFront"}}))
        << "the application is not activated again";
    EXPECT_EQ(delegate.sessionWindow(), nullptr);
}

TEST_F(AppDelegateTest, DismissingWithoutAWindowLiftsTheOptionsAllTheSame) {
    EXPECT_EQ(effectsOf(world, [this] { delegate.dismissSessionWindow(); }),
              (Effects{"app.presentationOptions 0", "window[Tapalong Settings].makeKeyAndOrderFront"}));
}

TEST_F(AppDelegateTest, AfterADismissalNoSessionWindowOrViewIsLeft) {
    delegate.showSessionWindow();
    const std::weak_ptr<SessionView> view = sessionView();
    const std::weak_ptr<simulated::SimulatedWindow> window = world.desktop.shownWindow();
    ASSERT_FALSE(view.expired());
    delegate.dismissSessionWindow();
    EXPECT_TRUE(view.expired());
    EXPECT_TRUE(window.expired());
    EXPECT_EQ(world.desktop.windows().size(), 1U) << "the settings window";
}

TEST_F(AppDelegateTest, EachSessionGetsAFreshWindowAndView) {
    manager.startSession();
    holdCorner();
    ASSERT_NE(sessionView()->exitOverlay(), nullptr);
    manager.endSession();
    manager.startSession();
    EXPECT_EQ(sessionView()->exitOverlay(), nullptr);
}

TEST_F(AppDelegateTest, AClosedSettingsWindowComesBackWhenTheSessionEnds) {
    manager.startSession();
    world.desktop.closeScene();
    manager.endSession();
    EXPECT_TRUE(world.desktop.isSceneOpen());
}

TEST_F(AppDelegateTest, OnlyAWindowWithSettingsInItsTitleIsBroughtBack) {
    world.desktop.openScene({.title = "settings", .identifier = "lower", .content = app.settingsView()});
    EXPECT_EQ(effectsOf(world, [this] { delegate.dismissSessionWindow(); }), Effects{"app.presentationOptions 0"});
}

TEST_F(AppDelegateTest, ClosingTheLastWindowQuitsExceptDuringASession) {
    EXPECT_TRUE(delegate.applicationShouldTerminateAfterLastWindowClosed());
    manager.startSession();
    EXPECT_FALSE(delegate.applicationShouldTerminateAfterLastWindowClosed());
    manager.endSession();
    EXPECT_TRUE(delegate.applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(AppDelegateTest, StartedOnceMoreItShowsTheSettings) {
    EXPECT_EQ(effectsOf(world, [this] { delegate.applicationShouldHandleReopen(); }),
              Effects{"window[Tapalong Settings].makeKeyAndOrderFront"});
}

TEST_F(AppDelegateTest, StartedOnceMoreDuringASessionItChangesNothing) {
    manager.startSession();
    world.desktop.closeScene();
    EXPECT_EQ(effectsOf(world, [this] { delegate.applicationShouldHandleReopen(); }), Effects{});
    EXPECT_FALSE(world.desktop.isSceneOpen());
    manager.endSession();
    EXPECT_TRUE(world.desktop.isSceneOpen());
}

struct AppDelegateDeathTest : AppDelegateTest {
    std::shared_ptr<AppDelegate> withoutApplication = std::make_shared<AppDelegate>(
        settings, std::make_shared<SessionManager>(settings, world.platform()), world.platform(false));
};

TEST_F(AppDelegateDeathTest, ShowingWithoutAnApplicationStopsTheProgram) {
    EXPECT_DEATH(withoutApplication->showSessionWindow(), "the application object must exist");
}

TEST_F(AppDelegateDeathTest, DismissingWithoutAnApplicationStopsTheProgram) {
    EXPECT_DEATH(withoutApplication->dismissSessionWindow(), "the application object must exist");
}

TEST_F(AppDelegateDeathTest, ANegativeMaskStopsTheProgramAtTheNextKey) {
    settings.globalShortcutModifiers.set(-1);
    EXPECT_DEATH(press(keyT, controlOptionCommand), "modifier mask must not be negative");
}

TEST_F(AppDelegateDeathTest, ANegativeMaskStopsTheProgramEvenWhereTheKeyDiffers) {
    settings.globalShortcutModifiers.set(-1);
    EXPECT_DEATH(type("a"), "modifier mask must not be negative");
}

} // namespace
} // namespace tapalong
