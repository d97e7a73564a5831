#include "auth/ExitOverlay.h"

#include "settings/SettingsFixture.test.h"

#include <memory>

namespace tapalong {
namespace {

struct ExitOverlayTest : SettingsFixture {
    int authenticated = 0;
    std::shared_ptr<ExitOverlay> overlay = std::make_shared<ExitOverlay>(
        [this] { world.effects.record("clear isPresented"); }, [this] { ++authenticated; }, settings, platform);

    ExitOverlayTest() {
        settings.exitPassword.set("abc");
        world.biometrics.available = true;
        world.effects.clear();
    }
    void appear() {
        overlay->onAppear();
        world.time.advance(0.1);
    }
    void reply(bool success, std::optional<BiometricError> error = std::nullopt) {
        ASSERT_TRUE(world.biometrics.reply(success, std::move(error)));
        world.time.drain();
    }
    void clickTouchID() {
        if (overlay->isTouchIDEnabled()) {
            overlay->attemptTouchID();
        }
    }
    void enter(const std::string& password) {
        overlay->setPassword(password);
        overlay->attemptPassword();
    }
};

TEST_F(ExitOverlayTest, CapsLockIsSaidAndItsChangesAreAnnounced) {
    EXPECT_FALSE(overlay->isCapsLockOn());
    int announcements = 0;
    const auto subscription = overlay->objectWillChange([&] { ++announcements; });
    world.keyboardLocks.setCapsLockOn(true);
    EXPECT_TRUE(overlay->isCapsLockOn());
    world.keyboardLocks.setCapsLockOn(false);
    EXPECT_FALSE(overlay->isCapsLockOn());
    EXPECT_EQ(announcements, 2);
}

TEST_F(ExitOverlayTest, WithTouchIDOffItIsNotOfferedAndTheFieldGetsFocusATenthOfASecondAfterAppearing) {
    settings.useTouchID.set(false);
    EXPECT_FALSE(overlay->offersTouchID());
    EXPECT_EQ(effectsOf(world, [this] { overlay->onAppear(); }), Effects{"queue.after 0.1"});
    world.time.advance(0.0625);
    EXPECT_FALSE(overlay->isPasswordFocused());
    world.time.advance(0.0625);
    EXPECT_TRUE(overlay->isPasswordFocused());
    EXPECT_EQ(world.biometrics.pendingCount(), 0U);
}

TEST_F(ExitOverlayTest, WithTouchIDOnThePromptStartsByItselfAndTheButtonIsDisabledUntilItEnds) {
    EXPECT_TRUE(overlay->offersTouchID());
    overlay->onAppear();
    world.time.advance(0.0625);
    EXPECT_EQ(world.biometrics.pendingCount(), 0U);
    world.time.advance(0.0625);
    EXPECT_EQ(world.biometrics.pendingCount(), 1U);
    EXPECT_FALSE(overlay->isTouchIDEnabled());
    EXPECT_FALSE(overlay->isPasswordFocused());
    reply(false);
    EXPECT_TRUE(overlay->isTouchIDEnabled());
}

TEST_F(ExitOverlayTest, WhetherTouchIDIsUsedIsDecidedATenthOfASecondAfterAppearing) {
    overlay->onAppear();
    settings.useTouchID.set(false);
    world.time.advance(0.125);
    EXPECT_EQ(world.biometrics.pendingCount(), 0U);
    EXPECT_TRUE(overlay->isPasswordFocused());
}

TEST_F(ExitOverlayTest, AnOverlayThatIsGoneByThenAsksNobody) {
    overlay->onAppear();
    overlay.reset();
    world.time.advance(1);
    EXPECT_EQ(world.biometrics.pendingCount(), 0U);
}

TEST_F(ExitOverlayTest, AFingerThatIsKnownAuthenticates) {
    appear();
    reply(true);
    EXPECT_EQ(authenticated, 1);
    EXPECT_FALSE(overlay->attemptingTouchID());
}

TEST_F(ExitOverlayTest, ACancelledPromptMovesFocusToTheFieldWithoutAMessage) {
    appear();
    reply(false, BiometricError{BiometricError::userCancel, "Cancelled."});
    EXPECT_TRUE(overlay->isPasswordFocused());
    EXPECT_EQ(overlay->errorMessage(), "");
    EXPECT_FALSE(overlay->attemptingTouchID());
    EXPECT_EQ(authenticated, 0);
}

TEST_F(ExitOverlayTest, AFailedFingerShowsTheMessageAndMovesFocusToTheField) {
    appear();
    reply(false);
    EXPECT_EQ(overlay->errorMessage(), "Authentication failed");
    EXPECT_TRUE(overlay->isPasswordFocused());
    EXPECT_EQ(authenticated, 0);
}

TEST_F(ExitOverlayTest, AFailedFingerFirstFreesTheButtonThenSetsTheMessageThenMovesTheFocus) {
    enter("wrong");
    std::vector<std::string> changes;
    const auto now = [this] {
        return std::string(overlay->attemptingTouchID() ? "asking " : "idle ") + overlay->errorMessage() +
               (overlay->isPasswordFocused() ? " focused" : "");
    };
    const auto subscription = overlay->objectWillChange([&] { changes.push_back(now()); });
    overlay->attemptTouchID();
    reply(false);
    changes.push_back(now());
    EXPECT_EQ(changes,
              (std::vector<std::string>{"idle Incorrect password", "asking Incorrect password", "asking ", "idle ",
                                        "idle Authentication failed", "idle Authentication failed focused"}));
}

TEST_F(ExitOverlayTest, WithoutAUsableReaderItsReasonShowsAndTheFieldTakesFocus) {
    world.biometrics.available = false;
    appear();
    EXPECT_EQ(overlay->errorMessage(), "Touch ID not available: No fingerprint reader.");
    EXPECT_TRUE(overlay->isPasswordFocused());
    EXPECT_TRUE(overlay->isTouchIDEnabled());
}

TEST_F(ExitOverlayTest, PressingTouchIDTwiceQuicklyStartsOnePromptOnly) {
    clickTouchID();
    clickTouchID();
    EXPECT_EQ(world.biometrics.pendingCount(), 1U);
}

TEST_F(ExitOverlayTest, ANewAttemptClearsTheFormerMessageFirst) {
    enter("wrong");
    EXPECT_EQ(overlay->errorMessage(), "Incorrect password");
    overlay->attemptTouchID();
    EXPECT_EQ(overlay->errorMessage(), "");
    reply(false);
    overlay->setPassword("abc");
    std::vector<std::string> messages;
    const auto subscription = overlay->objectWillChange([&] { messages.push_back(overlay->errorMessage()); });
    overlay->attemptPassword();
    EXPECT_EQ(messages, std::vector<std::string>{"Authentication failed"});
    EXPECT_EQ(overlay->errorMessage(), "");
}

TEST_F(ExitOverlayTest, TheRightPasswordAuthenticatesKeepsItsTextAndDoesNotDismiss) {
    EXPECT_TRUE(effectsOf(world, [this] { enter("abc"); }).empty()) << "nothing is posted, nothing is cleared";
    EXPECT_EQ(authenticated, 1);
    EXPECT_EQ(overlay->password(), "abc");
    EXPECT_EQ(overlay->errorMessage(), "");
}

TEST_F(ExitOverlayTest, AWrongPasswordShowsItsMessageEmptiesTheFieldAndLeavesTheFocus) {
    overlay->setPasswordFocused(true);
    enter("wrong");
    EXPECT_EQ(overlay->errorMessage(), "Incorrect password");
    EXPECT_EQ(overlay->password(), "");
    EXPECT_TRUE(overlay->isPasswordFocused());
    EXPECT_EQ(authenticated, 0);
}

TEST_F(ExitOverlayTest, AWrongPasswordSetsTheMessageBeforeItEmptiesTheField) {
    overlay->setPassword("wrong");
    std::vector<std::string> states;
    const auto subscription =
        overlay->objectWillChange([&] { states.push_back(overlay->password() + "|" + overlay->errorMessage()); });
    overlay->attemptPassword();
    EXPECT_EQ(states, (std::vector<std::string>{"wrong|", "wrong|", "wrong|Incorrect password"}));
}

TEST_F(ExitOverlayTest, UnlockNeedsTextInTheField) {
    EXPECT_FALSE(overlay->isUnlockEnabled());
    overlay->setPassword(" ");
    EXPECT_TRUE(overlay->isUnlockEnabled());
}

TEST_F(ExitOverlayTest, ReturnInAnEmptyFieldStillAsksTheService) {
    overlay->attemptPassword();
    EXPECT_EQ(overlay->errorMessage(), "Incorrect password");
    EXPECT_EQ(authenticated, 0);
    settings.exitPassword.set("");
    overlay->attemptPassword();
    EXPECT_EQ(authenticated, 1);
}

TEST_F(ExitOverlayTest, DismissingPostsFirstAndThenClears) {
    EXPECT_EQ(effectsOf(world, [this] { overlay->dismiss(); }),
              (Effects{"notification.post hideExitOverlay", "clear isPresented"}));
}

TEST_F(ExitOverlayTest, CancelAndTheBackdropClearPasswordAndMessage) {
    enter("wrong");
    overlay->setPassword("abc");
    std::string whenPosted;
    std::ignore = world.notificationCenter.addObserver(
        "hideExitOverlay", [&] { whenPosted = overlay->password() + "|" + overlay->errorMessage(); });
    overlay->dismiss();
    EXPECT_EQ(whenPosted, "abc|Incorrect password");
    EXPECT_EQ(overlay->password(), "");
    EXPECT_EQ(overlay->errorMessage(), "");
    EXPECT_EQ(authenticated, 0);
}

TEST_F(ExitOverlayTest, APasswordCountsWhileAPromptIsPendingAndSoDoesTheLaterAnswer) {
    appear();
    enter("abc");
    EXPECT_EQ(authenticated, 1);
    EXPECT_TRUE(overlay->attemptingTouchID());
    reply(true);
    EXPECT_EQ(authenticated, 2);
    EXPECT_FALSE(overlay->attemptingTouchID());
}

TEST_F(ExitOverlayTest, AnAnswerToATakenDownOverlayStillCounts) {
    appear();
    overlay->dismiss();
    overlay.reset();
    reply(true);
    EXPECT_EQ(authenticated, 1);
}

TEST_F(ExitOverlayTest, TheFieldIsAlwaysOfferedWhateverItsSwitchSays) {
    EXPECT_FALSE(overlay->showPasswordField);
    overlay->showPasswordField = true;
    enter("abc");
    EXPECT_EQ(authenticated, 1);
    EXPECT_TRUE(overlay->showPasswordField) << "nobody writes it";
}

TEST_F(ExitOverlayTest, ThereIsNoLimitOfAttemptsAndNoTimeout) {
    for (int i = 0; i < 100; ++i) {
        enter("wrong");
    }
    world.time.advance(3600);
    enter("abc");
    EXPECT_EQ(authenticated, 1);
}

} // namespace
} // namespace tapalong
