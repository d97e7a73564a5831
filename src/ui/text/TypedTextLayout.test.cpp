#include "ui/text/TypedTextLayoutFixture.test.h"
#include "views/WrappingHStack.h"

#include <vector>

namespace tapalong {
namespace {

using namespace samples;

TEST_F(TypedTextLayoutTest, NothingTypedWithoutCursorShowsNothing) {
    apply(layout, {72, 900, false});
    show();
    EXPECT_EQ(layout.lineCount(), 0U);
    EXPECT_EQ(layout.height(), 0);
}

TEST_F(TypedTextLayoutTest, NothingTypedShowsTheCursorAtTheTopLeft) {
    apply(layout, {});
    show();
    ASSERT_EQ(layout.lineCount(), 1U);
    EXPECT_EQ(layout.shaped(0)->cursorX, 0);
    EXPECT_TRUE(layout.shaped(0)->pieces.empty());
}

TEST_F(TypedTextLayoutTest, LinesKeepOneRhythmWhateverStandsInThem) {
    apply(layout, {});
    typist.type("a\n\U0001F438\n\n\u4F60\nend");
    show();
    ASSERT_EQ(layout.lineCount(), 5U);
    EXPECT_DOUBLE_EQ(layout.pitch(), layout.face().lineHeight() + WrappingHStack::lineSpacing(72));
    EXPECT_DOUBLE_EQ(layout.height(), 4 * layout.pitch() + layout.face().lineHeight());
    EXPECT_LE(layout.emojiScale() * layout.emojiArt().ascent(), layout.face().ascent());
    EXPECT_LE(layout.emojiScale() * layout.emojiArt().descent(), layout.face().descent());
}

TEST_F(TypedTextLayoutTest, TheLinesShowTheRunsOfTheParagraph) {
    apply(layout, {});
    typist.type("ab\n\nc\U0001F438d");
    show();
    std::vector<WrappingHStack::Run> shown; // of a run, what can be told from a line: emoji, colour, line break
    for (std::size_t line = 0; line < layout.lineCount(); ++line) {
        const auto shaped = layout.shaped(line);
        for (const auto& piece : shaped->pieces) {
            const auto color = piece.parts.empty() ? piece.emojiInk : std::optional(piece.parts.at(0).color);
            shown.push_back({piece.emoji.toStdString(), color});
        }
        if (shaped->cursorX) {
            shown.push_back({std::string(WrappingHStack::cursorGlyph)});
        } else {
            shown.push_back({"\n"});
        }
    }
    const auto runs = WrappingHStack::paragraph(typist.content, 72, true, true);
    ASSERT_EQ(shown.size(), runs.size());
    for (std::size_t index = 0; index < runs.size(); ++index) {
        const bool isLetter = runs[index].text.size() == 1 && runs[index].text != "\n";
        EXPECT_EQ(shown[index].text, isLetter ? "" : runs[index].text) << index;
        EXPECT_TRUE(!isLetter || shown[index].color == runs[index].color) << index;
    }
}

TEST_F(TypedTextLayoutTest, TwoLineBreaksLeaveAnEmptyLine) {
    apply(layout, {});
    typist.type("a\n\nb");
    show();
    ASSERT_EQ(layout.lineCount(), 3U);
    EXPECT_EQ(layout.line(1), (TypedTextLayout::Range{2, 3}));
    EXPECT_TRUE(layout.shaped(1)->pieces.empty());
}

TEST_F(TypedTextLayoutTest, ALineBreakAtTheEndOpensALineForTheCursor) {
    apply(layout, {});
    typist.type("a\n");
    show();
    ASSERT_EQ(layout.lineCount(), 2U);
    EXPECT_FALSE(layout.shaped(0)->cursorX);
    EXPECT_EQ(layout.shaped(1)->cursorX, 0);
}

TEST_F(TypedTextLayoutTest, ALongRunWithoutBlanksWrapsAtTheEdge) {
    apply(layout, {});
    typist.type(std::string(100, 'm'));
    show();
    EXPECT_GT(layout.lineCount(), 5U);
    for (std::size_t i = 0; i < layout.lineCount(); ++i) {
        const auto shaped = layout.shaped(i);
        for (const LinePiece& piece : shaped->pieces) {
            EXPECT_LT(piece.x, 900);
        }
    }
}

TEST_F(TypedTextLayoutTest, AWordGoesBackUpWhenItIsShortEnoughAgain) {
    apply(layout, {72, 900, false});
    typist.type("hello sunny lovely wonderfullylong");
    show();
    ASSERT_EQ(layout.lineCount(), 2U);
    while (layout.lineCount() == 2 && !typist.content.empty()) {
        typist.content.pop_back();
        show();
    }
    EXPECT_GT(typist.content.size(), std::string_view("hello sunny lovely ").size());
}

TEST_F(TypedTextLayoutTest, HalvesOfAFlagTypedOneByOneMakeAFlag) {
    apply(layout, {});
    for (const char* half : {"\U0001F1E9", "\U0001F1EA"}) {
        typist.type(half);
        show();
    }
    ASSERT_EQ(layout.shaped(0)->pieces.size(), 1U);
    EXPECT_EQ(layout.shaped(0)->pieces[0].emoji.toStdString(), "\U0001F1E9\U0001F1EA");
}

TEST_F(TypedTextLayoutTest, ArabicLettersOfTwoColoursJoinInOnePiece) {
    apply(layout, {});
    typist.type("\u0633\u0644\u0627\u0645");
    show();
    ASSERT_EQ(layout.shaped(0)->pieces.size(), 1U);
    const auto parts = layout.shaped(0)->pieces[0].parts;
    ASSERT_EQ(parts.size(), 4U);
    // Lam and alef are one glyph, each in its colour on its side of the same line.
    EXPECT_EQ(parts[1].glyphs, parts[2].glyphs);
    EXPECT_EQ(parts[1].clipLeft, parts[2].clipRight);
}

TEST_F(TypedTextLayoutTest, LettersKeepTheirColoursWhereTheFaceHasALigature) {
    apply(layout, {});
    typist.type("fi");
    show();
    EXPECT_EQ(layout.shaped(0)->pieces.size(), 2U);
}

TEST_F(TypedTextLayoutTest, AThousandBlanksHangOnTheirLine) {
    apply(layout, {});
    typist.type("a" + std::string(1000, ' ') + "b");
    show();
    ASSERT_EQ(layout.lineCount(), 2U);
    EXPECT_EQ(layout.line(1).begin, 1001U);
}

} // namespace
} // namespace tapalong
