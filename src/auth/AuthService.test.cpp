#include "auth/AuthService.h"

#include "settings/SettingsFixture.test.h"

namespace tapalong {
namespace {

using Result = AuthService::AuthResult;
using Kind = Result::Kind;

struct AuthServiceTest : SettingsFixture {
    std::vector<Result> results;

    [[nodiscard]] Result enter(std::string_view password) const {
        return AuthService::authenticateWithPassword(password, settings);
    }
    void requestTouchID() {
        AuthService::authenticateWithTouchID(world.biometrics, world.time,
                                             [this](const Result& result) { results.push_back(result); });
    }
    /// What a reply of the reader becomes.
    Result resultOf(bool success, std::optional<BiometricError> error) {
        world.biometrics.available = true;
        results.clear();
        requestTouchID();
        world.biometrics.reply(success, std::move(error));
        world.time.drain();
        return results.at(0);
    }
};

TEST_F(AuthServiceTest, TheStoredPasswordSucceeds) {
    settings.exitPassword.set("abc");
    EXPECT_EQ(enter("abc"), Result{Kind::success});
}

TEST_F(AuthServiceTest, CaseAndBlanksOfAPasswordCount) {
    settings.exitPassword.set("abc");
    for (const char* wrong : {"ABC", "abc ", " abc", "ab", "abcd", ""}) {
        EXPECT_EQ(enter(wrong), (Result{Kind::failure, "Incorrect password"})) << wrong;
    }
}

TEST_F(AuthServiceTest, AnEmptyEntrySucceedsWhileNoPasswordIsSet) {
    EXPECT_EQ(enter(""), Result{Kind::success});
    EXPECT_EQ(enter("x"), (Result{Kind::failure, "Incorrect password"}));
}

TEST_F(AuthServiceTest, HowAnAccentIsEncodedDoesNotCount) {
    settings.exitPassword.set("caf\u00E9");
    EXPECT_EQ(enter("cafe\u0301"), Result{Kind::success});
    EXPECT_EQ(enter("cafe").kind, Kind::failure);
}

TEST_F(AuthServiceTest, WrongEntriesAreNeitherCountedNorDelayed) {
    settings.exitPassword.set("abc");
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(enter("x").kind, Kind::failure);
    }
    EXPECT_EQ(enter("abc").kind, Kind::success);
}

TEST_F(AuthServiceTest, TheReaderIsAskedWithoutAFallbackOfItsOwn) {
    world.biometrics.available = true;
    EXPECT_EQ(effectsOf(world, [this] { requestTouchID(); }),
              (Effects{"biometrics.fallbackTitle \"\"", "biometrics.canEvaluate 1",
                       "biometrics.evaluate 1 \"Authenticate to exit Tapalong session\""}));
    EXPECT_TRUE(results.empty());
}

TEST_F(AuthServiceTest, WithoutAReaderTheAnswerComesBeforeTheRequestReturns) {
    requestTouchID();
    EXPECT_EQ(results, (std::vector<Result>{{Kind::failure, "Touch ID not available: No fingerprint reader."}}));
    EXPECT_EQ(world.biometrics.pendingCount(), 0U);
}

TEST_F(AuthServiceTest, WithoutAReaderAndAReasonTheErrorIsUnknown) {
    world.biometrics.unavailableError.reset();
    requestTouchID();
    EXPECT_EQ(results, (std::vector<Result>{{Kind::failure, "Touch ID not available: Unknown error"}}));
}

TEST_F(AuthServiceTest, AFingerThatIsKnownSucceeds) {
    EXPECT_EQ(resultOf(true, std::nullopt), Result{Kind::success});
    EXPECT_EQ(resultOf(true, BiometricError{-2, "ignored"}), Result{Kind::success}) << "success is looked at first";
}

TEST_F(AuthServiceTest, PressingCancelInThePromptIsNoFailure) {
    EXPECT_EQ(resultOf(false, BiometricError{-2, "Cancelled by the user."}), Result{Kind::cancelled});
}

TEST_F(AuthServiceTest, EveryOtherErrorFailsWithItsOwnText) {
    for (const std::int64_t code : {-1, -3, -4, -8, -9, 2}) {
        EXPECT_EQ(resultOf(false, BiometricError{code, "Too many tries."}), (Result{Kind::failure, "Too many tries."}));
    }
}

TEST_F(AuthServiceTest, AFailureWithoutAnErrorHasAText) {
    EXPECT_EQ(resultOf(false, std::nullopt), (Result{Kind::failure, "Authentication failed"}));
}

TEST_F(AuthServiceTest, TheAnswerIsHandedOverOnTheMainQueueOnce) {
    world.biometrics.available = true;
    requestTouchID();
    world.biometrics.reply(true, std::nullopt);
    EXPECT_TRUE(results.empty()) << "the reply may come on any thread";
    world.time.drain();
    EXPECT_EQ(results.size(), 1U);
    world.time.advance(10);
    EXPECT_EQ(results.size(), 1U);
}

TEST_F(AuthServiceTest, RequestsAreIndependent) {
    world.biometrics.available = true;
    requestTouchID();
    requestTouchID();
    world.biometrics.reply(false, std::nullopt);
    world.biometrics.reply(true, std::nullopt);
    world.time.drain();
    EXPECT_EQ(results, (std::vector<Result>{{Kind::failure, "Authentication failed"}, {Kind::success, ""}}));
}

} // namespace
} // namespace tapalong
