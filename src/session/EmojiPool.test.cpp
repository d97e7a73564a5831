#include "session/EmojiPool.h"

#include "platform/simulated/SimulatedServices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace tapalong {
namespace {

std::string joined(const std::vector<Character>& list) {
    std::string text;
    for (const auto& character : list) {
        text += character.utf8();
    }
    return text;
}

struct EmojiPoolTest : testing::Test {
    simulated::SimulatedRandom random{1};
    const std::vector<Character>& all = EmojiPool::all();
};

TEST_F(EmojiPoolTest, TheFiveListsAreInTheirOrder) {
    EXPECT_EQ(joined(EmojiPool::animals()),
              "🐶🐱🐸🐻🐼🐨🐰🦊🐷🐮🐔🐧🐢🐙🦋🐝🐠🐬🦁🐘");
    EXPECT_EQ(joined(EmojiPool::food()), "🍎🍌🍊🍓🍉🍇🥕🌽🧁🍪🍕🍩🍦🥐🍑");
    EXPECT_EQ(joined(EmojiPool::nature()), "🌈🌸🌻⭐🌙☀\uFE0F🌊❄\uFE0F🍀🌺🌷🍄🌵🪻🌲");
    EXPECT_EQ(joined(EmojiPool::vehicles()), "🚗🚀🚂🚌✈\uFE0F🚁⛵🚲🏎\uFE0F🛸");
    EXPECT_EQ(joined(EmojiPool::things()), "⚽🎈🎵🎨🧸🪁🎪🏠🌍🎁🎶🔔💎🏐🥁");
}

TEST_F(EmojiPoolTest, AllAreTheFiveListsOneAfterTheOther) {
    EXPECT_EQ(joined(all), joined(EmojiPool::animals()) + joined(EmojiPool::food()) + joined(EmojiPool::nature()) +
                               joined(EmojiPool::vehicles()) + joined(EmojiPool::things()));
    EXPECT_EQ(all.size(), 75U);
    EXPECT_EQ(&EmojiPool::all(), &all) << "made once";
}

TEST_F(EmojiPoolTest, NoEmojiIsThereTwice) {
    std::set<std::string> texts;
    for (const auto& character : all) {
        texts.insert(character.utf8());
    }
    EXPECT_EQ(texts.size(), all.size());
}

TEST_F(EmojiPoolTest, EveryEmojiCanBeDrawn) {
    std::set<std::string> drawn;
    for (std::uint64_t i = 0; i < all.size(); ++i) {
        random.scripted.push_back(i);
        drawn.insert(EmojiPool::random(random).utf8());
    }
    EXPECT_EQ(drawn.size(), all.size());
}

TEST_F(EmojiPoolTest, AnEmptyPoolGivesAStar) {
    EXPECT_EQ(EmojiPool::random({}, random).utf8(), "⭐");
}

TEST_F(EmojiPoolTest, WithNothingRecentTheFirstDrawIsTaken) {
    std::vector<Character> recent;
    random.scripted = {4, 9};
    EXPECT_EQ(EmojiPool::nextAvoiding(recent, random), all[4]);
    EXPECT_EQ(recent, std::vector<Character>{all[4]});
    EXPECT_EQ(random.scripted.size(), 1U);
}

TEST_F(EmojiPoolTest, ARepeatIsDrawnAnew) {
    std::vector<Character> recent{all[4], all[5]};
    random.scripted = {5, 4, 5, 6};
    EXPECT_EQ(EmojiPool::nextAvoiding(recent, random), all[6]);
}

TEST_F(EmojiPoolTest, AFullWindowDropsItsOldestAndKeepsTheNewestLast) {
    std::vector<Character> recent(all.begin(), all.begin() + 8);
    random.scripted = {20};
    std::ignore = EmojiPool::nextAvoiding(recent, random);
    std::vector<Character> expected(all.begin() + 1, all.begin() + 8);
    expected.push_back(all[20]);
    EXPECT_EQ(recent, expected);
}

TEST_F(EmojiPoolTest, WhenEverythingIsRecentTheTenthDrawIsTaken) {
    auto recent = all;
    random.scripted = {0, 1, 2, 3, 4, 5, 6, 7, 8, 42, 10};
    EXPECT_EQ(EmojiPool::nextAvoiding(recent, random, 75), all[42]);
    EXPECT_EQ(random.scripted.size(), 1U) << "ten draws, no more";
    EXPECT_EQ(recent.size(), 75U);
    EXPECT_EQ(recent.front(), all[1]);
    EXPECT_EQ(recent.back(), all[42]);
}

TEST_F(EmojiPoolTest, TheTenthDrawIsTakenEvenWhereItIsNoRepeat) {
    std::vector<Character> recent{all[0]};
    random.scripted = {0, 0, 0, 0, 0, 0, 0, 0, 0, 3};
    EXPECT_EQ(EmojiPool::nextAvoiding(recent, random), all[3]);
}

TEST_F(EmojiPoolTest, AWindowOfOneMoreThanAllGrows) {
    auto recent = all;
    std::ignore = EmojiPool::nextAvoiding(recent, random, 76);
    EXPECT_EQ(recent.size(), 76U);
    EXPECT_EQ(recent.front(), all[0]);
}

TEST_F(EmojiPoolTest, AWindowOfNothingStaysEmpty) {
    std::vector<Character> recent;
    random.scripted = {7};
    EXPECT_EQ(EmojiPool::nextAvoiding(recent, random, 0), all[7]);
    EXPECT_TRUE(recent.empty());
}

TEST_F(EmojiPoolTest, AListLongerThanItsWindowLosesOneElementACall) {
    std::vector<Character> recent(all.begin(), all.begin() + 20);
    random.scripted = {50};
    std::ignore = EmojiPool::nextAvoiding(recent, random, 8);
    EXPECT_EQ(recent.size(), 20U);
    EXPECT_EQ(recent.front(), all[1]);
    EXPECT_EQ(recent.back(), all[50]);
}

TEST_F(EmojiPoolTest, NoRepeatComesWithinTheLastEight) {
    std::vector<Character> recent;
    std::vector<Character> drawn;
    for (int i = 0; i < 2000; ++i) {
        const auto next = EmojiPool::nextAvoiding(recent, random);
        const auto window = drawn.end() - std::min<std::ptrdiff_t>(8, static_cast<std::ptrdiff_t>(drawn.size()));
        EXPECT_EQ(std::find(window, drawn.end(), next), drawn.end());
        drawn.push_back(next);
    }
}

} // namespace
} // namespace tapalong
