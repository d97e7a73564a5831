#include "platform/linux/x11/X11WindowKeeper.h"

#include "desktop/x11/OwnWindow.h"

#include <gtest/gtest.h>

namespace tapalong {

namespace {

using test::OwnWindow;
using test::spinFor;
using test::spinUntil;
using namespace std::chrono_literals;

class X11WindowKeeperTest : public testing::Test {
protected:
    X11Connection connection;
    OwnWindow window{Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint};
    test::XClient other;
    xcb_window_t ours = static_cast<xcb_window_t>(window.winId());
};

} // namespace

TEST_F(X11WindowKeeperTest, WithoutAKeeperANewWindowLiesAbove) {
    const auto covering = other.openWindow(100, 100, 200, 200);
    spinFor(50ms);
    EXPECT_EQ(other.topWindow(), covering);
}

TEST_F(X11WindowKeeperTest, KeptWindowReturnsAboveWindowsThatAppearOrAreRaised) {
    (void)other.openWindow(10, 10, 20, 20);
    const X11WindowKeeper keeper(connection, window);
    ASSERT_TRUE(spinUntil([&] { return other.topWindow() == ours; }));
    const auto covering = other.openWindow(100, 100, 200, 200);
    ASSERT_TRUE(spinUntil([&] { return other.topWindow() == ours; }));
    other.raise(covering);
    ASSERT_TRUE(spinUntil([&] { return other.topWindow() == ours; }));
}

TEST_F(X11WindowKeeperTest, WindowOnAnotherPartOfTheScreenGoesBelowToo) {
    window.setGeometry(0, 0, 400, 400);
    spinFor(50ms);
    const X11WindowKeeper keeper(connection, window);
    (void)other.openWindow(800, 600, 50, 50);
    ASSERT_TRUE(spinUntil([&] { return other.topWindow() == ours; }));
}

TEST_F(X11WindowKeeperTest, KeptWindowThatIsLoweredComesBackAlsoWhereNothingCoversIt) {
    window.setGeometry(0, 0, 400, 400);
    spinFor(50ms);
    const X11WindowKeeper keeper(connection, window);
    const auto apart = other.openWindow(800, 600, 50, 50);
    ASSERT_TRUE(spinUntil([&] { return other.topWindow() == ours; }));
    constexpr std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(other.xcb(), ours, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    other.sync();
    EXPECT_EQ(other.topWindow(), apart);
    ASSERT_TRUE(spinUntil([&] { return other.topWindow() == ours; }));
}

TEST_F(X11WindowKeeperTest, KeptWindowThatIsOnTopIsLeftAlone) {
    const X11WindowKeeper keeper(connection, window);
    spinFor(50ms);
    int restackings = 0;
    const auto listener = connection.listen(
        [&](const xcb_generic_event_t& event) { restackings += kindOf(event) == XCB_CONFIGURE_NOTIFY ? 1 : 0; });
    spinFor(200ms);
    EXPECT_EQ(restackings, 0);
}

TEST_F(X11WindowKeeperTest, WindowIsItsOwnAgainWithoutItsKeeper) {
    { const X11WindowKeeper keeper(connection, window); }
    spinFor(50ms);
    const auto covering = other.openWindow(100, 100, 200, 200);
    spinFor(50ms);
    EXPECT_EQ(other.topWindow(), covering);
}

} // namespace tapalong
