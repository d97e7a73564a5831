#include "session/RainbowColors.h"

#include <gtest/gtest.h>

#include <array>

namespace tapalong {
namespace {

struct Entry {
    SrgbColor color;
    double factorOnLight;
};

constexpr std::array<Entry, 9> palette{{
    {{0.93, 0.18, 0.18}, 0.72},
    {{0.98, 0.45, 0.02}, 0.72},
    {{0.99, 0.78, 0.05}, 0.55},
    {{0.55, 0.86, 0.15}, 0.55},
    {{0.18, 0.78, 0.25}, 0.72},
    {{0.30, 0.78, 0.90}, 0.55},
    {{0.20, 0.50, 0.92}, 0.85},
    {{0.55, 0.32, 0.85}, 0.85},
    {{0.70, 0.30, 0.75}, 0.85},
}};

struct RainbowColorsTest : testing::Test {
    RainbowColorsTest() { RainbowColors::reset(); }
};

TEST_F(RainbowColorsTest, TenCallsOnADarkBackgroundGoRoundThePaletteOnce) {
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(RainbowColors::next(false), Color(palette.at(i % 9).color)) << i;
    }
}

TEST_F(RainbowColorsTest, OnALightBackgroundEachColourIsDarkenedByItsLuminance) {
    for (const auto& [color, factor] : palette) {
        EXPECT_EQ(RainbowColors::next(true),
                  Color(SrgbColor{color.red * factor, color.green * factor, color.blue * factor, 1}));
    }
}

TEST_F(RainbowColorsTest, BrightColoursAreDarkenedMostAndDarkOnesLeast) {
    std::array<SrgbColor, 9> light{};
    for (auto& color : light) {
        color = RainbowColors::next(true).srgb().value();
    }
    EXPECT_DOUBLE_EQ(light[2].red, 0.5445);
    EXPECT_DOUBLE_EQ(light[2].green, 0.429);
    EXPECT_DOUBLE_EQ(light[2].blue, 0.0275);
    EXPECT_DOUBLE_EQ(light[6].red, 0.17);
    EXPECT_DOUBLE_EQ(light[6].green, 0.425);
    EXPECT_DOUBLE_EQ(light[6].blue, 0.782);
}

TEST_F(RainbowColorsTest, TheBackgroundDoesNotDisturbThePosition) {
    std::ignore = RainbowColors::next(true);
    EXPECT_EQ(RainbowColors::next(false), Color(palette[1].color));
    EXPECT_EQ(RainbowColors::index(), 2);
}

TEST_F(RainbowColorsTest, ResetStartsThePaletteAnew) {
    std::ignore = RainbowColors::next(false);
    RainbowColors::reset();
    EXPECT_EQ(RainbowColors::index(), 0);
    EXPECT_EQ(RainbowColors::next(false), Color(palette[0].color));
}

} // namespace
} // namespace tapalong
