#include "settings/Color.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <limits>

namespace tapalong {
namespace {

SrgbColor componentsOf(std::string_view hex) {
    return Color::fromHex(hex).value().srgb().value();
}

TEST(Color, BlanksAndANewlineAroundTheHexTextAreTrimmed) {
    EXPECT_EQ(componentsOf("  #ff8000\n"), (SrgbColor{1.0, 128.0 / 255.0, 0.0, 1.0}));
}

TEST(Color, UnicodeWhiteSpaceAroundTheHexTextIsTrimmed) {
    EXPECT_EQ(componentsOf("\u00A0\u2028#FF8000\u3000\t"), componentsOf("FF8000"));
}

TEST(Color, EveryNumberSignIsRemovedWhereverItStands) {
    EXPECT_EQ(componentsOf("##FF8000"), componentsOf("#FF8000"));
    EXPECT_EQ(componentsOf("F#F80#0#0#"), componentsOf("#FF8000"));
}

TEST(Color, TooFewDigitsAreNoColour) {
    EXPECT_EQ(Color::fromHex("FF80"), std::nullopt);
    EXPECT_EQ(Color::fromHex(""), std::nullopt);
    EXPECT_EQ(Color::fromHex("######"), std::nullopt);
}

TEST(Color, SevenDigitsAreNoColour) {
    EXPECT_EQ(Color::fromHex("#FF80000"), std::nullopt);
}

TEST(Color, LettersBeyondFAreNoColour) {
    EXPECT_EQ(Color::fromHex("GG0000"), std::nullopt);
    EXPECT_EQ(Color::fromHex("gg0000"), std::nullopt);
    EXPECT_EQ(Color::fromHex("00000é"), std::nullopt);
}

TEST(Color, SignsPrefixesAndInnerBlanksAreNoColour) {
    for (const char* text : {"+FF800", "-FF800", "0xFF80", "0XFF80", "FF 000", "FF\n000", "FF800 # "}) {
        EXPECT_EQ(Color::fromHex(text), std::nullopt) << text;
    }
}

TEST(Color, SmallAndCapitalDigitsAreTheSame) {
    EXPECT_EQ(componentsOf("abCDef"), componentsOf("ABcdEF"));
    EXPECT_EQ(componentsOf("012345"), (SrgbColor{1.0 / 255.0, 0x23 / 255.0, 0x45 / 255.0}));
}

TEST(Color, TheHexTextOfAHalfIsCutNotRounded) {
    EXPECT_EQ(Color(SrgbColor{1.0, 0.5, 0.0}).hexString(), "#FF7F00");
    EXPECT_EQ(Color(SrgbColor{0.999, 0.999, 0.999}).hexString(), "#FEFEFE");
}

TEST(Color, AHexTextReadAndWrittenBackIsAtMostOneStepDarker) {
    for (unsigned level = 0; level < 256; ++level) {
        std::array<char, 8> same{};
        std::array<char, 8> darker{};
        std::snprintf(same.data(), same.size(), "#%02X0000", level);
        std::snprintf(darker.data(), darker.size(), "#%02X0000", level > 0 ? level - 1 : 0);
        const auto written = Color::fromHex(same.data()).value().hexString();
        EXPECT_TRUE(written == same.data() || written == darker.data()) << same.data() << " became " << written;
    }
}

TEST(Color, WhiteAndBlackHaveComponentsTheDesktopsColoursHaveNone) {
    EXPECT_EQ(Color(NamedColor::white).srgb(), (SrgbColor{1, 1, 1}));
    EXPECT_EQ(Color(NamedColor::black).srgb(), (SrgbColor{0, 0, 0}));
    EXPECT_EQ(Color(NamedColor::primary).srgb(), std::nullopt);
    EXPECT_EQ(Color(NamedColor::windowBackground).srgb(), std::nullopt);
}

TEST(Color, TheHexTextOfAColourWithoutComponentsIsWhite) {
    EXPECT_EQ(Color(NamedColor::white).hexString(), "#FFFFFF");
    EXPECT_EQ(Color(NamedColor::black).hexString(), "#000000");
    EXPECT_EQ(Color(NamedColor::primary).hexString(), "#FFFFFF");
    EXPECT_EQ(Color(NamedColor::windowBackground).hexString(), "#FFFFFF");
}

TEST(Color, ANamedColourStaysNamed) {
    EXPECT_EQ(Color(NamedColor::white).named(), NamedColor::white);
    EXPECT_EQ(Color(SrgbColor{1, 1, 1}).named(), std::nullopt);
    EXPECT_NE(Color(NamedColor::white), Color(SrgbColor{1, 1, 1}));
}

TEST(Color, WhiteIsLight) {
    EXPECT_TRUE((SrgbColor{1, 1, 1}.isLight()));
}

TEST(Color, MidGreyIsExactlyOneHalfAndSoNotLight) {
    EXPECT_FALSE((SrgbColor{0.5, 0.5, 0.5}.isLight()));
    EXPECT_TRUE((SrgbColor{0.5, 0.5000001, 0.5}.isLight()));
}

TEST(Color, PureGreenIsLightAndPureBlueIsDark) {
    EXPECT_TRUE((SrgbColor{0, 1, 0}.isLight()));
    EXPECT_FALSE((SrgbColor{0, 0, 1}.isLight()));
}

TEST(Color, LightnessIsOfTheComponentsAsTheyAreNotLinearised) {
    EXPECT_TRUE((SrgbColor{0.6, 0.6, 0.6}.isLight())) << "linearised it would be about 0.32";
}

TEST(ColorDeathTest, AComponentBeyondAllIntegersStopsTheProgram) {
    const auto written = [](double red) { return Color(SrgbColor{red, 0, 0}).hexString(); };
    constexpr auto message = "a colour component must fit a 64-bit integer of 255ths";
    EXPECT_DEATH(std::ignore = written(1e17), message);
    EXPECT_DEATH(std::ignore = written(-1e17), message);
    EXPECT_DEATH(std::ignore = written(std::numeric_limits<double>::quiet_NaN()), message);
    EXPECT_DEATH(std::ignore = written(std::numeric_limits<double>::infinity()), message);
}

} // namespace
} // namespace tapalong
