#include "lockdown/KioskManager.h"

#include "lockdown/KioskFixture.test.h"

#include <algorithm>
#include <deque>

namespace tapalong {
namespace {

using KioskManagerTest = KioskFixture;

constexpr auto monitorLine = "print ✅ Local event monitor active — keyboard input captured";
constexpr auto tapLine = "print ✅ CGEventTap active — all keyboard input intercepted";
constexpr auto unlockLine = "print 🔓 CGEventTap deactivated — normal input restored";
constexpr auto postLine = "notification.post showExitOverlay";
constexpr auto lockdownOptions = "app.presentationOptions 506";

std::ptrdiff_t countOf(const Effects& effects, const std::string& line) {
    return std::count(effects.begin(), effects.end(), line);
}

TEST_F(KioskManagerTest, ActivatingWithoutLockdownInstallsEverythingButTheTap) {
    EXPECT_EQ(effectsOf(world, [this] { activate(); }),
              (Effects{"monitor.addLocal mask=21504", monitorLine, "monitor.addGlobal mask=96", "timer.every 0.25",
                       "timer.every 0.5", "notification.addObserver showExitOverlay",
                       "notification.addObserver hideExitOverlay"}));
}

TEST_F(KioskManagerTest, ActivatingInLockdownInstallsTheTapAfterTheMonitor) {
    settings.kioskMode.set(true);
    EXPECT_EQ(
        effectsOf(world, [this] { activate(); }),
        (Effects{"monitor.addLocal mask=21504", monitorLine,
                 "tap.create location=1 placement=0 options=0 mask=3862977536", "tap.createSource", "tap.addSource",
                 "tap.enable", tapLine, "monitor.addGlobal mask=96", "timer.every 0.25", "timer.every 0.5",
                 "notification.addObserver showExitOverlay", "notification.addObserver hideExitOverlay"}));
}

TEST_F(KioskManagerTest, DeactivatingRemovesEverythingInOrder) {
    activateLocked();
    EXPECT_EQ(effectsOf(world, [this] { kiosk->deactivate(); }),
              (Effects{"monitor.remove", "tap.disable", "tap.removeSource", unlockLine, "monitor.remove",
                       "timer.invalidate", "notification.removeObserver", "notification.removeObserver"}));
    EXPECT_EQ(world.input.localMonitorCount(), 0U);
    EXPECT_EQ(world.input.globalMonitorCount(), 0U);
    EXPECT_EQ(world.input.tapCount(), 0U);
    EXPECT_EQ(world.notificationCenter.observerCount(), 0U);
    EXPECT_EQ(world.time.timerCount(), 0U);
}

TEST_F(KioskManagerTest, DeactivatingTwiceChangesNothingAndPrintsTheLineAgain) {
    activateLocked();
    kiosk->deactivate();
    EXPECT_EQ(effectsOf(world, [this] { kiosk->deactivate(); }), Effects{unlockLine});
}

TEST_F(KioskManagerTest, DeactivatingWithoutHavingActivatedPrintsTheLineToo) {
    EXPECT_EQ(effectsOf(world, [this] { kiosk->deactivate(); }), Effects{unlockLine});
}

TEST_F(KioskManagerTest, DeactivatingKeepsTheHandlerForKeysAlreadyPosted) {
    activate();
    world.send(simulated::keyEvent(0, 0, "a"));
    kiosk->deactivate();
    world.time.drain();
    EXPECT_EQ(handled, std::vector<std::string>{"'a'"});
}

TEST_F(KioskManagerTest, ActivatingAgainReplacesTheHandler) {
    activate();
    kiosk->deactivate();
    std::vector<std::string> others;
    kiosk->activate([&](const KeyEvent& event) { others.push_back(describe(event)); });
    press(0, 0, "a");
    EXPECT_TRUE(handled.empty());
    EXPECT_EQ(others, std::vector<std::string>{"'a'"});
}

TEST_F(KioskManagerTest, AnotherApplicationInFrontIsOvertakenWithinHalfASecond) {
    activate();
    world.desktop.active = false;
    world.time.advance(0.5);
    EXPECT_TRUE(world.desktop.active);
}

TEST_F(KioskManagerTest, WithoutLockdownTheWatchdogActivatesAndNeverTouchesThePresentation) {
    activate();
    settings.kioskMode.set(true); // what counts is the flag at the start
    EXPECT_EQ(effectsOf(world,
                        [this] {
                            world.time.advance(1);
                            world.desktop.active = false;
                            world.time.advance(1);
                        }),
              Effects{"app.activate"});
}

TEST_F(KioskManagerTest, InLockdownTheWatchdogAssertsThePresentationAtEveryTick) {
    activateLocked();
    settings.kioskMode.set(false); // what counts is the flag at the start
    EXPECT_EQ(effectsOf(world, [this] { world.time.advance(1.5); }),
              (Effects{lockdownOptions, lockdownOptions, lockdownOptions}));
}

TEST_F(KioskManagerTest, MonitorTapAndWatchdogEachReadTheFlagForThemselves) {
    /// Answers the question whether Lockdown Mode is on differently from time to time.
    struct ChangingDefaults final : UserDefaults {
        mutable std::deque<bool> answers;
        [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override {
            if (key != "kioskMode" || answers.empty()) {
                return std::nullopt;
            }
            const bool answer = answers.front();
            answers.pop_front();
            return DefaultsValue(answer);
        }
        void setValue(std::string_view, DefaultsValue) override {}
    } defaults;
    const SessionSettings changing(defaults, nullptr);
    for (const bool forTap : {false, true}) {
        for (const bool forMonitor : {false, true}) {
            for (const bool forWatchdog : {false, true}) {
                defaults.answers = {forTap, forMonitor, forWatchdog};
                const auto each = std::make_shared<KioskManager>(changing, platform);
                each->activate([](const KeyEvent&) {});
                EXPECT_EQ(world.input.isTapInForce(), forTap);
                world.input.setSecureInput(true); // past the tap, to the monitor
                EXPECT_EQ(press(0, 0, "a"), forMonitor ? Receiver::localMonitor : Receiver::ownWindow);
                world.input.setSecureInput(false);
                const auto effects = effectsOf(world, [this] { world.time.advance(0.5); });
                EXPECT_EQ(countOf(effects, lockdownOptions), forWatchdog ? 1 : 0);
                each->deactivate();
            }
        }
    }
}

TEST_F(KioskManagerTest, TheWatchdogActivatesBeforeItAssertsThePresentation) {
    activateLocked();
    world.desktop.active = false;
    EXPECT_EQ(effectsOf(world, [this] { world.time.advance(0.5); }), (Effects{"app.activate", lockdownOptions}));
}

TEST_F(KioskManagerTest, TheOverlayStopsTheWatchdogUntilItIsHidden) {
    activateLocked();
    showOverlay();
    world.desktop.active = false;
    EXPECT_TRUE(effectsOf(world, [this] { world.time.advance(3); }).empty());
    EXPECT_FALSE(world.desktop.active);
    hideOverlay();
    EXPECT_EQ(effectsOf(world, [this] { world.time.advance(0.5); }), (Effects{"app.activate", lockdownOptions}));
}

TEST_F(KioskManagerTest, DeactivatingLeavesTheOverlayFlagAsItIs) {
    activateLocked();
    showOverlay();
    kiosk->deactivate();
    activate();
    EXPECT_TRUE(effectsOf(world, [this] { world.time.advance(1); }).empty());
    hideOverlay();
    EXPECT_EQ(countOf(effectsOf(world, [this] { world.time.advance(1); }), lockdownOptions), 2);
}

TEST_F(KioskManagerTest, ADeactivatedLockdownHearsNoNotifications) {
    activateLocked();
    kiosk->deactivate();
    showOverlay();
    activate();
    EXPECT_EQ(countOf(effectsOf(world, [this] { world.time.advance(1); }), lockdownOptions), 2);
}

TEST_F(KioskManagerTest, TheHeldCornerPostsTheNotificationFromTheMainQueue) {
    settings.exitCorner.set(ScreenCorner::bottomLeft);
    settings.hotCornerDwellTime.set(1);
    activate();
    world.desktop.mouse = {0, 1};
    EXPECT_EQ(countOf(effectsOf(world, [this] { world.time.advance(1.125); }), postLine), 0);
    EXPECT_EQ(effectsOf(world, [this] { world.time.advance(0.125); }), Effects{postLine});
}

TEST_F(KioskManagerTest, TheCornerIsTheOneSetAtActivation) {
    activate();
    settings.exitCorner.set(ScreenCorner::bottomLeft);
    world.desktop.mouse = {0, 1};
    EXPECT_EQ(countOf(effectsOf(world, [this] { world.time.advance(5); }), postLine), 0);
    world.desktop.mouse = {1919, 1080};
    EXPECT_EQ(countOf(effectsOf(world, [this] { world.time.advance(5); }), postLine), 1);
}

TEST_F(KioskManagerTest, ARefusedTapIsExplainedPromptedForAndTriedAgainAfterTwoSeconds) {
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    const auto effects = effectsOf(world, [this] { activate(); });
    const Effects expected{"tap.create location=1 placement=0 options=0 mask=3862977536",
                           "print ⚠️ Failed to create CGEventTap. Accessibility permission required!",
                           "print    Grant permission in: System Settings → Privacy & Security → Accessibility",
                           "accessibility.prompt",
                           "queue.after 2",
                           "monitor.addGlobal mask=96"};
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), effects.begin() + 2));
}

