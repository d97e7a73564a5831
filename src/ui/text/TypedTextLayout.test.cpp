#include "ui/text/TypedTextLayout.h"

#include "session/EmojiPool.h"
#include "ui/text/TypedTextSamples.test.h"
#include "views/WrappingHStack.h"

#include <QTextLayout>

#include <array>
#include <cstdlib>
#include <iostream>
#include <string>

namespace tapalong {
namespace {

using samples::Typist;

class TypedTextLayoutTest : public samples::WithFonts {
protected:
    void show() { layout.update(typist.content); }

    Typist typist;
    TypedTextLayout layout;
};

struct Look {
    double size = 72;
    double width = 900;
    bool cursor = true;
};

void apply(TypedTextLayout& layout, const Look& look) {
    layout.setFontSize(look.size);
    layout.setWidth(look.width);
    layout.setCursorShown(look.cursor);
}

testing::AssertionResult sameLines(TypedTextLayout& actual, TypedTextLayout& expected) {
    if (actual.lineCount() != expected.lineCount()) {
        return testing::AssertionFailure() << actual.lineCount() << " lines, not " << expected.lineCount();
    }
    for (std::size_t i = 0; i < expected.lineCount(); ++i) {
        if (actual.line(i) != expected.line(i)) {
            return testing::AssertionFailure()
                   << "line " << i << " ends at " << actual.line(i).end << ", not " << expected.line(i).end;
        }
        const auto actualShape = actual.shaped(i);
        const auto expectedShape = expected.shaped(i);
        const ShapedLine& is = *actualShape;
        const ShapedLine& should = *expectedShape;
        if (is.cursorX != should.cursorX || is.pieces.size() != should.pieces.size()) {
            return testing::AssertionFailure() << "line " << i << " has other pieces";
        }
        for (std::size_t k = 0; k < should.pieces.size(); ++k) {
            if (is.pieces[k].x != should.pieces[k].x || is.pieces[k].key != should.pieces[k].key) {
                return testing::AssertionFailure() << "piece " << k << " of line " << i << " differs";
            }
        }
    }
    return testing::AssertionSuccess();
}

const std::array<std::string_view, 14> phrases{
    "hello sunny day ",
    "AVATAR To Ty fi ffl ",
    "e\u0301a\u0308\u0323o\u0302 ",
    "\u0645\u0631\u062D\u0628\u0627 \u0633\u0644\u0627\u0645 123 ",
    "\u05E9\u05DC\u05D5\u05DD, (\u05E2\u05D5\u05DC\u05DD)! ",
    "\u0928\u092E\u0938\u094D\u0924\u0947 \u0915\u094D\u0937\u0924\u094D\u0930\u093F\u092F ",
    "\u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35\u0E0A\u0E32\u0E27\u0E42\u0E25\u0E01\u0E17\u0E35\u0E48",
    "\u4F60\u597D\uFF0C\u4E16\u754C\u3002\u3053\u3093\u306B\u3061\u306F",
    "\U0001F468\u200D\U0001F469\u200D\U0001F467\U0001F44D\U0001F3FD\u2764\uFE0F1\uFE0F\u20E3",
    "\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7 ",
    "mmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmm",
    "          ",
    "\n",
    "\n\n",
};

/// Typed alone, they join what stands before them.
const std::array<std::string_view, 6> joiners{"\u0301", "\u0E31", "\u093F", "\U0001F3FD", "\U0001F1E9", "\u064E"};

class RandomHand {
public:
    RandomHand(std::uint64_t seed, Typist& typist) : m_random(seed), m_typist(typist) {}

    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(m_random() % limit); }

