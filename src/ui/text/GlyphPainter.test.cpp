#include "ui/text/GlyphPainter.h"

#include "ui/text/TypedTextSamples.test.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tapalong {
namespace {

/// Of the font's size; the pictures have one size only.
constexpr double emojiEm = 150.0 / EmojiArt::emSize;

class GlyphPainterTest : public samples::WithFonts {
protected:
    QImage picture() { return art.picture(piece.emoji, Qt::black); }

    /// As drawn at that many pixels to an em.
    QImage painted(double pixels) {
        Paint paint;
        paint.emojiUnit = pixels * emojiEm / EmojiArt::emSize;
        return paintPiece(piece, paint, art).image;
    }

    EmojiArt art;
    LinePiece piece{0, {}, {}, QStringLiteral("\U0001F438"), {}};
};

/// The greatest step of opacity from a pixel to the next, 0...255.
int steepestEdge(const QImage& image) {
    int steepest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 1; x < image.width(); ++x) {
            steepest = std::max(steepest, std::abs(qAlpha(image.pixel(x, y)) - qAlpha(image.pixel(x - 1, y))));
        }
    }
    return steepest;
}

/// Of the pixels of `small`, how far they are from the mean of those that they stand for, all added up.
double errorOf(const QImage& small, const QImage& large) {
    const double across = static_cast<double>(large.width()) / small.width();
    const double down = static_cast<double>(large.height()) / small.height();
    std::vector<double> sums(static_cast<std::size_t>(small.width()) * static_cast<std::size_t>(small.height()));
    std::vector<int> counts(sums.size());
    for (int y = 0; y < large.height(); ++y) {
        for (int x = 0; x < large.width(); ++x) {
            const int at = static_cast<int>(y / down) * small.width() + static_cast<int>(x / across);
            sums[static_cast<std::size_t>(at)] += qAlpha(large.pixel(x, y));
            ++counts[static_cast<std::size_t>(at)];
        }
    }
    double error = 0;
    for (std::size_t i = 0; i < sums.size(); ++i) {
        const int x = static_cast<int>(i) % small.width();
        const int y = static_cast<int>(i) / small.width();
        error += std::abs(sums[i] / counts[i] - qAlpha(small.pixel(x, y)));
    }
    return error;
}

TEST_F(GlyphPainterTest, AnEmojiLargerThanItsPictureHasSmoothEdges) {
    const QImage small = picture();
    for (const double pixels : {200.0, 250.0, 300.0, 400.0}) {
        const QImage large = painted(pixels);
        const double grown = static_cast<double>(large.height()) / small.height();
        EXPECT_NEAR(grown, pixels * emojiEm / EmojiArt::emSize, 0.01);
        // An edge is spread over as many pixels as one became; pixels that were only repeated would keep its step.
        EXPECT_LT(steepestEdge(large), 1.3 * steepestEdge(small) / grown) << pixels;
        EXPECT_GT(steepestEdge(large), 0.5 * steepestEdge(small) / grown) << pixels << ": it is blurred";
    }
}

TEST_F(GlyphPainterTest, AnEmojiSmallerThanItsPictureShowsTheMeanOfWhatItCovers) {
    const QImage large = picture();
    for (const double pixels : {24.0, 30.0, 48.0}) {
        const QImage small = painted(pixels);
        const QImage picked = large.scaled(small.size(), Qt::IgnoreAspectRatio, Qt::FastTransformation);
        EXPECT_LT(errorOf(small, large), 0.75 * errorOf(picked, large)) << pixels;
    }
}

} // namespace
} // namespace tapalong
