#include "text/Utf8.h"

#include <gtest/gtest.h>

using namespace std::string_view_literals;

namespace tapalong {
namespace {

void expectDecoded(std::string_view utf8, char32_t scalar, std::size_t length) {
    const DecodedScalar first = decodeFirst(utf8);
    EXPECT_EQ(first.scalar, scalar) << testing::PrintToString(utf8);
    EXPECT_EQ(first.length, length) << testing::PrintToString(utf8);
}

TEST(Utf8, EmptyTextHasNoScalar) {
    expectDecoded("", 0, 0);
}

TEST(Utf8, LeastAndGreatestOfEachLength) {
    expectDecoded("\0"sv, 0, 1);
    expectDecoded("\x7F", 0x7F, 1);
    expectDecoded("\xC2\x80", 0x80, 2);
    expectDecoded("\xDF\xBF", 0x7FF, 2);
    expectDecoded("\xE0\xA0\x80", 0x800, 3);
    expectDecoded("\xED\x9F\xBF", 0xD7FF, 3);
    expectDecoded("\xEE\x80\x80", 0xE000, 3);
    expectDecoded("\xEF\xBF\xBF", 0xFFFF, 3);
    expectDecoded("\xF0\x90\x80\x80", 0x10000, 4);
    expectDecoded("\xF4\x8F\xBF\xBF", 0x10FFFF, 4);
}

TEST(Utf8, OnlyTheFirstScalarIsRead) {
    expectDecoded("\xC3\xA9\xC3\xA9", 0xE9, 2);
}

TEST(Utf8, EveryScalarSurvivesTheRoundTrip) {
    std::size_t lost = 0;
    for (char32_t scalar = 0; scalar < 0x110000; ++scalar) {
        if (scalar >= 0xD800 && scalar < 0xE000) {
            continue;
        }
        const std::string utf8 = encoded(scalar);
        const DecodedScalar back = decodeFirst(utf8);
        lost += back.scalar == scalar && back.length == utf8.size() ? 0 : 1;
    }
    EXPECT_EQ(lost, 0U);
}

TEST(Utf8, BytesThatLeadNothing) {
    for (const char* utf8 : {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xF5\x80\x80\x80", "\xFE", "\xFF"}) {
        expectDecoded(utf8, replacementCharacter, 1);
    }
}

TEST(Utf8, OverlongFormsSurrogatesAndValuesBeyondTheLastAreReplacedByteByByte) {
    for (const char* utf8 : {"\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80"}) {
        expectDecoded(utf8, replacementCharacter, 1);
    }
}

TEST(Utf8, SequencesThatAreCutOffAreReplacedAsOnePiece) {
    expectDecoded("\xC3", replacementCharacter, 1);
    expectDecoded("\xE2\x82", replacementCharacter, 2);
    expectDecoded("\xF0\x9F\x98", replacementCharacter, 3);
    expectDecoded("\xE2\x82z", replacementCharacter, 2);
    expectDecoded("\xF0\x9F\xC3\xA9", replacementCharacter, 2);
}

TEST(Utf8, DecodingReadsNoByteBeyondTheView) {
    expectDecoded("\xE2\x82\xAC"sv.substr(0, 2), replacementCharacter, 2);
    expectDecoded("\xC3\xA9"sv.substr(0, 1), replacementCharacter, 1);
}

TEST(Utf8, WholeTextIsDecodedAroundWhatIsInvalid) {
    EXPECT_EQ(decoded("a\xFF\xE2\x82\xF0\x9F\x98\x80\xC3"), U"a\uFFFD\uFFFD\U0001F600\uFFFD");
    EXPECT_EQ(decoded(""), U"");
}

TEST(Utf8, RepairingReplacesOnlyWhatIsInvalid) {
    EXPECT_EQ(repaired("a\xFF\xE2\x82\xF0\x9F\x98\x80\xC3"), "a\uFFFD\uFFFD\U0001F600\uFFFD");
    EXPECT_EQ(repaired("\uFFFD é\0z"sv), "\uFFFD é\0z"sv);
}

TEST(Utf8DeathTest, EncodingWhatIsNoScalarIsFatal) {
    EXPECT_DEATH((void)encoded(0xD800), "only Unicode scalar values are encoded");
    EXPECT_DEATH((void)encoded(0xDFFF), "only Unicode scalar values are encoded");
    EXPECT_DEATH((void)encoded(0x110000), "only Unicode scalar values are encoded");
}

} // namespace
} // namespace tapalong