TEST_F(KioskManagerTest, PermissionGrantedWithinTwoSecondsStartsTheTap) {
    settings.kioskMode.set(true);
    world.desktop.trusted = false;
    world.input.setTapsAvailable(false);
    activate();
    world.desktop.trusted = true;
    world.input.setTapsAvailable(true);
    world.time.advance(1.9);
    EXPECT_FALSE(world.input.isTapInForce());
    EXPECT_EQ(countOf(effectsOf(world, [this] { world.time.advance(0.1); }), tapLine), 1);
    EXPECT_TRUE(world.input.isTapInForce());
}

TEST_F(KioskManagerTest, PermissionThatComesLaterIsNotNoticedBeforeTheNextActivation) {
    settings.kioskMode.set(true);
    world.desktop.trusted = false;
    world.input.setTapsAvailable(false);
    activate();
    world.time.advance(2);
    world.desktop.trusted = true;
    world.input.setTapsAvailable(true);
    world.time.advance(60);
    EXPECT_EQ(world.input.tapCount(), 0U);
    kiosk->deactivate();
    activate();
    EXPECT_TRUE(world.input.isTapInForce());
}

TEST_F(KioskManagerTest, ATrustedButRefusedTapIsTriedAgainForAsLongAsItTakes) {
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false); // a menu or another program holds the keyboard
    activate();
    const auto effects = effectsOf(world, [this] { world.time.advance(20); });
    EXPECT_EQ(countOf(effects, "accessibility.prompt"), 10);
    world.input.setTapsAvailable(true);
    world.time.advance(2);
    EXPECT_TRUE(world.input.isTapInForce());
}

