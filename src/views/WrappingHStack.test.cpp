#include "views/WrappingHStack.h"

#include "settings/SettingsFixture.test.h"

#include <memory>

namespace tapalong {
namespace {

using TextRun = WrappingHStack::Run;
using Font = WrappingHStack::Font;

const Color red = SrgbColor{1, 0, 0};
const Font font72{72, WrappingHStack::Weight::medium, WrappingHStack::Design::rounded};

TypedContent typed(std::initializer_list<const char*> texts) {
    TypedContent characters;
    for (const char* text : texts) {
        characters.emplace_back(Character(text), red, Uuid{});
    }
    return characters;
}

std::vector<TextRun> withoutCursor(std::initializer_list<const char*> texts) {
    return WrappingHStack::paragraph(typed(texts), 72, false, true);
}

struct WrappingHStackTest : SettingsFixture {
    std::shared_ptr<WrappingHStack> text = std::make_shared<WrappingHStack>(platform);
};

TEST_F(WrappingHStackTest, AnEmptyListShowsTheCursorAlone) {
    EXPECT_EQ(WrappingHStack::paragraph({}, 72, true, true),
              (std::vector<TextRun>{{"▎", Color(NamedColor::primary), 0.8, font72}}));
}

TEST_F(WrappingHStackTest, AnEmptyListWithoutACursorShowsNothing) {
    EXPECT_TRUE(WrappingHStack::paragraph({}, 72, false, true).empty());
}

TEST_F(WrappingHStackTest, EachCharacterIsOneRunInItsColour) {
    EXPECT_EQ(withoutCursor({"a", "b"}), (std::vector<TextRun>{{"a", red, 1, font72}, {"b", red, 1, font72}}));
}

TEST_F(WrappingHStackTest, LineBreaksAreBareTwoInARowIncluded) {
    const TextRun bare{"\n", std::nullopt, 1, std::nullopt};
    EXPECT_EQ(withoutCursor({"a", "\n", "\n"}), (std::vector<TextRun>{{"a", red, 1, font72}, bare, bare}));
}

TEST_F(WrappingHStackTest, EmojiTakeTheirColourLikeAnyCharacter) {
    EXPECT_EQ(withoutCursor({"🚀", "☀\uFE0F"}),
              (std::vector<TextRun>{{"🚀", red, 1, font72}, {"☀\uFE0F", red, 1, font72}}));
}

TEST_F(WrappingHStackTest, ALongWordGetsNoBreaksOfItsOwn) {
    const TypedContent word(1000, TypedCharacter(Character("w"), red, Uuid{}));
    const auto runs = WrappingHStack::paragraph(word, 72, false, true);
    EXPECT_EQ(runs, std::vector<TextRun>(1000, TextRun{"w", red, 1, font72})) << "wrapping is the text engine's affair";
}

TEST_F(WrappingHStackTest, AnUnseenCursorKeepsItsPlace) {
    EXPECT_EQ(WrappingHStack::paragraph(typed({"a"}), 72, true, false),
              (std::vector<TextRun>{{"a", red, 1, font72}, {"▎", Color(NamedColor::primary), 0, font72}}));
}

TEST_F(WrappingHStackTest, NamedColoursStayNamed) {
    const TypedContent one{TypedCharacter(Character("a"), NamedColor::primary, Uuid{})};
    EXPECT_EQ(WrappingHStack::paragraph(one, 24, false, true).front().color, Color(NamedColor::primary));
}

TEST_F(WrappingHStackTest, FontAndLineSpacingFollowTheSize) {
    EXPECT_EQ(WrappingHStack::font(24), (Font{24, WrappingHStack::Weight::medium, WrappingHStack::Design::rounded}));
    EXPECT_DOUBLE_EQ(WrappingHStack::lineSpacing(100), 30);
}

TEST_F(WrappingHStackTest, TheCursorFlipsEverySixTenthsOfASecondWhileTheViewIsUp) {
    EXPECT_TRUE(text->cursorVisible());
    EXPECT_EQ(effectsOf(world, [this] { text->onAppear(); }), Effects{"timer.every 0.6"});
    world.time.advance(0.5);
    EXPECT_TRUE(text->cursorVisible());
    world.time.advance(0.125);
    EXPECT_FALSE(text->cursorVisible());
    world.time.advance(0.5);
    EXPECT_FALSE(text->cursorVisible());
    world.time.advance(0.125);
    EXPECT_TRUE(text->cursorVisible());
}

TEST_F(WrappingHStackTest, TheBlinkingRunsWithTheCursorOff) {
    settings.showCursor.set(false);
    text->onAppear();
    world.time.advance(0.625);
    EXPECT_FALSE(text->cursorVisible());
}

TEST_F(WrappingHStackTest, NoTimerIsLeftWhenTheViewIsGone) {
    text->onAppear();
    EXPECT_EQ(effectsOf(world, [this] { text->onDisappear(); }), Effects{"timer.invalidate"});
    EXPECT_EQ(world.time.timerCount(), 0U);
    EXPECT_TRUE(effectsOf(world, [this] { text->onDisappear(); }).empty());
    text->onAppear();
    text.reset();
    EXPECT_EQ(world.time.timerCount(), 0U);
    world.time.advance(2);
}

TEST_F(WrappingHStackTest, AFlipIsAnnounced) {
    text->onAppear();
    int announcements = 0;
    const auto subscription = text->objectWillChange([&] { ++announcements; });
    world.time.advance(0.625);
    EXPECT_EQ(announcements, 1);
}

} // namespace
} // namespace tapalong