    void edit(Look& look) {
        const auto size = m_typist.content.size();
        const std::size_t choice = below(100);
        if (choice < 40) {
            typeOne();
        } else if (choice < 55) {
            m_typist.type(phrases.at(below(phrases.size())));
        } else if (choice < 60) {
            m_typist.type(joiners.at(below(joiners.size())));
        } else if (choice < 66) {
            m_typist.type(EmojiPool::all()[below(EmojiPool::all().size())].utf8());
        } else if (choice < 82) {
            for (std::size_t i = below(5) + 1; i > 0 && !m_typist.content.empty(); --i) {
                m_typist.content.pop_back();
            }
        } else if (choice < 90) {
            m_typist.drop(below(size / 2 + 1));
        } else if (choice < 91) {
            m_typist.content.clear();
        } else if (choice < 93) {
            look.size = std::array{24.0, 72.0, 96.0, 72.5, 200.0}.at(below(5));
        } else if (choice < 95) {
            look.width = std::array{900.0, 1286.0, 300.0, 901.25}.at(below(4));
        } else if (choice < 96) {
            look.cursor = !look.cursor;
        } else {
            m_typist.drop(below(size / 3 + 1)); // several in one turn
            m_typist.type(phrases.at(below(phrases.size())));
        }
    }

private:
    void typeOne() {
        constexpr std::string_view keys = "etaonirs  lfiAVT.,(1-";
        m_typist.type(keys.substr(below(keys.size()), 1));
    }

    std::mt19937_64 m_random;
    Typist& m_typist;
};

TEST_F(TypedTextLayoutTest, AnyEditsLeaveTheLinesOfALayoutFromScratch) {
    const char* given = std::getenv("TAPALONG_SEED");
    const std::uint64_t seed = given != nullptr ? std::stoull(given) : std::random_device()();
    std::cout << "TAPALONG_SEED=" << seed << '\n';
    RandomHand hand(seed, typist);
    Look look;
    constexpr int edits = 1500;
    for (int i = 0; i < edits; ++i) {
        hand.edit(look);
        apply(layout, look);
        show();
        TypedTextLayout fresh;
        apply(fresh, look);
        fresh.update(typist.content);
        ASSERT_TRUE(sameLines(layout, fresh)) << "after edit " << i;
    }
}

TEST_F(TypedTextLayoutTest, LinesBreakWhereTheTextEngineBreaksTheWholeParagraph) {
    apply(layout, {72, 900, false});
    for (const std::size_t first : {0U, 3U, 5U}) {
        typist.content.clear();
        constexpr std::size_t repeats = 12;
        for (std::size_t i = 0; i < repeats * 4; ++i) {
            const auto phrase = phrases.at((first + i % 4) % 8);
            typist.type(phrase);
        }
        show();
        QString whole;
        std::vector<int> starts;
        for (const auto& typed : typist.content) {
            starts.push_back(static_cast<int>(whole.size()));
            whole += QString::fromStdString(typed.character.utf8());
        }
        starts.push_back(static_cast<int>(whole.size()));
        QTextLayout engine(whole, layout.face().font());
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        option.setTextDirection(Qt::LeftToRight);
        option.setUseDesignMetrics(true);
        engine.setTextOption(option);
        engine.beginLayout();
        for (std::size_t i = 0; i < layout.lineCount(); ++i) {
            QTextLine line = engine.createLine();
            ASSERT_TRUE(line.isValid());
            line.setLineWidth(900);
            EXPECT_EQ(line.textStart(), starts.at(layout.line(i).begin)) << "line " << i << " from phrase " << first;
            EXPECT_EQ(line.textStart() + line.textLength(), starts.at(layout.line(i).end));
        }
        EXPECT_FALSE(engine.createLine().isValid());
        engine.endLayout();
    }
}

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

TEST_F(TypedTextLayoutTest, AKeyLaysOutAFewLinesOfALongText) {
    apply(layout, {24, 1286, true});
    for (int i = 0; i < 2000; ++i) {
        typist.type("hello sunny day \U0001F438 ");
    }
    show();
    const auto before = layout.linesLaidOut();
    typist.type("x");
    show();
    EXPECT_LE(layout.linesLaidOut() - before, 4U);
    typist.content.pop_back();
    show();
    EXPECT_LE(layout.linesLaidOut() - before, 8U);
}

TEST_F(TypedTextLayoutTest, ATrimLaysOutOnlyUntilTheLinesFallInPlaceAgain) {
    apply(layout, {72, 1286, true});
    RandomHand hand(1, typist);
    for (int i = 0; i < 3000; ++i) {
        typist.type(std::string(hand.below(9) + 1, static_cast<char>('a' + hand.below(26))) + " ");
    }
    show();
    const auto lines = layout.lineCount();
    const auto before = layout.linesLaidOut();
    typist.drop(typist.content.size() * 3 / 10 + 1);
    show();
    EXPECT_LT(layout.linesLaidOut() - before, 60U);
    EXPECT_GT(lines, 500U);
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