TEST_F(KioskManagerTest, TheLateCheckAsksForTheManagersLifeAndNotWhetherItIsActive) {
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    activate();
    kiosk->deactivate();
    world.input.setTapsAvailable(true);
    world.time.advance(2);
    EXPECT_TRUE(world.input.isTapInForce()) << "somebody still holds the manager";
}

TEST_F(KioskManagerTest, ALateCheckForAManagerThatIsGoneInstallsNoTap) {
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    activate();
    kiosk->deactivate();
    kiosk.reset();
    world.input.setTapsAvailable(true);
    EXPECT_TRUE(effectsOf(world, [this] { world.time.advance(2); }).empty());
    EXPECT_EQ(world.input.tapCount(), 0U);
}

TEST_F(KioskManagerTest, AManagerThatIsGoneWithoutDeactivationDoesNothingMore) {
    activateLocked();
    kiosk.reset();
    showOverlay();
    EXPECT_EQ(press(0, 0, "a"), Receiver::ownWindow);
    EXPECT_TRUE(effectsOf(world, [this] { world.time.advance(5); }).empty());
    EXPECT_EQ(world.time.timerCount(), 0U);
    EXPECT_TRUE(handled.empty());
}

TEST_F(KioskManagerTest, ADwellThatEndsAfterTheManagerIsGonePostsNothing) {
    activate();
    world.desktop.mouse = {1919, 1080};
    world.time.advance(1);
    kiosk.reset();
    EXPECT_TRUE(effectsOf(world, [this] { world.time.advance(5); }).empty());
}

TEST_F(KioskManagerTest, ATickThatStandsStillNeedsNoApplication) {
    const auto early = std::make_shared<KioskManager>(settings, world.platform(false));
    early->activate([](const KeyEvent&) {});
    showOverlay();
    EXPECT_TRUE(effectsOf(world, [this] { world.time.advance(1); }).empty());
}

using KioskManagerDeathTest = KioskManagerTest;

TEST_F(KioskManagerDeathTest, AWatchdogTickWithoutAnApplicationStopsTheProgram) {
    const auto early = std::make_shared<KioskManager>(settings, world.platform(false));
    early->activate([](const KeyEvent&) {});
    EXPECT_DEATH(world.time.advance(0.5), "the application object must exist while a session runs");
}

} // namespace
} // namespace tapalong
