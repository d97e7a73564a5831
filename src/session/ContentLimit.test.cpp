#include "session/ContentLimit.h"

#include <gtest/gtest.h>

#include <limits>

namespace tapalong {
namespace {

TypedContent content(std::size_t count, std::initializer_list<std::size_t> lineEnds = {}) {
    TypedContent list(count, TypedCharacter(Character("a"), NamedColor::white, Uuid{}));
    for (const auto position : lineEnds) {
        list.at(position) = TypedCharacter(Character("\n"), NamedColor::white, Uuid{});
    }
    return list;
}

TEST(ContentLimit, NothingGoesUpToTheLimit) {
    EXPECT_EQ(charactersToDrop(content(100), 100), 0U);
    EXPECT_EQ(charactersToDrop({}, 0), 0U);
}

TEST(ContentLimit, OnePastAHundredDropsThirty) {
    EXPECT_EQ(charactersToDrop(content(101), 100), 30U);
}

TEST(ContentLimit, TheCutMovesBehindALineEndWithinTheNextTenth) {
    EXPECT_EQ(charactersToDrop(content(101, {30}), 100), 31U);
    EXPECT_EQ(charactersToDrop(content(101, {39}), 100), 40U);
}

TEST(ContentLimit, TheFirstOfSeveralLineEndsDecides) {
    EXPECT_EQ(charactersToDrop(content(101, {33, 35}), 100), 34U);
}

TEST(ContentLimit, LineEndsJustOutsideTheTenthDoNotCount) {
    EXPECT_EQ(charactersToDrop(content(101, {29, 40}), 100), 30U);
}

TEST(ContentLimit, ALimitOfNothingDropsTheFirstCharacterOnlyAtFour) {
    EXPECT_EQ(charactersToDrop(content(1), 0), 0U);
    EXPECT_EQ(charactersToDrop(content(2), 0), 0U);
    EXPECT_EQ(charactersToDrop(content(3), 0), 0U);
    EXPECT_EQ(charactersToDrop(content(4), 0), 1U);
}

TEST(ContentLimit, ANegativeLimitIsPassedByAnything) {
    EXPECT_EQ(charactersToDrop({}, -1), 0U);
    EXPECT_EQ(charactersToDrop(content(10), std::numeric_limits<std::int64_t>::min()), 3U);
}

TEST(ContentLimit, SharesAreRoundedTowardsZero) {
    EXPECT_EQ(charactersToDrop(content(13, {3}), 12), 4U) << "drop 3, one position to look at";
    EXPECT_EQ(charactersToDrop(content(9, {2}), 8), 2U) << "drop 2, nothing to look at";
}

TEST(ContentLimit, OnlyALineFeedEndsALine) {
    auto list = content(101);
    list.at(31) = TypedCharacter(Character("\r\n"), NamedColor::white, Uuid{});
    list.at(32) = TypedCharacter(Character("\u2028"), NamedColor::white, Uuid{});
    EXPECT_EQ(charactersToDrop(list, 100), 30U);
}

} // namespace
} // namespace tapalong
