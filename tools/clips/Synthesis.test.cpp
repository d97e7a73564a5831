#include "clips/Synthesis.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace tapalong::clips {
namespace {

class EveryClip : public testing::TestWithParam<Recipe> {
protected:
    std::vector<std::int16_t> samples = synthesise(GetParam());

    [[nodiscard]] int loudest(std::size_t from, std::size_t to) const {
        int peak = 0;
        for (std::size_t i = from; i < to; ++i) {
            peak = std::max(peak, std::abs(static_cast<int>(samples[i])));
        }
        return peak;
    }
};

TEST_P(EveryClip, LastsBetween80And400Milliseconds) {
    EXPECT_GE(samples.size(), 48U * 80U);
    EXPECT_LE(samples.size(), 48U * 400U);
}

TEST_P(EveryClip, PeaksAtItsShareOfAQuarterOfFullScale) {
    EXPECT_NEAR(loudest(0, samples.size()), GetParam().level * 32'767.0 / 4.0, 1.0);
}

TEST_P(EveryClip, StartsAndEndsAtZero) {
    EXPECT_EQ(samples.front(), 0);
    EXPECT_EQ(samples.back(), 0);
}

TEST_P(EveryClip, IsQuietInItsFirstAndLastQuarterMillisecond) {
    EXPECT_LT(loudest(0, 12), 32'767 / 40);
    EXPECT_LT(loudest(samples.size() - 12, samples.size()), 32'767 / 400);
}

TEST_P(EveryClip, HasNoJumpBetweenNeighbours) {
    int widest = 0;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        widest = std::max(widest, std::abs(samples[i] - samples[i - 1]));
    }
    // A 5 kHz tone at the clips' peak moves by 0.16 of full scale from one sample to the next; all here is lower.
    EXPECT_LT(widest, 32'767 * 16 / 100);
}

TEST_P(EveryClip, IsNotMerelyATickInSilence) {
    double energy = 0.0;
    for (const std::int16_t sample : samples) {
        energy += static_cast<double>(sample) * sample;
    }
    const double loudness = std::sqrt(energy / static_cast<double>(samples.size())) / 32'767.0;
    EXPECT_GT(loudness, 0.02);
}

TEST_P(EveryClip, IsTheSameAtEveryRun) {
    EXPECT_EQ(samples, synthesise(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Recipes, EveryClip, testing::ValuesIn(allRecipes()),
                         [](const auto& recipe) { return std::string(recipe.param.name); });

TEST(Recipes, AreTheSixKeySounds) {
    std::vector<std::string> names;
    for (const Recipe& recipe : allRecipes()) {
        names.emplace_back(recipe.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Tink", "Pop", "Frog", "Funk", "Glass", "Morse"}));
}

} // namespace
} // namespace tapalong::clips
