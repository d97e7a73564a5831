#include "text/UnicodeProperties.h"

#include "text/UnicodeTestData.test.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tapalong {
namespace {

constexpr char32_t codePointCount = 0x110000;

std::vector<char32_t> disagreements(const std::vector<bool>& expected, bool (*actual)(char32_t)) {
    std::vector<char32_t> found;
    for (char32_t scalar = 0; scalar < codePointCount; ++scalar) {
        if (actual(scalar) != expected[scalar]) {
            found.push_back(scalar);
        }
    }
    return found;
}

TEST(UnicodeProperties, TablesAndTestFilesAreOfOneVersion) {
    for (const char* name : {"GraphemeBreakTest.txt", "NormalizationTest.txt", "DerivedCoreProperties.txt"}) {
        EXPECT_EQ(unicode_test_data::read(name).version, unicodeVersion()) << name;
    }
}

TEST(UnicodeProperties, DefaultIgnorableIsTheWholeProperty) {
    const auto expected = unicode_test_data::codePointsWith("Default_Ignorable_Code_Point",
                                                            unicode_test_data::read("DerivedCoreProperties.txt"));
    EXPECT_GT(std::count(expected.begin(), expected.end(), true), 4000);
    EXPECT_EQ(disagreements(expected, isDefaultIgnorable), std::vector<char32_t>());
}

TEST(UnicodeProperties, WhiteSpaceIsTheWholeProperty) {
    const auto expected = unicode_test_data::codePointsWith("White_Space", unicode_test_data::read("PropList.txt"));
    EXPECT_GE(std::count(expected.begin(), expected.end(), true), 25);
    EXPECT_EQ(disagreements(expected, isWhiteSpace), std::vector<char32_t>());
}

TEST(UnicodeProperties, RangesIncludeBothEnds) {
    EXPECT_EQ(graphemeBreakOf(0x1F1E5), GraphemeBreak::other);
    EXPECT_EQ(graphemeBreakOf(0x1F1E6), GraphemeBreak::regionalIndicator);
    EXPECT_EQ(graphemeBreakOf(0x1F1FF), GraphemeBreak::regionalIndicator);
    EXPECT_NE(graphemeBreakOf(0x1F200), GraphemeBreak::regionalIndicator);
}

TEST(UnicodeProperties, EndsOfAsciiHaveTheirTableValues) {
    EXPECT_EQ(graphemeBreakOf(U'\0'), GraphemeBreak::control);
    EXPECT_EQ(graphemeBreakOf(U'\n'), GraphemeBreak::lf);
    EXPECT_EQ(graphemeBreakOf(U'\r'), GraphemeBreak::cr);
    EXPECT_EQ(graphemeBreakOf(U'\x1F'), GraphemeBreak::control);
    EXPECT_EQ(graphemeBreakOf(U' '), GraphemeBreak::other);
    EXPECT_EQ(graphemeBreakOf(U'~'), GraphemeBreak::other);
    EXPECT_EQ(graphemeBreakOf(U'\x7F'), GraphemeBreak::control);
}

TEST(UnicodeProperties, ValuesBeyondTheLastCodePointHaveNoProperty) {
    constexpr char32_t beyond = 0xFFFFFFFF;
    EXPECT_EQ(graphemeBreakOf(beyond), GraphemeBreak::other);
    EXPECT_EQ(conjunctBreakOf(beyond), ConjunctBreak::none);
    EXPECT_FALSE(isExtendedPictographic(beyond));
    EXPECT_FALSE(isDefaultIgnorable(beyond));
    EXPECT_FALSE(isWhiteSpace(beyond));
    EXPECT_EQ(combiningClassOf(beyond), 0);
    EXPECT_TRUE(canonicalDecompositionOf(beyond).empty());
}

TEST(UnicodeProperties, DecompositionsAreFull) {
    EXPECT_EQ(canonicalDecompositionOf(0x1E14), U"\u0045\u0304\u0300");
    EXPECT_EQ(canonicalDecompositionOf(0x2126), U"\u03A9");
    EXPECT_TRUE(canonicalDecompositionOf(0x80).empty());
    EXPECT_TRUE(canonicalDecompositionOf(0x1E9A).empty()) << "a compatibility decomposition only";
}

} // namespace
} // namespace tapalong
