#include "session/SessionManager.h"

#include "session/SessionFixture.test.h"

namespace tapalong {
namespace {

using SessionManagerTest = SessionFixture;

TEST_F(SessionManagerTest, StartingActivatesTheLockdownAndThenShowsTheWindow) {
    EXPECT_EQ(effectsOf(world, [this] { manager->startSession(); }),
              (Effects{"sound.load Tink", "monitor.addLocal mask=21504",
                       "print ✅ Local event monitor active — keyboard input captured", "monitor.addGlobal mask=96",
                       "timer.every 0.25", "timer.every 0.5", "notification.addObserver showExitOverlay",
                       "notification.addObserver hideExitOverlay", "delegate.showSessionWindow"}));
    EXPECT_TRUE(manager->isSessionActive());
    EXPECT_NE(manager->kioskManager(), nullptr);
    EXPECT_NE(manager->soundEngine(), nullptr);
}

TEST_F(SessionManagerTest, TheSessionIsActiveAndEmptyBeforeItsObjectsAreMade) {
    std::vector<std::string> changes;
    const auto subscription = manager->objectWillChange([&] {
        changes.push_back(
            std::string(manager->isSessionActive() ? "active" : "idle") +
            (manager->kioskManager() != nullptr || manager->soundEngine() != nullptr ? " with objects" : ""));
    });
    manager->startSession();
    EXPECT_EQ(changes, (std::vector<std::string>{"idle", "active"}));
}

TEST_F(SessionManagerTest, EndingTearsTheLockdownDownAndThenDismissesTheWindow) {
    manager->startSession();
    EXPECT_EQ(effectsOf(world, [this] { manager->endSession(); }),
              (Effects{"monitor.remove", "print 🔓 CGEventTap deactivated — normal input restored", "monitor.remove",
                       "timer.invalidate", "notification.removeObserver", "notification.removeObserver",
                       "delegate.dismissSessionWindow"}));
    EXPECT_FALSE(manager->isSessionActive());
    EXPECT_EQ(manager->kioskManager(), nullptr);
    EXPECT_EQ(manager->soundEngine(), nullptr);
}

TEST_F(SessionManagerTest, TheContentIsClearedAfterTheSessionCountsAsOver) {
    manager->startSession();
    type(2);
    std::vector<std::string> changes;
    const auto subscription = manager->objectWillChange([&] {
        EXPECT_EQ(manager->kioskManager(), nullptr);
        EXPECT_EQ(manager->soundEngine(), nullptr);
        changes.push_back((manager->isSessionActive() ? "active " : "idle ") + typed());
    });
    manager->endSession();
    EXPECT_EQ(changes, (std::vector<std::string>{"active aa", "idle aa"}));
    EXPECT_EQ(count(), 0U);
}

TEST_F(SessionManagerTest, StartingTwiceKeepsTheFirstSessionsContentAndObjects) {
    manager->startSession();
    type(1, "x");
    const auto* kiosk = manager->kioskManager();
    const auto* sound = manager->soundEngine();
    EXPECT_TRUE(effectsOf(world, [this] { manager->startSession(); }).empty());
    EXPECT_EQ(typed(), "x");
    EXPECT_EQ(manager->kioskManager(), kiosk);
    EXPECT_EQ(manager->soundEngine(), sound);
}

TEST_F(SessionManagerTest, EndingWhenIdleDoesNotTouchTheSessionWindow) {
    EXPECT_TRUE(effectsOf(world, [this] { manager->endSession(); }).empty());
    manager->startSession();
    manager->endSession();
    EXPECT_TRUE(effectsOf(world, [this] { manager->endSession(); }).empty());
}

TEST_F(SessionManagerTest, EndingReallyDestroysTheLockdown) {
    manager->startSession();
    const std::weak_ptr<const KioskManager> kiosk = manager->kioskManager()->weak_from_this();
    ASSERT_FALSE(kiosk.expired());
    manager->endSession();
    EXPECT_TRUE(kiosk.expired());
    EXPECT_EQ(world.time.timerCount(), 0U);
}

TEST_F(SessionManagerTest, KeysPostedBeforeTheEndAreDropped) {
    manager->startSession();
    world.send(simulated::keyEvent(0, 0, "a"));
    manager->endSession();
    EXPECT_TRUE(effectsOf(world, [this] { world.time.drain(); }).empty());
    EXPECT_EQ(count(), 0U);
}

TEST_F(SessionManagerTest, KeysOfAManagerThatIsGoneDoNothing) {
    manager->startSession();
    world.send(simulated::keyEvent(0, 0, "a"));
    manager.reset();
    EXPECT_TRUE(effectsOf(world, [this] { world.time.drain(); }).empty());
}

TEST_F(SessionManagerTest, AHundredSessionsLeaveNoMoreBehindThanOne) {
    const auto session = [this] {
        manager->startSession();
        type(3);
        world.time.advance(1);
        manager->endSession();
        world.time.advance(1);
    };
    session();
    const auto monitors = world.input.localMonitorCount() + world.input.globalMonitorCount();
    const auto observers = world.notificationCenter.observerCount();
    const auto timers = world.time.timerCount();
    for (int i = 1; i < 100; ++i) {
        session();
    }
    EXPECT_EQ(world.input.localMonitorCount() + world.input.globalMonitorCount(), monitors);
    EXPECT_EQ(world.notificationCenter.observerCount(), observers);
    EXPECT_EQ(world.time.timerCount(), timers);
    EXPECT_EQ(timers, 0U);
    EXPECT_EQ(world.input.tapCount(), 0U);
}

TEST_F(SessionManagerTest, LockdownIsMissingWhileTheKeyboardIsWantedAndNotHad) {
    EXPECT_FALSE(manager->isLockdownMissing());
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    manager->startSession();
    EXPECT_TRUE(manager->isLockdownMissing());
    world.input.setTapsAvailable(true);
    int announcements = 0;
    const auto subscription = manager->objectWillChange([&] { ++announcements; });
    world.time.advance(2);
    EXPECT_FALSE(manager->isLockdownMissing());
    EXPECT_EQ(announcements, 1);
    manager->endSession();
    EXPECT_FALSE(manager->isLockdownMissing());
}

TEST_F(SessionManagerTest, HowLockdownWentIsKnownFromTheEndToTheNextStart) {
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    manager->startSession();
    EXPECT_EQ(manager->lastLockdown(), LockdownOutcome::asWished) << "nothing has ended yet";
    manager->endSession();
    EXPECT_EQ(manager->lastLockdown(), LockdownOutcome::never);
    manager->startSession();
    EXPECT_EQ(manager->lastLockdown(), LockdownOutcome::asWished);
    world.input.setTapsAvailable(true);
    world.time.advance(2);
    manager->endSession();
    EXPECT_EQ(manager->lastLockdown(), LockdownOutcome::partly);
    manager->startSession();
    manager->endSession();
    EXPECT_EQ(manager->lastLockdown(), LockdownOutcome::asWished);
}

TEST_F(SessionManagerTest, ASessionThatLosesItsKeyboardHadLockdownForAPart) {
    settings.kioskMode.set(true);
    manager->startSession();
    world.input.setTapsAvailable(false);
    world.input.disableTaps(EventType::tapDisabledByUserInput);
    EXPECT_TRUE(manager->isLockdownMissing());
    manager->endSession();
    EXPECT_EQ(manager->lastLockdown(), LockdownOutcome::partly);
}

TEST_F(SessionManagerTest, WithoutLockdownNothingIsMissingAndAllWentAsWished) {
    world.input.setTapsAvailable(false);
    manager->startSession();
    EXPECT_FALSE(manager->isLockdownMissing());
    manager->endSession();
    EXPECT_EQ(manager->lastLockdown(), LockdownOutcome::asWished);
}

TEST_F(SessionManagerTest, TheSharedManagerIsTheOneThatLives) {
    EXPECT_EQ(&SessionManager::shared(), manager.get());
    const auto newer = std::make_shared<SessionManager>(settings, platform);
    manager.reset();
    EXPECT_EQ(&SessionManager::shared(), newer.get());
}

using SessionManagerDeathTest = SessionManagerTest;

TEST_F(SessionManagerDeathTest, WithoutAManagerTheDoorStopsTheProgram) {
    manager.reset();
    EXPECT_DEATH(std::ignore = SessionManager::shared(), "the session manager must exist");
}

TEST_F(SessionManagerDeathTest, StartingWithoutADelegateStopsTheProgram) {
    ApplicationDelegate::setShared(nullptr);
    EXPECT_DEATH(manager->startSession(), "application delegate must be there before a session starts or ends");
}

TEST_F(SessionManagerDeathTest, EndingWithoutADelegateStopsTheProgram) {
    manager->startSession();
    ApplicationDelegate::setShared(nullptr);
    EXPECT_DEATH(manager->endSession(), "application delegate must be there before a session starts or ends");
}

} // namespace
} // namespace tapalong
