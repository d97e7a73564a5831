// The synthesised clips as the player finds them: in the build tree, beside the folder of this very program.

#include "platform/linux/sound/Clip.h"
#include "platform/linux/sound/PulseSystemSounds.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace tapalong {
namespace {

class InstalledClip : public testing::TestWithParam<const char*> {};

TEST_P(InstalledClip, IsThereAndAsSoftAndShortAsItShouldBe) {
    const auto clip = loadClip(PulseSystemSounds::installedFolder(), GetParam());
    ASSERT_NE(clip, nullptr);
    const auto& samples = clip->samples;
    EXPECT_GE(samples.size(), 80U * clipRate / 1000U);
    EXPECT_LE(samples.size(), 400U * clipRate / 1000U);
    EXPECT_EQ(samples.front(), 0.0F);
    EXPECT_EQ(samples.back(), 0.0F);
    float peak = 0.0F;
    for (const float sample : samples) {
        peak = std::max(peak, std::abs(sample));
    }
    EXPECT_GT(peak, 0.14F);
    EXPECT_LE(peak, 0.2501F);
}

INSTANTIATE_TEST_SUITE_P(Six, InstalledClip, testing::Values("Tink", "Pop", "Frog", "Funk", "Glass", "Morse"),
                         [](const auto& name) { return std::string(name.param); });

TEST(PulseSystemSounds, UnknownNameIsNull) {
    PulseSystemSounds sounds;
    EXPECT_EQ(sounds.soundNamed("tink"), nullptr);
    EXPECT_EQ(sounds.soundNamed("Basso"), nullptr);
    EXPECT_EQ(sounds.soundNamed(""), nullptr);
}

} // namespace
} // namespace tapalong
