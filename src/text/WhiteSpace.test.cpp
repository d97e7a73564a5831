#include "text/WhiteSpace.h"

#include <gtest/gtest.h>

using namespace std::string_view_literals;

namespace tapalong {
namespace {

TEST(WhiteSpace, TextWithoutAnyStaysWhole) {
    EXPECT_EQ(trimmed("a"), "a");
    EXPECT_EQ(trimmed("#FF8800"), "#FF8800");
    EXPECT_EQ(trimmed("é🚀"), "é🚀");
}

TEST(WhiteSpace, BothEndsAreTrimmed) {
    EXPECT_EQ(trimmed("  a"), "a");
    EXPECT_EQ(trimmed("a \n"), "a");
    EXPECT_EQ(trimmed("\t\r\n\v\f a b \u0085"), "a b");
}

TEST(WhiteSpace, EverySpaceOfUnicodeIsTrimmed) {
    EXPECT_EQ(trimmed("\u00A0\u1680\u2000\u200A\u2028é\u2029\u202F\u205F\u3000"), "é");
}

TEST(WhiteSpace, SpacesInsideStay) {
    EXPECT_EQ(trimmed(" a \u3000 b "), "a \u3000 b");
}

TEST(WhiteSpace, InvisibleCharactersThatAreNoWhiteSpaceStay) {
    EXPECT_EQ(trimmed("\u200Ba\uFEFF"), "\u200Ba\uFEFF");
    EXPECT_EQ(trimmed("\0 "sv), "\0"sv);
}

TEST(WhiteSpace, NothingButWhiteSpaceLeavesNothing) {
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed(" \u3000\n"), "");
}

TEST(WhiteSpace, InvalidBytesStay) {
    EXPECT_EQ(trimmed(" \xFF\xE2\x80 "), "\xFF\xE2\x80");
}

TEST(WhiteSpace, ResultPointsIntoTheText) {
    const std::string_view text = "  ab ";
    EXPECT_EQ(trimmed(text).data(), text.data() + 2);
}

} // namespace
} // namespace tapalong
