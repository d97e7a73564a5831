#include "platform/linux/sound/Mixer.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace tapalong {
namespace {

std::shared_ptr<const Clip> clipOf(std::vector<float> samples) {
    return std::make_shared<const Clip>(Clip{std::move(samples)});
}

std::shared_ptr<const Clip> level(float value, std::size_t length) {
    return clipOf(std::vector<float>(length, value));
}

std::vector<float> render(Mixer& mixer, std::size_t count) {
    std::vector<float> samples(count, 7.0F);
    mixer.render(samples);
    return samples;
}

TEST(Mixer, GivesSilenceWhenNothingPlays) {
    Mixer mixer;
    EXPECT_EQ(render(mixer, 3), (std::vector<float>{0.0F, 0.0F, 0.0F}));
    EXPECT_TRUE(mixer.silent());
}

TEST(Mixer, PlaysAClipOnceFromItsFirstSample) {
    Mixer mixer;
    mixer.play(1, clipOf({0.1F, 0.2F, 0.3F}));
    EXPECT_FALSE(mixer.silent());
    EXPECT_EQ(render(mixer, 5), (std::vector<float>{0.1F, 0.2F, 0.3F, 0.0F, 0.0F}));
    EXPECT_TRUE(mixer.silent());
}

TEST(Mixer, GoesOnWhereTheFormerStretchEnded) {
    Mixer mixer;
    mixer.play(1, clipOf({0.1F, 0.2F, 0.3F}));
    EXPECT_EQ(render(mixer, 2), (std::vector<float>{0.1F, 0.2F}));
    EXPECT_EQ(render(mixer, 2), (std::vector<float>{0.3F, 0.0F}));
}

TEST(Mixer, IsSilentAsSoonAsTheLastSampleIsRendered) {
    Mixer mixer;
    mixer.play(1, level(0.5F, 4));
    render(mixer, 4);
    EXPECT_TRUE(mixer.silent());
}

TEST(Mixer, AddsSoundsUp) {
    Mixer mixer;
    mixer.play(1, clipOf({0.25F, 0.25F, 0.25F}));
    render(mixer, 1);
    mixer.play(2, clipOf({0.5F, 0.5F}));
    EXPECT_EQ(render(mixer, 3), (std::vector<float>{0.75F, 0.75F, 0.0F}));
}

TEST(Mixer, KeepsASumWithinFullScale) {
    Mixer mixer;
    mixer.play(1, clipOf({0.75F, -0.75F}));
    mixer.play(2, clipOf({0.75F, -0.75F}));
    EXPECT_EQ(render(mixer, 2), (std::vector<float>{1.0F, -1.0F}));
}

TEST(Mixer, RestartedSoundBeginsAtOnceWhileTheFormerRunFades) {
    Mixer mixer;
    std::vector<float> rising(1000);
    for (std::size_t i = 0; i < rising.size(); ++i) {
        rising[i] = static_cast<float>(i) / 2000.0F;
    }
    mixer.play(1, clipOf(rising));
    render(mixer, 500);
    mixer.play(1, clipOf(rising));
    const auto samples = render(mixer, 400);
    for (std::size_t i = 0; i < Mixer::fadeLength; ++i) {
        const float faded = static_cast<float>(Mixer::fadeLength - 1 - i) / static_cast<float>(Mixer::fadeLength);
        ASSERT_NEAR(samples[i], rising[i] + rising[500 + i] * faded, 1e-6) << i;
    }
    for (std::size_t i = Mixer::fadeLength; i < samples.size(); ++i) {
        ASSERT_EQ(samples[i], rising[i]) << i;
    }
}

TEST(Mixer, RestartDoesNotLeaveTheFormerRunPlaying) {
    Mixer mixer;
    mixer.play(1, level(0.25F, 1000));
    render(mixer, 500);
    mixer.play(1, level(0.25F, 1000));
    render(mixer, 999);
    EXPECT_EQ(render(mixer, 2), (std::vector<float>{0.25F, 0.0F}));
}

TEST(Mixer, PlayedTwiceBeforeAnythingIsRenderedSoundsOnce) {
    Mixer mixer;
    mixer.play(1, level(0.25F, 2));
    mixer.play(1, level(0.25F, 2));
    EXPECT_EQ(render(mixer, 3), (std::vector<float>{0.25F, 0.25F, 0.0F}));
}

TEST(Mixer, StoppedSoundFadesWithoutAJumpAndEnds) {
    Mixer mixer;
    mixer.play(1, level(0.5F, 48'000));
    float former = render(mixer, 100).back();
    mixer.stop(1);
    const auto samples = render(mixer, Mixer::fadeLength);
    for (const float sample : samples) {
        ASSERT_LT(sample, former);
        ASSERT_LT(former - sample, 0.01F);
        former = sample;
    }
    EXPECT_EQ(samples.back(), 0.0F);
    EXPECT_TRUE(mixer.silent());
}

TEST(Mixer, FadeGoesOnOverSeveralStretches) {
    Mixer mixer;
    mixer.play(1, level(0.5F, 48'000));
    render(mixer, 100);
    mixer.stop(1);
    const float early = render(mixer, Mixer::fadeLength / 2).back();
    mixer.stop(1);
    const auto late = render(mixer, Mixer::fadeLength);
    EXPECT_LT(late.front(), early);
    EXPECT_EQ(late.back(), 0.0F);
    EXPECT_TRUE(mixer.silent());
}

TEST(Mixer, StoppedBeforeItsFirstSampleIsNeverHeard) {
    Mixer mixer;
    mixer.play(1, level(0.5F, 10));
    mixer.stop(1);
    EXPECT_TRUE(mixer.silent());
    EXPECT_EQ(render(mixer, 1), (std::vector<float>{0.0F}));
}

TEST(Mixer, StopAndPlayStartAgainFromTheBeginning) {
    Mixer mixer;
    mixer.play(1, clipOf({0.1F, 0.2F}));
    mixer.stop(1);
    mixer.play(1, clipOf({0.1F, 0.2F}));
    EXPECT_EQ(render(mixer, 2), (std::vector<float>{0.1F, 0.2F}));
}

TEST(Mixer, StopLeavesOtherSoundsAlone) {
    Mixer mixer;
    mixer.play(1, level(0.25F, 1000));
    mixer.play(2, level(0.5F, 1000));
    render(mixer, 10);
    mixer.stop(1);
    EXPECT_EQ(render(mixer, Mixer::fadeLength + 1).back(), 0.5F);
}

TEST(Mixer, StopOfASilentSoundChangesNothing) {
    Mixer mixer;
    mixer.stop(1);
    EXPECT_TRUE(mixer.silent());
}

TEST(Mixer, FadeThatOutlastsItsClipEndsWithIt) {
    Mixer mixer;
    mixer.play(1, level(0.5F, 110));
    render(mixer, 100);
    mixer.stop(1);
    const auto samples = render(mixer, 20);
    EXPECT_GT(samples[9], 0.0F);
    EXPECT_EQ(samples[10], 0.0F);
    EXPECT_TRUE(mixer.silent());
}

TEST(Mixer, ClearedIsSilentAtOnce) {
    Mixer mixer;
    mixer.play(1, level(0.5F, 100));
    render(mixer, 10);
    mixer.clear();
    EXPECT_EQ(render(mixer, 1), (std::vector<float>{0.0F}));
}

TEST(MixerDeathTest, ClipWithoutSamplesIsAProgrammingError) {
    Mixer mixer;
    EXPECT_DEATH(mixer.play(1, clipOf({})), "a sound has a clip with samples");
}

} // namespace
} // namespace tapalong
