#include "platform/simulated/SimulatedServices.h"

#include <gtest/gtest.h>

namespace tapalong::simulated {
namespace {

struct SimulatedServicesTest : testing::Test {
    EffectLog effects;
};

TEST_F(SimulatedServicesTest, NotificationsAreRecordedAndDelivered) {
    SimulatedNotificationCenter center(effects);
    int calls = 0;
    const auto token = center.addObserver("show", [&] { ++calls; });
    center.post("show");
    center.removeObserver(token);
    center.post("show");
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(effects.all(), (std::vector<std::string>{"notification.addObserver show", "notification.post show",
                                                       "notification.removeObserver", "notification.post show"}));
}

TEST_F(SimulatedServicesTest, TheFingerprintReaderAnswersTheOldestRequestWhenToldTo) {
    SimulatedBiometrics biometrics(effects);
    biometrics.available = true;
    EXPECT_FALSE(biometrics.reply(true, std::nullopt)) << "nobody has asked";
    const auto context = biometrics.makeContext();
    std::string answers;
    const auto policy = BiometricPolicy::deviceOwnerAuthenticationWithBiometrics;
    context->setLocalizedFallbackTitle("");
    std::optional<BiometricError> error;
    EXPECT_TRUE(context->canEvaluatePolicy(policy, error));
    EXPECT_FALSE(error.has_value());
    context->evaluatePolicy(policy, "why", [&](bool success, auto) { answers += success ? "a+" : "a-"; });
    context->evaluatePolicy(policy, "why", [&](bool success, auto) { answers += success ? "b+" : "b-"; });
    EXPECT_EQ(biometrics.pendingCount(), 2U);
    EXPECT_TRUE(biometrics.reply(true, std::nullopt));
    EXPECT_TRUE(biometrics.reply(false, std::nullopt));
    EXPECT_EQ(answers, "a+b-");
    EXPECT_EQ(effects.all(),
              (std::vector<std::string>{"biometrics.fallbackTitle \"\"", "biometrics.canEvaluate 1",
                                        "biometrics.evaluate 1 \"why\"", "biometrics.evaluate 1 \"why\""}));
}

TEST_F(SimulatedServicesTest, WithoutAReaderTheReasonIsGiven) {
    SimulatedBiometrics biometrics(effects);
    std::optional<BiometricError> error;
    EXPECT_FALSE(
        biometrics.makeContext()->canEvaluatePolicy(BiometricPolicy::deviceOwnerAuthenticationWithBiometrics, error));
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->localizedDescription, "No fingerprint reader.");
}

TEST_F(SimulatedServicesTest, SoundsAreKnownByNameAndWrittenDown) {
    SimulatedSounds sounds(effects);
    EXPECT_EQ(sounds.soundNamed("tink"), nullptr) << "names are case-sensitive";
    const auto sound = sounds.soundNamed("Tink");
    ASSERT_NE(sound, nullptr);
    sound->stop();
    sound->play();
    EXPECT_EQ(effects.all(),
              (std::vector<std::string>{"sound.load tink", "sound.load Tink", "sound.stop Tink", "sound.play Tink"}));
}

TEST_F(SimulatedServicesTest, DefaultsKeepTypedValuesAndReportTheRestAsAbsent) {
    SimulatedDefaults defaults(effects);
    EXPECT_EQ(defaults.value("size"), std::nullopt);
    defaults.setValue("size", std::int64_t{3});
    defaults.setValue("size", 4.5);
    EXPECT_EQ(defaults.value("size"), DefaultsValue(4.5));
    EXPECT_EQ(effects.all(), (std::vector<std::string>{"defaults.set size", "defaults.set size"}));
}

TEST_F(SimulatedServicesTest, TheSameSeedGivesTheSameNumbersWithinTheBound) {
    SimulatedRandom one(7);
    SimulatedRandom other(7);
    SimulatedRandom third(8);
    bool differs = false;
    for (int i = 0; i < 100; ++i) {
        const auto number = one.uniform(10);
        EXPECT_LT(number, 10U);
        EXPECT_EQ(other.uniform(10), number);
        differs = differs || third.uniform(10) != number;
    }
    EXPECT_TRUE(differs);
}

TEST_F(SimulatedServicesTest, ScriptedNumbersComeFirst) {
    SimulatedRandom random(1);
    random.scripted = {3, 12};
    EXPECT_EQ(random.uniform(10), 3U);
    EXPECT_EQ(random.uniform(10), 2U);
    EXPECT_TRUE(random.scripted.empty());
}

TEST_F(SimulatedServicesTest, DiagnosticLinesAreRecorded) {
    SimulatedOutput(effects).print("hello");
    EXPECT_EQ(effects.all(), std::vector<std::string>{"print hello"});
}

TEST_F(SimulatedServicesTest, NoticesAreAnnouncedBeforeTheyChange) {
    SimulatedNotices notices;
    std::vector<std::string> seen{"unset"};
    const auto subscription = notices.objectWillChange([&] { seen = notices.notices(); });
    notices.set({"The disk is full."});
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(notices.notices(), std::vector<std::string>{"The disk is full."});
}

TEST(SimulatedInputLimits, LimitsAreAnnouncedBeforeTheyChangeAndLooksAreCounted) {
    SimulatedInputLimits limits;
    std::size_t seen = 99;
    const auto subscription = limits.objectWillChange([&] { seen = limits.openLimits().size(); });
    limits.lookAgain();
    limits.set({InputLimit::powerButton});
    EXPECT_EQ(seen, 0U);
    EXPECT_EQ(limits.openLimits(), std::vector{InputLimit::powerButton});
    EXPECT_EQ(limits.looks, 1);
}

TEST(SimulatedRandomDeathTest, ABoundOfNothingStopsTheProgram) {
    SimulatedRandom random(1);
    EXPECT_DEATH(std::ignore = random.uniform(0), "a random number needs a positive bound");
}

} // namespace
} // namespace tapalong::simulated
