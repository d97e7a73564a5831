#pragma once

#include "session/EmojiPool.h"
#include "ui/text/TypedTextLayout.h"
#include "ui/text/TypedTextSamples.test.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <string>

namespace tapalong::samples {

struct Look {
    double size = 72;
    double width = 900;
    bool cursor = true;
};

inline void apply(TypedTextLayout& layout, const Look& look) {
    layout.setFontSize(look.size);
    layout.setWidth(look.width);
    layout.setCursorShown(look.cursor);
}

class TypedTextLayoutTest : public WithFonts {
protected:
    void show() { layout.update(typist.content); }

    /// All that it keeps is how wide emoji are, which is what takes the time.
    TypedTextLayout& layoutFromScratch(const Look& look) {
        m_other.update({});
        apply(m_other, look);
        m_other.update(typist.content);
        return m_other;
    }

    Typist typist;
    TypedTextLayout layout;

private:
    TypedTextLayout m_other;
};

inline testing::AssertionResult sameLine(TypedTextLayout& actual, std::size_t index, TypedTextLayout& expected,
                                         std::size_t expectedIndex) {
    const auto is = actual.line(index);
    const auto should = expected.line(expectedIndex);
    if (is != should) {
        return testing::AssertionFailure() << "line " << expectedIndex << " is " << is.begin << " to " << is.end
                                           << ", not " << should.begin << " to " << should.end;
    }
    const auto shape = actual.shaped(index);
    const auto expectedShape = expected.shaped(expectedIndex);
    if (shape->cursorX != expectedShape->cursorX || shape->pieces.size() != expectedShape->pieces.size()) {
        return testing::AssertionFailure()
               << "line " << expectedIndex << " has other pieces: " << shape->pieces.size() << " and the cursor at "
               << shape->cursorX.value_or(-1) << ", not " << expectedShape->pieces.size() << " and "
               << expectedShape->cursorX.value_or(-1);
    }
    for (std::size_t k = 0; k < shape->pieces.size(); ++k) {
        if (shape->pieces[k].x != expectedShape->pieces[k].x || shape->pieces[k].key != expectedShape->pieces[k].key) {
            return testing::AssertionFailure() << "piece " << k << " of line " << expectedIndex << " differs";
        }
    }
    return testing::AssertionSuccess();
}

inline testing::AssertionResult sameLines(TypedTextLayout& actual, TypedTextLayout& expected) {
    if (actual.lineCount() != expected.lineCount()) {
        return testing::AssertionFailure() << actual.lineCount() << " lines, not " << expected.lineCount();
    }
    for (std::size_t i = 0; i < expected.lineCount(); ++i) {
        if (auto result = sameLine(actual, i, expected, i); !result) {
            return result;
        }
    }
    return testing::AssertionSuccess();
}

/// The last lines, whatever their numbers are.
inline testing::AssertionResult sameEnd(TypedTextLayout& actual, TypedTextLayout& expected, std::size_t lines) {
    for (std::size_t i = 1; i <= std::min(lines, expected.lineCount()); ++i) {
        if (i > actual.lineCount() - actual.firstLineOfEnd()) {
            return testing::AssertionFailure() << "only " << i - 1 << " lines are there";
        }
        if (auto result = sameLine(actual, actual.lineCount() - i, expected, expected.lineCount() - i); !result) {
            return result;
        }
    }
    return testing::AssertionSuccess();
}

inline constexpr std::array<std::string_view, 17> phrases{
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
    "a    b    c",
    "\u0F56\u0F7C\u0F51\u0F0B\u0F61\u0F72\u0F42\u0F0B \u1019\u103C\u1014\u103A\u1019\u102C ",
    "\uD55C\uAD6D\uC5B4 \u1100\u1161\u11A8 \u0BA4\u0BAE\u0BBF\u0BB4\u0BCD ",
    "\n",
    "\n\n",
};

/// Typed alone, they join what stands before them.
inline constexpr std::array<std::string_view, 6> joiners{"\u0301",     "\u0E31",     "\u093F",
                                                         "\U0001F3FD", "\U0001F1E9", "\u064E"};

/// As an emoji keyboard types them: skin tones, families, flags, keycaps, signs that are text without the selector, and
/// beside them what a line break heeds.
inline constexpr std::array<std::string_view, 19> emoji{
    "\U0001F44B\U0001F3FF",
    "\U0001F9D1\U0001F3FC\u200D\U0001F680",
    "\U0001F469\u200D\u2764\uFE0F\u200D\U0001F468",
    "\U0001F3F3\uFE0F\u200D\U0001F308",
    "\U0001F1EF\U0001F1F5",
    "\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7\U0001F1EE\U0001F1F9",
    "\U0001F3F4\U000E0067\U000E0062\U000E0073\U000E0063\U000E0074\U000E007F",
    "1\uFE0F\u20E3"
    "2\uFE0F\u20E3",
    "#\uFE0F\u20E3",
    "\u00A9\uFE0F",
    "\u2122\uFE0F",
    "\u203C\uFE0F",
    "\u2194\uFE0F",
    "\u2600\uFE0F",
    "\u263A\uFE0E",
    "$\U0001F1E9\U0001F1EA%",
    "(\U0001F438)",
    "\U0001F438\u2026\U0001F680!",
    "\u00A0\U0001F438\u00A0\U0001F680",
};

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
            const bool ofThePool = below(2) == 0;
            m_typist.type(ofThePool ? EmojiPool::all()[below(EmojiPool::all().size())].utf8()
                                    : emoji.at(below(emoji.size())));
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

inline std::uint64_t randomSeed() {
    const char* given = std::getenv("TAPALONG_SEED");
    const std::uint64_t seed = given != nullptr ? std::stoull(given) : std::random_device()();
    std::cout << "TAPALONG_SEED=" << seed << '\n';
    return seed;
}

} // namespace tapalong::samples
