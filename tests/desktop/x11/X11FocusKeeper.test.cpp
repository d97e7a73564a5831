#include "platform/linux/x11/X11FocusKeeper.h"

#include "desktop/x11/OwnWindow.h"
#include "desktop/x11/X11EventTapsTest.h"

#include <QGuiApplication>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <vector>

namespace tapalong {

namespace {

using test::OwnWindow;
using test::spinFor;
using test::spinUntil;
using test::X11EventTapsTest;
using namespace std::chrono_literals;

xcb_window_t idOf(const QWindow& window) {
    return static_cast<xcb_window_t>(window.winId());
}

/// A tap, the keeper, and a window that no window manager manages, as a session's.
class X11FocusKeeperTest : public X11EventTapsTest {
protected:
    X11FocusKeeperTest() {
        QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &listener,
                         [this](const QWindow* focused) { activated.push_back(focused); });
    }

    /// By the server; the toolkit does not know of all that happens.
    [[nodiscard]] xcb_window_t focusedNow() const {
        const auto reply = own(xcb_get_input_focus_reply(other.xcb(), xcb_get_input_focus(other.xcb()), nullptr));
        return reply ? reply->focus : xcb_window_t{XCB_NONE};
    }

    OwnWindow behind;
    OwnWindow window{Qt::FramelessWindowHint | Qt::BypassWindowManagerHint};
    X11FocusKeeper keeper{taps};
    std::vector<const QWindow*> activated; ///< by the toolkit, null for none
    QObject listener;                      ///< last, so that nothing is heard after the list is gone
};

} // namespace

TEST_F(X11FocusKeeperTest, OurWindowKeepsItsFocusWhileTheTapHolds) {
    start();
    spinFor(200ms);
    EXPECT_EQ(QGuiApplication::focusWindow(), &window);
    stop();
    spinFor(200ms);
    EXPECT_EQ(QGuiApplication::focusWindow(), &window);
    EXPECT_TRUE(activated.empty());
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return window.typed == "a"; }));
}

TEST_F(X11FocusKeeperTest, WindowStaysActiveForAsLongAsTheTapHoldsWhoeverHasTheFocus) {
    start();
    other.focus(elsewhere);
    spinFor(300ms); // longer than the toolkit waits before it believes in a loss of focus
    EXPECT_EQ(focusedNow(), elsewhere) << "there is no window to take it back for";
    EXPECT_EQ(QGuiApplication::focusWindow(), &window);
    window.activate();
    stop();
    other.focus(elsewhere);
    ASSERT_TRUE(spinUntil([&] { return QGuiApplication::focusWindow() == nullptr; }));
}

TEST_F(X11FocusKeeperTest, FocusThatAnotherProgramHadBeforeTheTapIsTaken) {
    keeper.keepFor(window);
    other.focus(elsewhere);
    spinFor(50ms);
    EXPECT_EQ(focusedNow(), elsewhere);
    start();
    EXPECT_TRUE(spinUntil([&] { return focusedNow() == idOf(window); }));
    spinFor(300ms); // longer than the toolkit waits before it believes in a loss of focus
    EXPECT_EQ(QGuiApplication::focusWindow(), &window);
}

TEST_F(X11FocusKeeperTest, FocusThatAnotherProgramTakesIsTakenBackWhileTheTapHolds) {
    keeper.keepFor(window);
    start();
    for (int i = 0; i < 3; ++i) {
        other.focus(elsewhere);
        EXPECT_TRUE(spinUntil([&] { return focusedNow() == idOf(window); }));
    }
    EXPECT_TRUE(activated.empty()) << "the toolkit was told of it";
    stop();
    other.focus(elsewhere);
    ASSERT_TRUE(spinUntil([&] { return QGuiApplication::focusWindow() == nullptr; }));
    spinFor(100ms);
    EXPECT_EQ(focusedNow(), elsewhere);
}

TEST_F(X11FocusKeeperTest, FocusLostJustBeforeTheTapIsTakenBackToo) {
    keeper.keepFor(window);
    other.focus(elsewhere);
    start();
    EXPECT_TRUE(spinUntil([&] { return focusedNow() == idOf(window); }));
    EXPECT_TRUE(spinUntil([&] { return QGuiApplication::focusWindow() == &window; }));
}

TEST_F(X11FocusKeeperTest, FocusGivenToAnotherWindowOfOursIsTakenBackUnnoticedWhileTheTapHolds) {
    keeper.keepFor(window);
    start();
    other.focus(idOf(behind));
    EXPECT_TRUE(spinUntil([&] { return focusedNow() == idOf(window); }));
    spinFor(100ms);
    EXPECT_TRUE(activated.empty()) << "the toolkit was told of it";
}

TEST_F(X11FocusKeeperTest, WithoutATapAnotherWindowOfOursIsActiveUntilTheFocusIsTakenBack) {
    keeper.keepFor(window);
    other.focus(idOf(behind));
    EXPECT_TRUE(spinUntil([&] { return focusedNow() == idOf(window); }));
    ASSERT_TRUE(spinUntil([&] { return QGuiApplication::focusWindow() == &window; }));
    EXPECT_EQ(activated.at(0), &behind);
}

TEST_F(X11FocusKeeperTest, NothingIsTakenBackForAWindowThatIsHidden) {
    keeper.keepFor(window);
    start();
    window.hide();
    for (const xcb_window_t focus : {idOf(behind), elsewhere}) {
        other.focus(focus);
        spinFor(100ms);
        EXPECT_EQ(focusedNow(), focus);
    }
    EXPECT_NE(QGuiApplication::focusWindow(), &window);
}

} // namespace tapalong
