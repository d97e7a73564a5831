#include "text/GraphemeBreak.h"
#include "ui/text/Emoji.h"
#include "ui/text/TypedTextLayoutFixture.test.h"

#include <QTextLayout>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace tapalong {
namespace {

using namespace samples;

QTextOption wholeParagraph() {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(Qt::LeftToRight);
    option.setUseDesignMetrics(true);
    return option;
}

double widthInEngine(const QString& text, const QFont& font) {
    QTextLayout engine(text, font);
    engine.setTextOption(wholeParagraph());
    engine.beginLayout();
    QTextLine line = engine.createLine();
    line.setLineWidth(1e6);
    engine.endLayout();
    return line.naturalTextWidth();
}

/// That font, spaced so that the text is as wide as asked, however many glyphs it makes of it.
QFont fittedFont(const QString& text, QFont font, double width) {
    font.setStyleStrategy(QFont::NoFontMerging);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 0);
    const double without = widthInEngine(text, font);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 100);
    const double spacedGlyphs = (widthInEngine(text, font) - without) / 100;
    font.setLetterSpacing(QFont::AbsoluteSpacing, (width - without) / spacedGlyphs);
    EXPECT_NEAR(widthInEngine(text, font), width, 0.1) << text.toStdString();
    return font;
}

/// Where the text engine, given all of it at once, begins a line and ends the last one. Emoji are themselves there, each
/// as wide as its picture.
std::vector<int> breaksOf(const QString& paragraph, const TypedTextLayout& like, double width) {
    EmojiArt art;
    const QFont font = like.face().font();
    QList<QTextLayout::FormatRange> formats;
    const std::string utf8 = paragraph.toStdString();
    int position = 0;
    for (const std::string_view cluster : clusters(utf8)) {
        const QString text = QString::fromUtf8(cluster.data(), static_cast<qsizetype>(cluster.size()));
        if (showsAsEmoji(cluster)) {
            QTextLayout::FormatRange range{position, static_cast<int>(text.size()), {}};
            range.format.setFont(fittedFont(text, font, art.advance(text) * like.emojiScale()));
            formats.append(range);
        }
        position += static_cast<int>(text.size());
    }
    QTextLayout engine(paragraph, font);
    engine.setFormats(formats);
    engine.setTextOption(wholeParagraph());
    engine.beginLayout();
    std::vector<int> breaks{0};
    for (QTextLine line = engine.createLine(); line.isValid(); line = engine.createLine()) {
        line.setLineWidth(width);
        breaks.push_back(line.textStart() + line.textLength());
    }
    engine.endLayout();
    return breaks;
}

/// Paragraphs of random phrases, broken by us and by the text engine.
class WholeParagraph : public TypedTextLayoutTest {
protected:
    static constexpr int paragraphs = 40;
    static constexpr double width = 900;
    static constexpr std::string_view thai = phrases[6];
    static constexpr std::string_view family = phrases[8];
    static constexpr std::string_view flags = phrases[9];

    WholeParagraph() { apply(layout, {40, width, false}); }

    /// Those without line breaks, which would end the paragraph, and without `others`.
    static std::vector<std::string_view> phrasesWithout(std::vector<std::string_view> others) {
        std::vector<std::string_view> result;
        std::copy_if(phrases.begin(), phrases.end(), std::back_inserter(result), [&others](std::string_view phrase) {
            return phrase.find('\n') == std::string_view::npos &&
                   std::find(others.begin(), others.end(), phrase) == others.end();
        });
        return result;
    }

    testing::AssertionResult breaksAsTheEngine() {
        QString whole;
        std::vector<int> starts; // of the typed characters in the paragraph
        for (const auto& typed : typist.content) {
            starts.push_back(static_cast<int>(whole.size()));
            whole += QString::fromStdString(typed.character.utf8());
        }
        starts.push_back(static_cast<int>(whole.size()));
        show();
        std::vector<int> breaks{0};
        for (std::size_t i = 0; i < layout.lineCount(); ++i) {
            breaks.push_back(starts.at(layout.line(i).end));
        }
        const auto expected = breaksOf(whole, layout, width);
        if (breaks == expected) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << testing::PrintToString(breaks) << " is not "
                                           << testing::PrintToString(expected) << " of " << whole.toStdString();
    }
};

TEST_F(WholeParagraph, LinesOfLettersBreakWhereTheTextEngineBreaksThem) {
    const auto written = phrasesWithout({family, flags});
    RandomHand hand(randomSeed(), typist);
    for (int paragraph = 0; paragraph < paragraphs; ++paragraph) {
        typist.content.clear();
        for (std::size_t i = hand.below(60) + 1; i > 0; --i) {
            typist.type(written[hand.below(written.size())]);
        }
        ASSERT_TRUE(breaksAsTheEngine());
    }
}

/// Without Thai: there the engine looks for words, in the signs behind the letters too, but in the text of each font
/// alone.
TEST_F(WholeParagraph, EmojiAmongLettersBreakWhereTheTextEngineBreaksThem) {
    const auto written = phrasesWithout({thai});
    RandomHand hand(randomSeed(), typist);
    for (int paragraph = 0; paragraph < paragraphs; ++paragraph) {
        typist.content.clear();
        typist.type("a");
        for (std::size_t i = hand.below(30) + 1; i > 0; --i) {
            typist.type(written[hand.below(written.size())]);
            for (std::size_t k = hand.below(4); k > 0; --k) {
                typist.type(emoji.at(hand.below(emoji.size())));
            }
        }
        ASSERT_TRUE(breaksAsTheEngine());
    }
}

TEST_F(WholeParagraph, LinesOfEmojiAloneBreakWhereTheTextEngineBreaksThem) {
    RandomHand hand(randomSeed(), typist);
    for (int paragraph = 0; paragraph < paragraphs; ++paragraph) {
        typist.content.clear();
        for (std::size_t i = hand.below(80) + 1; i > 0; --i) {
            typist.type(emoji.at(hand.below(emoji.size())));
            typist.type(EmojiPool::all()[hand.below(EmojiPool::all().size())].utf8());
        }
        ASSERT_TRUE(breaksAsTheEngine());
    }
}

} // namespace
} // namespace tapalong
