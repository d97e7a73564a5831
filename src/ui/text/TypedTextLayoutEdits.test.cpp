#include "ui/text/TypedTextLayoutFixture.test.h"

#include <functional>

namespace tapalong {
namespace {

using namespace samples;

TEST_F(TypedTextLayoutTest, AnyEditsLeaveTheLinesOfALayoutFromScratch) {
    RandomHand hand(randomSeed(), typist);
    Look look;
    constexpr int edits = 1500;
    for (int i = 0; i < edits; ++i) {
        hand.edit(look);
        apply(layout, look);
        show();
        ASSERT_TRUE(sameLines(layout, layoutFromScratch(look))) << "after edit " << i;
    }
}

/// What an update left is done by further ones, or when somebody scrolls back.
TEST_F(TypedTextLayoutTest, AnyEditsWithAShortViewComeToTheLinesOfALayoutFromScratch) {
    constexpr std::size_t inView = 3;
    layout.setLinesInView(inView);
    RandomHand hand(randomSeed(), typist);
    Look look;
    constexpr int edits = 1500;
    int gaps = 0;
    for (int i = 0; i < edits; ++i) {
        hand.edit(look);
        apply(layout, look);
        show();
        gaps += layout.isComplete() ? 0 : 1;
        const std::size_t shown = std::min(inView, layout.lineCount());
        ASSERT_LE(layout.firstLineOfEnd() + shown, layout.lineCount()) << "after edit " << i;
        for (std::size_t k = 0; k < shown; ++k) {
            ASSERT_NE(layout.shaped(layout.lineCount() - 1 - k), nullptr);
        }
        const std::size_t choice = hand.below(4);
        if (choice == 0) {
            continue; // the next key comes at once
        }
        for (int more = 0; choice == 1 && !layout.isComplete(); ++more) {
            show();
            ASSERT_LT(more, 1000) << "it never ends";
        }
        layout.complete();
        ASSERT_TRUE(sameLines(layout, layoutFromScratch(look))) << "after edit " << i;
    }
    EXPECT_GT(gaps, 0);
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

TEST_F(TypedTextLayoutTest, ATrimDownToTheLastLineBreakLeavesTheTruth) {
    layout.setLinesInView(1);
    apply(layout, {});
    typist.type(std::string(300, 'm') + "\n");
    show();
    typist.drop(290);
    show();
    layout.complete();
    TypedTextLayout fresh;
    apply(fresh, {});
    fresh.update(typist.content);
    EXPECT_TRUE(sameLines(layout, fresh));
}

class LongText : public TypedTextLayoutTest {
protected:
    static constexpr std::size_t inView = 12;
    static constexpr std::size_t length = 20000;

    LongText() {
        layout.setLinesInView(inView);
        apply(layout, look);
    }

    void typeWords() {
        RandomHand hand(1, typist);
        while (typist.content.size() < length) {
            typist.type(std::string(hand.below(9) + 1, static_cast<char>('a' + hand.below(26))) + " ");
        }
        show();
    }

    /// How many lines it lays out.
    std::uint64_t costOf(const std::function<void()>& change) {
        const auto before = layout.linesLaidOut();
        change();
        show();
        return layout.linesLaidOut() - before;
    }

    TypedTextLayout& fresh() {
        apply(m_fresh, look);
        m_fresh.update(typist.content);
        return m_fresh;
    }

    Look look{96, 1840, true};

private:
    TypedTextLayout m_fresh;
};

TEST_F(LongText, ATrimLaysOutAFewLinesAndLeavesTheLastOnesInPlace) {
    typeWords();
    const auto cost = costOf([this] { typist.drop(length * 3 / 10 + 1); });
    EXPECT_LE(cost, inView);
    EXPECT_TRUE(sameEnd(layout, fresh(), inView));
    layout.complete();
    EXPECT_TRUE(sameLines(layout, fresh()));
}

TEST_F(LongText, ANewWidthOrSizeLaysOutTheEndFirst) {
    typeWords();
    layout.complete();
    EXPECT_LE(costOf([this] {
                  look.width = 1000;
                  apply(layout, look);
              }),
              8 * inView);
    EXPECT_FALSE(layout.isComplete());
    EXPECT_TRUE(sameEnd(layout, fresh(), inView));
    EXPECT_LE(costOf([this] {
                  look.size = 72;
                  apply(layout, look);
              }),
              8 * inView);
    EXPECT_TRUE(sameEnd(layout, fresh(), inView));
    layout.complete();
    EXPECT_TRUE(sameLines(layout, fresh()));
}

TEST_F(LongText, TheExpectedHeightIsNearTheRealOne) {
    typeWords();
    const auto expected = static_cast<double>(layout.lineCount());
    EXPECT_FALSE(layout.isComplete());
    layout.complete();
    EXPECT_NEAR(static_cast<double>(layout.lineCount()), expected, 0.1 * expected);
}

TEST_F(LongText, WhereNoBlankEverBringsTheLinesInStepTheTrimIsNoDearer) {
    typist.type(std::string(length, 'm'));
    show();
    layout.complete();
    EXPECT_LE(costOf([this] { typist.drop(length * 3 / 10 + 1); }), inView);
    EXPECT_FALSE(layout.isComplete());
    while (!layout.isComplete()) {
        EXPECT_LE(costOf([] {}), 4 * inView);
    }
    EXPECT_TRUE(sameLines(layout, fresh()));
}

TEST_F(LongText, KeysWhileThereIsStillAGapLayOutAFewLines) {
    typist.type(std::string(length, 'm'));
    show();
    EXPECT_FALSE(layout.isComplete());
    for (const char* key : {"a", " ", "\n", "b"}) {
        EXPECT_LE(costOf([&] { typist.type(key); }), inView + 4);
    }
    EXPECT_LE(costOf([this] { typist.content.pop_back(); }), inView + 4);
    layout.complete();
    EXPECT_TRUE(sameLines(layout, fresh()));
}

} // namespace
} // namespace tapalong
