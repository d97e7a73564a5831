#include "lockdown/KioskFixture.test.h"

namespace tapalong {
namespace {

/// Follows what the lockdown says of itself. An observer hears before a change, so it looks on the next turn.
struct InForceTest : KioskFixture {
    Subscription subscription = kiosk->objectWillChange([this] { ++announcements; });
    int announcements = 0;

    void lose(EventType notification = EventType::tapDisabledByTimeout) { world.input.disableTaps(notification); }
    void holdKeyboard() { world.input.setTapsAvailable(false); }
    void releaseKeyboard() { world.input.setTapsAvailable(true); }
};

TEST_F(InForceTest, WithoutLockdownThereIsNothingToMiss) {
    activate();
    kiosk->deactivate();
    EXPECT_EQ(kiosk->lockdown(), Lockdown::off);
    EXPECT_EQ(announcements, 0);
    EXPECT_FALSE(kiosk->hasBeen(Lockdown::missing));
    EXPECT_FALSE(kiosk->hasBeen(Lockdown::inForce));
}

TEST_F(InForceTest, ATapThatIsHadAtOnceIsInForceUntilTheEnd) {
    activateLocked();
    EXPECT_EQ(kiosk->lockdown(), Lockdown::inForce);
    EXPECT_EQ(announcements, 1);
    kiosk->deactivate();
    EXPECT_EQ(kiosk->lockdown(), Lockdown::off);
    EXPECT_EQ(announcements, 2);
    EXPECT_FALSE(kiosk->hasBeen(Lockdown::missing));
}

TEST_F(InForceTest, ARefusedTapIsMissingUntilItIsHad) {
    holdKeyboard();
    activateLocked();
    EXPECT_EQ(kiosk->lockdown(), Lockdown::missing);
    world.time.advance(20);
    EXPECT_EQ(kiosk->lockdown(), Lockdown::missing);
    EXPECT_EQ(announcements, 1) << "no news in trying again";
    releaseKeyboard();
    world.time.advance(1.9);
    EXPECT_EQ(kiosk->lockdown(), Lockdown::missing);
    world.time.advance(0.1);
    EXPECT_EQ(kiosk->lockdown(), Lockdown::inForce);
    EXPECT_EQ(announcements, 2);
    EXPECT_TRUE(kiosk->hasBeen(Lockdown::missing));
    EXPECT_TRUE(kiosk->hasBeen(Lockdown::inForce));
}

TEST_F(InForceTest, WithoutPermissionItStaysMissing) {
    world.desktop.trusted = false;
    holdKeyboard();
    activateLocked();
    world.time.advance(60);
    EXPECT_EQ(kiosk->lockdown(), Lockdown::missing);
    EXPECT_FALSE(kiosk->hasBeen(Lockdown::inForce));
}

TEST_F(InForceTest, ATapThatIsEnabledAgainAtOnceWasNeverMissing) {
    activateLocked();
    lose(EventType::tapDisabledByTimeout);
    lose(EventType::tapDisabledByUserInput);
    EXPECT_EQ(kiosk->lockdown(), Lockdown::inForce);
    EXPECT_EQ(announcements, 1);
    EXPECT_FALSE(kiosk->hasBeen(Lockdown::missing));
}

TEST_F(InForceTest, ATapThatIsTakenAndRefusedIsMissingUntilItIsGivenBack) {
    activateLocked();
    holdKeyboard();
    lose(EventType::tapDisabledByUserInput);
    EXPECT_EQ(kiosk->lockdown(), Lockdown::missing);
    EXPECT_FALSE(world.input.isTapInForce());
    releaseKeyboard();
    EXPECT_EQ(kiosk->lockdown(), Lockdown::inForce);
    EXPECT_TRUE(world.input.isTapInForce());
    EXPECT_EQ(announcements, 3);
    EXPECT_TRUE(kiosk->hasBeen(Lockdown::missing));
}

TEST_F(InForceTest, TheEndOfASessionIsNoLoss) {
    holdKeyboard();
    activateLocked();
    kiosk->deactivate();
    EXPECT_EQ(kiosk->lockdown(), Lockdown::off);
    EXPECT_TRUE(kiosk->hasBeen(Lockdown::missing)) << "what was is kept for the one who asks afterwards";
}

TEST_F(InForceTest, TheNextActivationBeginsAnew) {
    holdKeyboard();
    activateLocked();
    kiosk->deactivate();
    releaseKeyboard();
    activateLocked();
    EXPECT_EQ(kiosk->lockdown(), Lockdown::inForce);
    EXPECT_FALSE(kiosk->hasBeen(Lockdown::missing));
}

TEST_F(InForceTest, WhetherItIsWantedIsAskedAtActivation) {
    activateLocked();
    settings.kioskMode.set(false);
    EXPECT_EQ(kiosk->lockdown(), Lockdown::inForce);
    kiosk->deactivate();
    activate();
    settings.kioskMode.set(true);
    EXPECT_EQ(kiosk->lockdown(), Lockdown::off);
}

TEST_F(InForceTest, ATapMadeAfterTheEndIsNoLockdownThatAnybodyWants) {
    holdKeyboard();
    activateLocked();
    kiosk->deactivate();
    releaseKeyboard();
    world.time.advance(2);
    EXPECT_TRUE(world.input.isTapInForce());
    EXPECT_EQ(kiosk->lockdown(), Lockdown::off);
}

} // namespace
} // namespace tapalong
