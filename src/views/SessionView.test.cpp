#include "views/SessionView.h"

#include "lockdown/Notifications.h"
#include "session/RecordingDelegate.test.h"
#include "session/SessionManager.h"
#include "settings/SettingsFixture.test.h"

#include <memory>

namespace tapalong {
namespace {

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyDelete = 51;

/// A session and its view, without a window around it.
struct SessionViewTest : SettingsFixture {
    RecordingDelegate delegate{world.effects};
    std::shared_ptr<SessionManager> manager = std::make_shared<SessionManager>(settings, platform);
    std::shared_ptr<SessionView> view = std::make_shared<SessionView>(manager, settings, platform);
    int scrolls = 0;

    SessionViewTest() {
        settings.exitPassword.set("abc");
        settings.useTouchID.set(false);
        manager->startSession();
        view->onAppear();
        view->scrollContainerAppeared([this] { ++scrolls; });
        world.effects.clear();
    }
    void press(std::int64_t keyCode) { world.send(simulated::keyEvent(keyCode, 0, "a")); }
    void pressAndLook(std::int64_t keyCode) {
        press(keyCode);
        world.time.drain();
    }
    void postShow() { world.notificationCenter.post(showExitOverlayNotification); }
};

TEST_F(SessionViewTest, TheWarningStandsWhileAWantedLockdownIsMissing) {
    EXPECT_FALSE(view->showsLockdownWarning()) << "a session without lockdown has the notice";
    manager->endSession();
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    manager->startSession();
    EXPECT_TRUE(view->showsLockdownWarning());
    EXPECT_FALSE(view->showsLockdownNotice());
    pressAndLook(keyA);
    EXPECT_TRUE(view->showsLockdownWarning()) << "typing does not make it go";
    world.input.setTapsAvailable(true);
    world.time.advance(2);
    EXPECT_FALSE(view->showsLockdownWarning());
}

TEST_F(SessionViewTest, AppearingObservesTheOverlayAndStartsTheBlinkingOnce) {
    const auto other = std::make_shared<SessionView>(manager, settings, platform);
    EXPECT_EQ(effectsOf(world,
                        [&] {
                            other->onAppear();
                            other->onAppear();
                        }),
              (Effects{"notification.addObserver showExitOverlay", "timer.every 0.6"}));
}

TEST_F(SessionViewTest, DisappearingEndsBoth) {
    EXPECT_EQ(effectsOf(world,
                        [this] {
                            view->onDisappear();
                            view->onDisappear();
                        }),
              (Effects{"notification.removeObserver", "timer.invalidate"}));
}

TEST_F(SessionViewTest, AViewThatIsLetGoTakesItselfDown) {
    EXPECT_EQ(effectsOf(world, [this] { view.reset(); }), (Effects{"notification.removeObserver", "timer.invalidate"}));
    pressAndLook(keyA);
    EXPECT_EQ(scrolls, 0);
}

TEST_F(SessionViewTest, TheNotificationBringsTheOverlayUp) {
    EXPECT_EQ(view->exitOverlay(), nullptr);
    postShow();
    ASSERT_NE(view->exitOverlay(), nullptr);
    world.time.advance(0.125);
    EXPECT_TRUE(view->exitOverlay()->isPasswordFocused()) << "it is told that it appeared";
}

TEST_F(SessionViewTest, TwoNotificationsInARowLeaveOneOverlay) {
    postShow();
    const auto first = view->exitOverlay();
    first->setPassword("half typ");
    int announcements = 0;
    const auto subscription = view->objectWillChange([&] { ++announcements; });
    postShow();
    EXPECT_EQ(view->exitOverlay(), first);
    EXPECT_EQ(announcements, 0);
}

TEST_F(SessionViewTest, DismissingTakesTheOverlayDownAndTheSessionGoesOn) {
    postShow();
    view->exitOverlay()->dismiss();
    EXPECT_EQ(view->exitOverlay(), nullptr);
    EXPECT_TRUE(manager->isSessionActive());
    postShow();
    EXPECT_EQ(view->exitOverlay()->password(), "") << "the next overlay is a new one";
}

TEST_F(SessionViewTest, SuccessEndsTheSessionAndLeavesTheOverlayFlagAlone) {
    postShow();
    const auto overlay = view->exitOverlay();
    overlay->setPassword("abc");
    overlay->attemptPassword();
    EXPECT_FALSE(manager->isSessionActive());
    EXPECT_EQ(view->exitOverlay(), overlay) << "the window goes with it";
}

TEST_F(SessionViewTest, AnOverlayThatOutlivesItsViewIsHarmless) {
    postShow();
    const auto overlay = view->exitOverlay();
    view.reset();
    overlay->dismiss();
    EXPECT_TRUE(manager->isSessionActive());
}

TEST_F(SessionViewTest, WithLockdownOnTheNoticeNeverShows) {
    settings.kioskMode.set(true);
    EXPECT_FALSE(view->showsLockdownNotice());
    pressAndLook(keyA);
    EXPECT_FALSE(view->showsLockdownNotice());
}

TEST_F(SessionViewTest, WithLockdownOffTheNoticeGoesWithTheFirstCharacterAndReturnsWithAnEmptyScreen) {
    EXPECT_TRUE(view->showsLockdownNotice());
    pressAndLook(keyA);
    EXPECT_FALSE(view->showsLockdownNotice());
    pressAndLook(keyDelete);
    EXPECT_TRUE(view->showsLockdownNotice());
}

TEST_F(SessionViewTest, TheWheelIsForWhoeverLooksBackWithLockdownOff) {
    EXPECT_TRUE(view->scrollsBack());
    settings.kioskMode.set(true);
    EXPECT_FALSE(view->scrollsBack());
}

TEST_F(SessionViewTest, TypingAndDeletingBothScrollToTheEnd) {
    pressAndLook(keyA);
    EXPECT_EQ(scrolls, 1);
    pressAndLook(keyA);
    EXPECT_EQ(scrolls, 2);
    pressAndLook(keyDelete);
    EXPECT_EQ(scrolls, 3);
}

TEST_F(SessionViewTest, AnUnchangedCountDoesNotScroll) {
    pressAndLook(keyDelete);
    EXPECT_EQ(scrolls, 0);
    press(keyA);
    press(keyDelete);
    world.time.drain();
    EXPECT_EQ(scrolls, 0) << "one character came and went before anybody looked";
    manager->endSession();
    world.time.drain();
    EXPECT_EQ(scrolls, 0) << "from empty to empty";
}

TEST_F(SessionViewTest, WithoutAScrollContainerNothingIsScrolled) {
    const auto other = std::make_shared<SessionView>(manager, settings, platform);
    other->onAppear();
    pressAndLook(keyA);
    EXPECT_EQ(scrolls, 1) << "only the view that has one";
}

TEST_F(SessionViewTest, AChangeThatIsStillPendingWhenTheViewGoesIsForgotten) {
    press(keyA);
    press(keyA);
    manager->endSession();
    view.reset();
    world.time.drain();
    EXPECT_EQ(scrolls, 0);
}

TEST_F(SessionViewTest, TheGlowSitsInTheConfiguredCornerAndMovesWithTheSetting) {
    const std::vector<std::pair<ScreenCorner, Point>> places{{ScreenCorner::topLeft, {0, 0}},
                                                             {ScreenCorner::topRight, {800, 0}},
                                                             {ScreenCorner::bottomLeft, {0, 600}},
                                                             {ScreenCorner::bottomRight, {800, 600}}};
    for (const auto& [corner, centre] : places) {
        settings.exitCorner.set(corner);
        EXPECT_EQ(view->glowCentre(800, 600), centre) << label(corner);
    }
    EXPECT_EQ(SessionView::glowRadius, 40);
    EXPECT_EQ(SessionView::glowOpacity, 0.08);
}

TEST_F(SessionViewTest, ItShowsTheSessionAndTheStoreItWasGiven) {
    EXPECT_EQ(&view->sessionManager(), manager.get());
    EXPECT_EQ(&view->settings(), &settings);
    EXPECT_TRUE(view->text().cursorVisible());
}

} // namespace
} // namespace tapalong
