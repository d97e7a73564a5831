#include "ui/text/TypedTextItem.h"

#include "session/EmojiPool.h"
#include "ui/text/Emoji.h"
#include "ui/text/ImageCache.h"
#include "ui/text/TypedTextLayout.h"
#include "ui/text/TypedTextSamples.test.h"

#include <QAccessible>
#include <QQuickWindow>

#include <string>

namespace tapalong {
namespace {

using samples::Typist;

QRect inkIn(const QImage& image, QRgb background) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != background) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    return ink;
}

class TypedTextItemTest : public samples::WithFonts {
protected:
    static void SetUpTestSuite() {
        WithFonts::SetUpTestSuite();
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }

    TypedTextItemTest() {
        window.setColor(Qt::white);
        window.resize(800, 400);
        item.setParentItem(window.contentItem());
        item.setWidth(800);
        item.setFontSize(72);
        item.setViewportHeight(400);
        window.show();
    }

    void show() { item.setCharacters(&typist.content); }

    void scrollTo(double y) {
        item.setY(-y);
        item.setViewportY(y);
    }

    /// Shows so much that its lines are not laid out at once, from its end.
    void showLongText() {
        typist.type("start" + std::string(6000, 'm') + "end");
        show();
        scrollTo(item.implicitHeight() - 400);
    }

    QImage picture() { return window.grabWindow().convertToFormat(QImage::Format_RGB32); }
    QRect ink() { return inkIn(picture(), QColor(Qt::white).rgb()); }

    Typist typist;
    QQuickWindow window;
    TypedTextItem item;
};

TEST_F(TypedTextItemTest, NothingTypedAndNoCursorPaintsNothing) {
    show();
    EXPECT_TRUE(ink().isNull());
    EXPECT_EQ(item.implicitHeight(), 0);
}

TEST_F(TypedTextItemTest, TheCursorBlinksWithoutMovingOrLayingOutAnything) {
    item.setShowCursor(true);
    typist.type("ab");
    show();
    const QRect seen = ink();
    const auto lines = item.layout().linesLaidOut();
    item.setCursorVisible(false);
    const QRect unseen = ink();
    EXPECT_GT(seen.right(), unseen.right());
    EXPECT_FALSE(unseen.isNull());
    item.setCursorVisible(true);
    EXPECT_EQ(ink(), seen);
    EXPECT_EQ(item.layout().linesLaidOut(), lines);
}

TEST_F(TypedTextItemTest, ALineIsAsHighAsAnyOtherWhateverStandsInIt) {
    item.setFontSize(40);
    const auto bottomOf = [this](std::string_view text) {
        typist.content.clear();
        show();
        typist.type(text);
        show();
        return ink().bottom();
    };
    const int letters = bottomOf("l\nl\nl\nl");
    EXPECT_NEAR(letters - bottomOf("l"), 3 * item.layout().pitch(), 1);
    for (const char* text : {"l\n\n\nl", "l\n\U0001F438\n\u2764\uFE0F\nl", "l\n\u4F60\n\u0928\u093F\nl"}) {
        EXPECT_EQ(bottomOf(text), letters) << text;
    }
    EXPECT_LE(bottomOf("\U0001F438"), item.layout().face().lineHeight()) << "an emoji reaches beyond its line";
}

TEST_F(TypedTextItemTest, NamedTextColourIsThatOfTheMoment) {
    typist.content.emplace_back(Character("l"), NamedColor::primary, Uuid{1, 1});
    show();
    const QPoint middle = ink().center();
    EXPECT_EQ(picture().pixelColor(middle), QColor(Qt::black));
    item.setPrimaryColor(Qt::blue);
    EXPECT_EQ(picture().pixelColor(middle), QColor(Qt::blue));
}

TEST_F(TypedTextItemTest, WhatIsDeletedLeavesNoTrace) {
    typist.type("ab");
    show();
    const QImage before = picture();
    typist.type("\U0001F438 \nxyz");
    show();
    EXPECT_NE(picture(), before);
    typist.content.resize(2, typist.content.front());
    show();
    EXPECT_EQ(picture(), before);
}

