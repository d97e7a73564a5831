#include "sound/SoundPack.h"

#include <gtest/gtest.h>

namespace tapalong {
namespace {

TEST(SoundPack, TheSixPacksComeInPickerOrder) {
    const std::array<SoundPack, 6> expected{{
        {"tink", "Tink", "Light, gentle tap", "Tink"},
        {"pop", "Pop", "Bubbly pop sound", "Pop"},
        {"frog", "Frog", "Quirky ribbit", "Frog"},
        {"funk", "Funk", "Playful boing", "Funk"},
        {"glass", "Glass", "Gentle chime", "Glass"},
        {"morse", "Morse", "Retro telegraph beep", "Morse"},
    }};
    EXPECT_EQ(SoundPack::allPacks(), expected);
}

TEST(SoundPack, EveryPackIsFoundByItsIdentifier) {
    for (const auto& pack : SoundPack::allPacks()) {
        EXPECT_EQ(SoundPack::packWithID(pack.id), pack);
    }
}

TEST(SoundPack, ADisplayNameIsNoIdentifier) {
    EXPECT_EQ(SoundPack::packWithID("Pop").id, "tink");
}

TEST(SoundPack, AnEmptyOrUnknownIdentifierMeansTink) {
    EXPECT_EQ(SoundPack::packWithID("").id, "tink");
    EXPECT_EQ(SoundPack::packWithID("harp").id, "tink");
}

} // namespace
} // namespace tapalong
