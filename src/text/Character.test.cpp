#include "text/Character.h"

#include <gtest/gtest.h>

#include <type_traits>

using namespace std::string_view_literals;

namespace tapalong {
namespace {

std::string firstOf(std::string_view utf8) {
    const std::optional<Character> first = Character::first(utf8);
    return first ? first->utf8() : "none";
}

bool isPrintable(std::string_view utf8) {
    return Character::first(utf8).value().isPrintable();
}

TEST(Character, FirstOfEmptyTextIsNone) {
    EXPECT_FALSE(Character::first("").has_value());
}

TEST(Character, FirstIsOneCluster) {
    EXPECT_EQ(firstOf("abc"), "a");
    EXPECT_EQ(firstOf("e\u0301a"), "e\u0301");
    EXPECT_EQ(firstOf("👨\u200D👩\u200D👧👨"), "👨\u200D👩\u200D👧");
    EXPECT_EQ(firstOf("\r\nx"), "\r\n");
    EXPECT_EQ(firstOf("\0a"sv), "\0"sv);
}

TEST(Character, InvalidUtf8IsRepaired) {
    EXPECT_EQ(firstOf("\xFF\xFF"), "\uFFFD");
    EXPECT_EQ(firstOf("\xE2\x82"), "\uFFFD");
    EXPECT_EQ(firstOf("\xC3\u0301x"), "\uFFFD\u0301");
    EXPECT_EQ(firstOf("a\xFF"), "a");
}

TEST(Character, LiteralOfOneClusterIsThatCharacter) {
    EXPECT_EQ(Character("❤\uFE0F").utf8(), "❤\uFE0F");
    EXPECT_EQ(Character("\n").utf8(), "\n");
    static_assert(!std::is_convertible_v<const char*, Character>);
}

TEST(Character, FirstScalarIsTheClustersFirst) {
    EXPECT_EQ(Character("A").firstScalar(), U'A');
    EXPECT_EQ(Character("e\u0301").firstScalar(), U'e');
    EXPECT_EQ(Character("👩🏽\u200D🚀").firstScalar(), U'👩');
    EXPECT_EQ(Character::first("\0"sv).value().firstScalar(), U'\0');
}

TEST(Character, BlanksLettersArrowsAndEmojiArePrintable) {
    for (const char* utf8 : {" ", "~", "é", "←", "🚀", "❤\uFE0F", "\u2028", "\uFFFD", "\U0010FFFD"}) {
        EXPECT_TRUE(isPrintable(utf8)) << utf8;
    }
}

TEST(Character, ControlsBelowTheBlankAndDeleteAreNotPrintable) {
    for (char control = 0; control < ' '; ++control) {
        EXPECT_FALSE(isPrintable({&control, 1})) << static_cast<int>(control);
    }
    EXPECT_FALSE(isPrintable("\x7F"));
    EXPECT_FALSE(isPrintable("\r\n"));
}

TEST(Character, EveryC1ControlIsPrintable) {
    for (int value = 0x80; value <= 0x9F; ++value) {
        const std::string utf8 = {'\xC2', static_cast<char>(value)};
        EXPECT_TRUE(isPrintable(utf8)) << value;
    }
}

TEST(Character, DefaultIgnorableFirstScalarIsNotPrintable) {
    for (const char* utf8 : {"\u00AD", "\u034F", "\u061C", "\u115F", "\u200B", "\u200D", "\u2060", "\u3164", "\uFE0F",
                             "\uFEFF", "\uFFA0", "\U000E0001", "\U000E0FFF"}) {
        EXPECT_FALSE(isPrintable(utf8)) << testing::PrintToString(utf8);
    }
    EXPECT_FALSE(isPrintable("\uFE0F\u0301"));
    EXPECT_TRUE(isPrintable("a\uFE0F")) << "only the first scalar counts";
}

TEST(Character, OnlyTheLineFeedAloneIsALineBreak) {
    EXPECT_TRUE(Character("\n").isLineBreak());
    for (const char* utf8 : {"\r\n", "\r", "\v", "\f", "\u0085", "\u2028", "\u2029", "n", " "}) {
        EXPECT_FALSE(Character(utf8).isLineBreak()) << testing::PrintToString(utf8);
    }
    EXPECT_FALSE(Character("\r\n") == Character("\n"));
}

TEST(Character, EqualityIsCanonicalEquivalence) {
    EXPECT_EQ(Character("\u00E9"), Character("e\u0301"));
    EXPECT_EQ(Character("\uAC01"), Character("\u1100\u1161\u11A8"));
    EXPECT_EQ(Character("\u2126"), Character("\u03A9"));
    EXPECT_NE(Character("e"), Character("e\u0301"));
    EXPECT_NE(Character("❤"), Character("❤\uFE0F"));
    EXPECT_NE(Character("a"), Character("A"));
}

TEST(Character, CopyEqualsItsOriginal) {
    const Character original("👨\u200D👩\u200D👧");
    Character copy("x");
    EXPECT_NE(copy, original);
    copy = original;
    EXPECT_EQ(copy.utf8(), original.utf8());
}

TEST(CharacterDeathTest, LiteralOfNoneOrSeveralIsFatal) {
    EXPECT_DEATH(Character(""), "Character.test.cpp.*exactly one character");
    EXPECT_DEATH(Character("ab"), "Character.test.cpp.*exactly one character");
    EXPECT_DEATH(Character("🇩🇪🇫"), "exactly one character");
    EXPECT_DEATH(Character("\n\n"), "exactly one character");
    EXPECT_DEATH(Character(nullptr), "made from a literal");
}

} // namespace
} // namespace tapalong
