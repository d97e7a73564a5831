#include "session/SessionFixture.test.h"

namespace tapalong {
namespace {

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyReturn = 36;
constexpr std::int64_t keyTab = 48;
constexpr std::int64_t keySpace = 49;
constexpr std::int64_t keyDelete = 51;
constexpr std::int64_t keyF1 = 122;
const Effects keySound{"sound.stop Tink", "sound.play Tink"};

using SessionTypingTest = SessionFixture;

TEST_F(SessionTypingTest, APrintableCharacterIsAppendedWithOneSound) {
    manager->startSession();
    EXPECT_EQ(effectsOf(world, [this] { press(keyA, "é"); }), keySound);
    EXPECT_EQ(typed(), "é");
}

TEST_F(SessionTypingTest, SpaceAndReturnAppendABlankAndALineBreak) {
    manager->startSession();
    EXPECT_EQ(effectsOf(world, [this] { press(keySpace); }), keySound);
    EXPECT_EQ(effectsOf(world, [this] { press(keyReturn); }), keySound);
    EXPECT_EQ(typed(), " \n");
    EXPECT_TRUE(manager->typedContent().back().character.isLineBreak());
}

TEST_F(SessionTypingTest, ATabAppendsFourBlanksAndPlaysOneSound) {
    manager->startSession();
    EXPECT_EQ(effectsOf(world, [this] { press(keyTab); }), keySound);
    EXPECT_EQ(typed(), "    ");
    EXPECT_EQ(count(), 4U);
}

TEST_F(SessionTypingTest, ATabTakesFourDeletes) {
    manager->startSession();
    press(keyTab);
    press(keyDelete);
    EXPECT_EQ(count(), 3U);
}

TEST_F(SessionTypingTest, EqualCharactersAreToldApart) {
    manager->startSession();
    type(2);
    EXPECT_NE(manager->typedContent()[0].id, manager->typedContent()[1].id);
}

TEST_F(SessionTypingTest, EveryAppendAdvancesThePaletteBlanksAndLineBreaksToo) {
    manager->startSession();
    world.desktop.appearance = Appearance::darkAqua;
    press(keySpace);
    press(keyReturn);
    press(keyTab);
    type(1);
    EXPECT_EQ(RainbowColors::index(), 7);
    RainbowColors::reset();
    for (const auto& each : manager->typedContent()) {
        EXPECT_EQ(each.color, RainbowColors::next(false));
    }
}

TEST_F(SessionTypingTest, DeletesAndSuppressedKeysLeaveThePaletteAlone) {
    manager->startSession();
    type(1);
    press(keyDelete);
    pressSuppressed();
    EXPECT_EQ(RainbowColors::index(), 1);
}

TEST_F(SessionTypingTest, OnALightBackgroundColoursAreDarkened) {
    manager->startSession();
    world.desktop.appearance = Appearance::aqua;
    type(1);
    RainbowColors::reset();
    EXPECT_EQ(manager->typedContent()[0].color, RainbowColors::next(true));
}

TEST_F(SessionTypingTest, ThePaletteGoesOnInTheNextSession) {
    manager->startSession();
    type(4);
    manager->endSession();
    manager->startSession();
    type(1);
    EXPECT_EQ(RainbowColors::index(), 5);
}

TEST_F(SessionTypingTest, WithoutTheRainbowCharactersTakeTheForegroundColour) {
    settings.rainbowMode.set(false);
    settings.useSystemAppearance.set(false);
    settings.customFGColorHex.set("#FF8000");
    manager->startSession();
    type(1);
    EXPECT_EQ(manager->typedContent()[0].color, Color::fromHex("#FF8000"));
    EXPECT_EQ(RainbowColors::index(), 0);
}

TEST_F(SessionTypingTest, TheSystemsTextColourStaysNamedInWhatWasTyped) {
    settings.rainbowMode.set(false);
    manager->startSession();
    type(1);
    world.desktop.appearance = Appearance::darkAqua;
    EXPECT_EQ(manager->typedContent()[0].color, Color(NamedColor::primary));
}

TEST_F(SessionTypingTest, DeleteRemovesTheLastCharacterWithASound) {
    manager->startSession();
    type(1, "a");
    type(1, "b");
    EXPECT_EQ(effectsOf(world, [this] { press(keyDelete); }), keySound);
    EXPECT_EQ(typed(), "a");
}

TEST_F(SessionTypingTest, DeleteOnAnEmptyScreenPlaysASoundAndLeavesItEmpty) {
    manager->startSession();
    EXPECT_EQ(effectsOf(world, [this] { press(keyDelete); }), keySound);
    EXPECT_EQ(count(), 0U);
}

TEST_F(SessionTypingTest, ADeleteFiveSecondsAfterTheFirstWipesTheScreen) {
    manager->startSession();
    type(20);
    press(keyDelete);
    world.time.advance(4.875);
    press(keyDelete);
    EXPECT_EQ(count(), 18U);
    world.time.advance(0.125);
    EXPECT_EQ(effectsOf(world, [this] { press(keyDelete); }), keySound);
    EXPECT_EQ(count(), 0U);
    EXPECT_FALSE(manager->isDeleteHeld());
}

TEST_F(SessionTypingTest, TheDeleteAfterAWipeStartsANewRun) {
    manager->startSession();
    type(5);
    press(keyDelete);
    world.time.advance(6);
    press(keyDelete);
    EXPECT_EQ(count(), 0U);
    press(keyDelete);
    EXPECT_TRUE(manager->isDeleteHeld());
    type(3);
    press(keyDelete);
    EXPECT_EQ(count(), 2U) << "typing began another run";
}

TEST_F(SessionTypingTest, TheFiveSecondsCountFromTheFirstDeletePausesIncluded) {
    manager->startSession();
    type(10);
    press(keyDelete);
    world.time.advance(60);
    press(keyDelete);
    EXPECT_EQ(count(), 0U) << "no other key came between";
}

TEST_F(SessionTypingTest, AnyOtherKeyRestartsTheFiveSeconds) {
    manager->startSession();
    type(10);
    press(keyDelete);
    world.time.advance(4);
    type(1);
    press(keyDelete);
    world.time.advance(4);
    press(keyDelete);
    EXPECT_EQ(count(), 8U);
}

TEST_F(SessionTypingTest, ASuppressedKeyEndsTheRunAndPlaysNoSound) {
    manager->startSession();
    type(3);
    press(keyDelete);
    EXPECT_TRUE(manager->isDeleteHeld());
    EXPECT_TRUE(effectsOf(world, [this] { pressSuppressed(); }).empty());
    EXPECT_FALSE(manager->isDeleteHeld());
    world.time.advance(5);
    press(keyDelete);
    EXPECT_EQ(count(), 1U);
}

TEST_F(SessionTypingTest, ARunOfDeletesSurvivesTheSessionsEnd) {
    manager->startSession();
    press(keyDelete);
    manager->endSession();
    world.time.advance(5);
    manager->startSession();
    EXPECT_TRUE(manager->isDeleteHeld());
    press(keyDelete);
    EXPECT_FALSE(manager->isDeleteHeld()) << "the old run was long enough to wipe";
}

TEST_F(SessionTypingTest, AModifierTypesAnEmojiAndRemembersIt) {
    manager->startSession();
    world.random.scripted = {3};
    EXPECT_EQ(effectsOf(world, [this] { pressShift(); }), keySound);
    EXPECT_EQ(typed(), "🐻");
    EXPECT_EQ(manager->recentEmoji(), std::vector<Character>{Character("🐻")});
}

TEST_F(SessionTypingTest, AnEmojiOfTheLastEightIsAvoided) {
    manager->startSession();
    world.random.scripted = {0, 1, 2, 3, 4, 5, 6, 7};
    for (int i = 0; i < 8; ++i) {
        pressShift();
    }
    world.random.scripted = {0, 7, 8};
    pressShift();
    EXPECT_EQ(manager->typedContent().back().character.utf8(), "🐷");
    EXPECT_EQ(manager->recentEmoji().size(), 8U);
}

TEST_F(SessionTypingTest, RecentEmojiAreKeptFromSessionToSession) {
    manager->startSession();
    pressShift();
    pressShift();
    const auto before = manager->recentEmoji();
    manager->endSession();
    EXPECT_EQ(manager->recentEmoji(), before);
    manager->startSession();
    EXPECT_EQ(manager->recentEmoji(), before);
}

TEST_F(SessionTypingTest, FunctionKeysTypeTheSkyRepeatsIncluded) {
    manager->startSession();
    for (std::uint64_t i = 0; i < 15; ++i) {
        world.random.scripted.push_back(i);
        press(keyF1);
    }
    EXPECT_EQ(typed(), "🌙⭐🌟☀\uFE0F🌈☁\uFE0F🌤⚡❄\uFE0F🪐🌍🌕💫✨🌊");
    world.random.scripted = {2, 2};
    press(keyF1);
    press(keyF1);
    EXPECT_EQ(typed().substr(typed().size() - 8), "🌟🌟");
    EXPECT_TRUE(manager->recentEmoji().empty());
}

TEST_F(SessionTypingTest, TheCharacterPastTheLimitTrimsThirtyPerCent) {
    settings.maxCharacters.set(100);
    manager->startSession();
    type(100);
    EXPECT_EQ(count(), 100U);
    type(1);
    EXPECT_EQ(count(), 71U);
}

TEST_F(SessionTypingTest, TheTrimPrefersToCutBehindALineBreak) {
    settings.maxCharacters.set(100);
    manager->startSession();
    type(35);
    press(keyReturn);
    press(keyA, "b");
    type(64);
    EXPECT_EQ(count(), 65U) << "36 of 101 are gone, the line break last";
    EXPECT_EQ(manager->typedContent().front().character.utf8(), "b");
}

TEST_F(SessionTypingTest, WithALimitOfNothingTheContentGrowsToFour) {
    settings.maxCharacters.set(0);
    manager->startSession();
    type(3);
    EXPECT_EQ(count(), 3U);
    type(1);
    EXPECT_EQ(count(), 3U) << "the fourth removed one";
}

TEST_F(SessionTypingTest, TheTrimRunsInsideATabToo) {
    settings.maxCharacters.set(10);
    manager->startSession();
    type(9);
    press(keyTab);
    EXPECT_EQ(count(), 10U) << "the second blank made eleven and removed three, two more followed";
}

TEST_F(SessionTypingTest, ATrimIsOneChange) {
    settings.maxCharacters.set(100);
    manager->startSession();
    type(100);
    int changes = 0;
    const auto subscription = manager->objectWillChange([&] { ++changes; });
    type(1);
    EXPECT_EQ(changes, 2) << "the append and the trim";
}

TEST_F(SessionTypingTest, TheSoundComesAfterTheChange) {
    manager->startSession();
    const auto subscription = manager->objectWillChange([this] { world.effects.record("change"); });
    EXPECT_EQ(effectsOf(world, [this] { press(keyA, "a"); }),
              (Effects{"change", "sound.stop Tink", "sound.play Tink"}));
    EXPECT_EQ(effectsOf(world, [this] { press(keyTab); }),
              (Effects{"change", "change", "change", "change", "sound.stop Tink", "sound.play Tink"}));
    EXPECT_EQ(effectsOf(world, [this] { press(keyDelete); }),
              (Effects{"change", "sound.stop Tink", "sound.play Tink"}));
}

TEST_F(SessionTypingTest, ObserversAreToldBeforeTheContentChanges) {
    manager->startSession();
    std::size_t seen = 99;
    const auto subscription = manager->objectWillChange([&] { seen = count(); });
    type(1);
    EXPECT_EQ(seen, 0U);
}

} // namespace
} // namespace tapalong
