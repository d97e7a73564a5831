#include "platform/linux/x11/X11ScreenCover.h"

#include "desktop/x11/OwnWindow.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11ScreenPixels.h"

#include <QScreen>
#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace tapalong {

namespace {

constexpr std::array ratios{1.0, 1.04, 1.1, 1.25, 1.5, 1.75, 2.0, 2.25, 2.5, 3.0};

/// The last pixel that the software renderer paints in a window of so many points.
double paintedPixels(int points, double ratio) {
    return std::floor(std::round(points * ratio) / ratio) * ratio;
}

} // namespace

TEST(X11ScreenCover, WindowPaintsEveryPixelOfItsScreen) {
    for (const double ratio : ratios) {
        for (int pixels = 320; pixels <= 4096; ++pixels) {
            const int points = pointsThatCover({pixels, 600}, ratio).width();
            ASSERT_GE(paintedPixels(points, ratio) + 1e-6, pixels) << "at " << ratio;
            ASSERT_LT(points, pixels / ratio + 2) << pixels << " at " << ratio;
        }
    }
}

TEST(X11ScreenCover, WindowIsNoLargerThanAScreenOfWholePoints) {
    EXPECT_EQ(pointsThatCover({1280, 1024}, 1), QSize(1280, 1024));
    EXPECT_EQ(pointsThatCover({1920, 1080}, 1.25), QSize(1536, 864));
    EXPECT_EQ(pointsThatCover({1920, 1080}, 1.5), QSize(1280, 720));
    EXPECT_EQ(pointsThatCover({3840, 2160}, 2), QSize(1920, 1080));
}

TEST(X11ScreenCover, UnscaledScreenIsCoveredAsTheToolkitHasIt) {
    const X11Connection connection;
    const X11ScreenPixels screens(connection);
    const auto& screen = *QGuiApplication::primaryScreen();
    EXPECT_EQ(screens.of(screen), screen.geometry());
    EXPECT_EQ(screens.sizeInPoints(screen), QSizeF(screen.size()));
    test::OwnWindow window(Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    window.setGeometry(1, 2, 3, 4);
    coverScreen(window, screen, screens.of(screen));
    EXPECT_EQ(window.geometry(), screen.geometry());
}

} // namespace tapalong