TEST_F(TypedTextItemTest, TextThatChangedButWasNotAnnouncedIsDrawnAsItIs) {
    typist.type("hello\nworld");
    show();
    typist.content.clear();
    item.setViewportY(1);
    EXPECT_TRUE(ink().isNull());
}

TEST_F(TypedTextItemTest, LinesThatNobodySeesAreLaidOutBetweenEvents) {
    showLongText();
    EXPECT_FALSE(ink().isNull());
    EXPECT_FALSE(item.layout().isComplete());
    for (int turn = 0; turn < 1000 && !item.layout().isComplete(); ++turn) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_TRUE(item.layout().isComplete());
    scrollTo(item.implicitHeight() - 400);
    const QImage shown = picture();

    item.setCharacters(nullptr);
    item.setViewportHeight(0);
    show();
    item.setViewportHeight(400);
    EXPECT_EQ(picture(), shown) << "it is not what a layout of everything shows";
}

TEST_F(TypedTextItemTest, LinesThatAreScrolledToAreLaidOutAtOnce) {
    showLongText();
    const QImage end = picture();
    scrollTo(0);
    const QImage start = picture();
    EXPECT_TRUE(item.layout().isComplete());
    EXPECT_NE(start, end);
    typist.content.resize(100, typist.content.front());
    show();
    EXPECT_EQ(picture(), start);
}

TEST_F(TypedTextItemTest, EmojiOfThePoolAndOfTheSkyAreInColour) {
    ASSERT_FALSE(SessionFace::emojiFamily().isEmpty()) << "the emoji font is missing";
    EmojiArt art;
    auto emojis = EmojiPool::all();
    emojis.insert(emojis.end(), EmojiPool::sky().begin(), EmojiPool::sky().end());
    for (const Character& emoji : emojis) {
        EXPECT_TRUE(showsAsEmoji(emoji.utf8())) << emoji.utf8() << " is left to the fonts for text";
        const QImage image = art.picture(QString::fromStdString(emoji.utf8()), Qt::black);
        // A sign that some font has as an outline would follow the ink.
        EXPECT_EQ(image, art.picture(QString::fromStdString(emoji.utf8()), Qt::red)) << emoji.utf8();
        EXPECT_FALSE(inkIn(image.convertToFormat(QImage::Format_RGB32), QColor(Qt::black).rgb()).isNull());
        EXPECT_LT(image.width(), EmojiArt::emSize * 3 / 2) << emoji.utf8() << " falls apart";
    }
}

TEST_F(TypedTextItemTest, AssistiveTechnologyReadsTheTextWhenItAsks) {
    typist.type("hello \U0001F438\nworld");
    show();
    auto* accessible = QAccessible::queryAccessibleInterface(&item);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->text(QAccessible::Name).toStdString(), "hello \U0001F438\nworld");
    EXPECT_EQ(accessible->role(), QAccessible::StaticText);
}

TEST(ImageCache, KeepsWithinItsBoundWhatWasUsedLast) {
    ImageCache<int> cache(100);
    for (int i = 0; i < 20; ++i) {
        cache.insert(QByteArray::number(i), i, 10);
        ASSERT_NE(cache.find("0"), nullptr) << "used again after each";
        EXPECT_LE(cache.cost(), 100U);
    }
    EXPECT_EQ(cache.find("1"), nullptr);
    EXPECT_EQ(*cache.find("19"), 19);
}

TEST(ImageCache, OneEntryBeyondTheBoundStandsAlone) {
    ImageCache<int> cache(100);
    cache.insert("small", 1, 10);
    cache.insert("large", 2, 1000);
    EXPECT_EQ(cache.size(), 1U);
    EXPECT_NE(cache.find("large"), nullptr);
}

} // namespace
} // namespace tapalong
