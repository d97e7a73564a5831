#include "text/GraphemeBreak.h"

#include "text/UnicodeProperties.h"
#include "text/UnicodeTestData.test.h"
#include "text/Utf8.h"

#include <gtest/gtest.h>

#include <iostream>

namespace tapalong {
namespace {

using Clusters = std::vector<std::string_view>;

/// The clusters of "÷ 0061 × 0308 ÷ 0062 ÷".
std::vector<std::string> expectedClusters(const std::string& line) {
    std::vector<std::string> expected;
    std::istringstream stream(line);
    for (std::string word; stream >> word;) {
        if (word == "÷") {
            expected.emplace_back();
        } else if (word != "×") {
            expected.back() += encoded(unicode_test_data::codePoint(word));
        }
    }
    expected.pop_back();
    return expected;
}

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
        text += part;
    }
    return text;
}

TEST(GraphemeBreak, EveryCaseOfTheUnicodeTestFile) {
    const unicode_test_data::File file = unicode_test_data::read("GraphemeBreakTest.txt");
    ASSERT_GT(file.lines.size(), 500U);
    for (const std::string& line : file.lines) {
        const std::vector<std::string> expected = expectedClusters(line);
        ASSERT_FALSE(expected.empty()) << line;
        const std::string text = joined(expected);
        EXPECT_EQ(clusters(text), Clusters(expected.begin(), expected.end())) << line;
        EXPECT_EQ(firstClusterLength(text), expected[0].size()) << line;
    }
    std::cout << "Unicode " << file.version << ": " << file.lines.size() << " cases\n";
}

TEST(GraphemeBreak, EmptyTextHasNoCluster) {
    EXPECT_EQ(firstClusterLength(""), 0U);
    EXPECT_EQ(clusters(""), Clusters());
}

TEST(GraphemeBreak, PlainLettersStandAlone) {
    EXPECT_EQ(clusters("abc"), Clusters({"a", "b", "c"}));
}

TEST(GraphemeBreak, AsciiLetterTakesTheMarkThatFollows) {
    EXPECT_EQ(clusters("ae\u0301z"), Clusters({"a", "e\u0301", "z"}));
}

TEST(GraphemeBreak, CarriageReturnAndLineFeedAreOneCluster) {
    EXPECT_EQ(clusters("\r\n\n\r"), Clusters({"\r\n", "\n", "\r"}));
    EXPECT_EQ(firstClusterLength("\r\né"), 2U);
    EXPECT_EQ(firstClusterLength("\ré"), 1U);
}

TEST(GraphemeBreak, ControlsTakeNoMark) {
    EXPECT_EQ(clusters("\n\u0301"), Clusters({"\n", "\u0301"}));
    EXPECT_EQ(clusters("\u0301\n"), Clusters({"\u0301", "\n"}));
}

TEST(GraphemeBreak, EmojiWithSelectorToneAndJoinersIsOneCluster) {
    EXPECT_EQ(clusters("❤\uFE0F👍🏽"), Clusters({"❤\uFE0F", "👍🏽"}));
    EXPECT_EQ(clusters("👩🏽\u200D🚀👨\u200D👩\u200D👧"),
              Clusters({"👩🏽\u200D🚀", "👨\u200D👩\u200D👧"}));
}

TEST(GraphemeBreak, JoinerJoinsOnlyEmojiDirectly) {
    EXPECT_EQ(clusters("a\u200D🚀"), Clusters({"a\u200D", "🚀"}));
    EXPECT_EQ(clusters("🚀\u200D\u200D🚀"), Clusters({"🚀\u200D\u200D", "🚀"}));
    EXPECT_EQ(clusters("🚀\u200D\u0301🚀"), Clusters({"🚀\u200D\u0301", "🚀"}));
    EXPECT_EQ(clusters("🚀\u0301\u200D🚀"), Clusters({"🚀\u0301\u200D🚀"}));
}

TEST(GraphemeBreak, RegionalIndicatorsPairIntoFlags) {
    EXPECT_EQ(clusters("🇩🇪🇫🇷🇬"), Clusters({"🇩🇪", "🇫🇷", "🇬"}));
    EXPECT_EQ(clusters("🇩\u0301🇪"), Clusters({"🇩\u0301", "🇪"}));
    EXPECT_EQ(clusters("\u0600🇩🇪🇫"), Clusters({"\u0600🇩🇪", "🇫"}));
}

TEST(GraphemeBreak, HangulPartsFormSyllables) {
    EXPECT_EQ(clusters("\u1100\u1161\u11A8\u1100"), Clusters({"\u1100\u1161\u11A8", "\u1100"}));
    EXPECT_EQ(clusters("\u1100\uAC00\u11A8"), Clusters({"\u1100\uAC00\u11A8"}));
    EXPECT_EQ(clusters("\uAC01\u11A8"), Clusters({"\uAC01\u11A8"}));
    EXPECT_EQ(clusters("\uAC01\u1161"), Clusters({"\uAC01", "\u1161"}));
}

TEST(GraphemeBreak, ConjunctsAreOneClusterFromUnicode15Dot1On) {
    const bool hasConjuncts = conjunctBreakOf(U'\u0915') == ConjunctBreak::consonant;
    const bool isOld = unicodeVersion() == "15.0.0" || std::stoi(std::string(unicodeVersion())) < 15;
    ASSERT_EQ(hasConjuncts, !isOld);
    EXPECT_EQ(clusters("\u0915\u094D\u0937"),
              hasConjuncts ? Clusters({"\u0915\u094D\u0937"}) : Clusters({"\u0915\u094D", "\u0937"}));
    EXPECT_EQ(clusters("\u0915\u0937"), Clusters({"\u0915", "\u0937"}));
    EXPECT_EQ(clusters("a\u094D\u0937"), Clusters({"a\u094D", "\u0937"}));
}

TEST(GraphemeBreak, InvalidBytesStandAloneButTakeMarks) {
    EXPECT_EQ(clusters("\xFF\xFE z"), Clusters({"\xFF", "\xFE", " ", "z"}));
    EXPECT_EQ(clusters("\xE2\x82\u0301"), Clusters({"\xE2\x82\u0301"}));
    EXPECT_EQ(clusters("a\xC3"), Clusters({"a", "\xC3"}));
}

} // namespace
} // namespace tapalong
