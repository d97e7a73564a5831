#include "text/Normalization.h"

#include "text/UnicodeTestData.test.h"
#include "text/Utf8.h"

#include <gtest/gtest.h>

#include <array>
#include <iostream>
#include <set>

namespace tapalong {
namespace {

std::string toUtf8(const std::u32string& scalars) {
    std::string utf8;
    for (const char32_t scalar : scalars) {
        utf8 += encoded(scalar);
    }
    return utf8;
}

/// The columns of "1E0A;1E0A;0044 0307;1E0A;0044 0307;": source, forms C, D, KC and KD.
std::array<std::u32string, 5> columns(const std::string& line) {
    std::array<std::u32string, 5> found;
    std::istringstream stream(line);
    for (std::u32string& column : found) {
        std::string field;
        std::getline(stream, field, ';');
        column = unicode_test_data::scalars(field);
    }
    return found;
}

TEST(Normalization, EveryCaseOfTheUnicodeTestFile) {
    const unicode_test_data::File file = unicode_test_data::read("NormalizationTest.txt");
    ASSERT_GT(file.lines.size(), 18000U);
    for (const std::string& line : file.lines) {
        const auto [source, formC, formD, formKC, formKD] = columns(line);
        ASSERT_FALSE(source.empty()) << line;
        EXPECT_EQ(canonicallyDecomposed(toUtf8(source)), formD) << line;
        EXPECT_EQ(canonicallyDecomposed(toUtf8(formC)), formD) << line;
        EXPECT_EQ(canonicallyDecomposed(toUtf8(formD)), formD) << line;
        EXPECT_EQ(canonicallyDecomposed(toUtf8(formKC)), formKD) << line;
        EXPECT_EQ(canonicallyDecomposed(toUtf8(formKD)), formKD) << line;
        EXPECT_TRUE(canonicallyEqual(toUtf8(source), toUtf8(formC))) << line;
        EXPECT_EQ(canonicallyEqual(toUtf8(source), toUtf8(formKD)), formD == formKD) << line;
    }
    std::cout << "Unicode " << file.version << ": " << file.lines.size() << " cases\n";
}

/// Of the file's cases, those of one scalar are all that change; each other scalar is its own decomposition.
TEST(Normalization, ScalarsThatTheTestFileLeavesOutStayAsTheyAre) {
    std::set<char32_t> listed;
    for (const std::string& line : unicode_test_data::read("NormalizationTest.txt").lines) {
        const std::u32string source = columns(line)[0];
        if (source.size() == 1) {
            listed.insert(source[0]);
        }
    }
    ASSERT_GT(listed.size(), 10000U);
    std::vector<char32_t> changed;
    for (char32_t scalar = 0; scalar < 0x110000; ++scalar) {
        const bool isSurrogate = scalar >= 0xD800 && scalar < 0xE000;
        if (!isSurrogate && !listed.contains(scalar) &&
            canonicallyDecomposed(encoded(scalar)) != std::u32string(1, scalar)) {
            changed.push_back(scalar);
        }
    }
    EXPECT_EQ(changed, std::vector<char32_t>());
}

TEST(Normalization, ComposedAndDecomposedTextIsEqual) {
    EXPECT_TRUE(canonicallyEqual("caf\u00E9", "cafe\u0301"));
    EXPECT_TRUE(canonicallyEqual("\uAC01", "\u1100\u1161\u11A8"));
    EXPECT_TRUE(canonicallyEqual("", ""));
}

TEST(Normalization, OrderOfMarksCountsOnlyWithinOneClass) {
    EXPECT_TRUE(canonicallyEqual("a\u0323\u0307", "a\u0307\u0323"));
    EXPECT_FALSE(canonicallyEqual("a\u0301\u0300", "a\u0300\u0301"));
}

TEST(Normalization, CompatibleCaseAndLengthVariantsDiffer) {
    EXPECT_FALSE(canonicallyEqual("\uFB01", "fi"));
    EXPECT_FALSE(canonicallyEqual("a", "A"));
    EXPECT_FALSE(canonicallyEqual("a", "aa"));
    EXPECT_FALSE(canonicallyEqual("❤", "❤\uFE0F"));
}

TEST(Normalization, InvalidBytesAreReplacementCharacters) {
    EXPECT_TRUE(canonicallyEqual("a\xFF", "a\uFFFD"));
    EXPECT_FALSE(canonicallyEqual("a\xFF", "a"));
}

} // namespace
} // namespace tapalong
