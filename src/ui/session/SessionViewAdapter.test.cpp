#include "ui/session/SessionViewAdapter.h"

#include "lockdown/Notifications.h"
#include "session/SessionManager.h"
#include "ui/Gui.test.h"
#include "ui/controls/SecureField.h"

#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace tapalong {

namespace {

struct SessionWindowTest : testing::Test {
    SessionWindowTest() {
        gui.app.settings().exitPassword.set("open");
        gui.app.settings().useTouchID.set(false);
        view = std::dynamic_pointer_cast<SessionView>(gui.startSession());
        gui.open(view, {1366, 768});
        adapter = gui.window->findChild<SessionViewAdapter*>();
    }
    ~SessionWindowTest() override { EXPECT_EQ(takeWarnings().join("\n").toStdString(), ""); }

    QQuickItem* item(const char* name) { return itemNamed(*gui.window, name); }
    SecureField* field() {
        for (auto* candidate : allItems(*gui.window)) {
            if (auto* found = qobject_cast<SecureField*>(candidate)) {
                return found;
            }
        }
        return nullptr;
    }
    QQuickItem* typingArea() {
        for (auto* candidate : allItems(*gui.window)) {
            if (candidate->inherits("QQuickFlickable")) {
                return candidate;
            }
        }
        return nullptr;
    }
    void typeKey(const char* text) {
        gui.desktop.send(simulated::keyEvent(0, 0, text));
        gui.desktop.time.drain();
        turn();
    }
    /// The corner was held; 0.1 seconds later the overlay takes the keyboard.
    void bringUpOverlay() {
        gui.desktop.notificationCenter.post(showExitOverlayNotification);
        gui.desktop.time.advance(0.2);
        turn();
    }
    void enter(const char* password) {
        for (const char* c = password; *c != '\0'; ++c) {
            press(*gui.window, 0, QString(QChar(*c)));
        }
        turn();
    }
    void clickOn(const char* name) {
        auto* target = item(name);
        ASSERT_NE(target, nullptr) << name;
        click(*gui.window, target->mapToScene({target->width() / 2, target->height() / 2}));
        turn();
    }
    void fillTheScreen() {
        for (int i = 0; i < 40; ++i) {
            gui.desktop.send(simulated::keyEvent(36));
        }
        gui.desktop.time.drain();
        turn();
    }
    void turnWheel(int notches) {
        const QPointF position(600, 400);
        QWheelEvent event(position, gui.window->mapToGlobal(position), {}, {0, notches * 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(gui.window.get(), &event);
        turn();
    }
    bool active() { return gui.app.sessionManager().isSessionActive(); }

    Gui gui;
    std::shared_ptr<SessionView> view;
    SessionViewAdapter* adapter = nullptr;
};

} // namespace

TEST_F(SessionWindowTest, NoticeIsThereUntilSomethingIsTypedAndWithLockdownNever) {
    EXPECT_NE(item("Lockdown Mode is off"), nullptr);
    typeKey("a");
    EXPECT_EQ(item("Lockdown Mode is off"), nullptr);
    gui.desktop.send(simulated::keyEvent(51));
    gui.desktop.time.drain();
    turn();
    EXPECT_NE(item("Lockdown Mode is off"), nullptr);
    gui.app.settings().kioskMode.set(true);
    turn();
    EXPECT_EQ(item("Lockdown Mode is off"), nullptr);
}

TEST_F(SessionWindowTest, TypingAndDeletingPastTheBottomKeepTheEndInSight) {
    const auto* area = typingArea();
    ASSERT_NE(area, nullptr);
    const auto bottom = [area] { return area->property("contentY").toDouble() + area->height(); };
    const auto end = [area] { return area->property("contentHeight").toDouble(); };
    const auto press = [this](std::int64_t keyCode) {
        gui.desktop.send(simulated::keyEvent(keyCode));
        gui.desktop.time.drain();
        turn();
    };
    constexpr std::int64_t returnKey = 36;
    constexpr std::int64_t deleteKey = 51;
    for (int i = 0; i < 20; ++i) {
        press(returnKey);
    }
    const double longest = end();
    EXPECT_GT(longest, area->height());
    EXPECT_EQ(bottom(), longest);
    for (int i = 0; i < 5; ++i) {
        press(deleteKey);
        EXPECT_EQ(bottom(), end());
    }
    EXPECT_LT(end(), longest);
}

TEST_F(SessionWindowTest, WheelScrollsBackAsFarAsThereIsTextAndAKeyGoesToTheEnd) {
    fillTheScreen();
    const auto y = [area = typingArea()] { return area->property("contentY").toDouble(); };
    const double end = y();
    ASSERT_GT(end, 500);
    turnWheel(1);
    EXPECT_LT(y(), end);
    EXPECT_GT(y(), end - 500) << "a notch leaves lines in sight to go on from";
    turnWheel(1000);
    EXPECT_EQ(y(), 0);
    turnWheel(-1000);
    EXPECT_EQ(y(), end);
    turnWheel(3);
    typeKey("a");
    EXPECT_EQ(y(), end);
}

TEST_F(SessionWindowTest, WheelMovesNothingInLockdown) {
    gui.app.settings().kioskMode.set(true);
    fillTheScreen();
    const auto y = [area = typingArea()] { return area->property("contentY").toDouble(); };
    const double end = y();
    ASSERT_GT(end, 500);
    turnWheel(3);
    EXPECT_EQ(y(), end);
}

TEST_F(SessionWindowTest, DraggingMovesNothing) {
    fillTheScreen();
    const auto y = [area = typingArea()] { return area->property("contentY").toDouble(); };
    const double end = y();
    ASSERT_GT(end, 500);
    QTest::mousePress(gui.window.get(), Qt::LeftButton, {}, {600, 100});
    for (int at = 100; at <= 600; at += 20) {
        QTest::mouseMove(gui.window.get(), {600, at});
        turn();
    }
    EXPECT_EQ(y(), end) << "while the button is held";
    QTest::mouseRelease(gui.window.get(), Qt::LeftButton, {}, {600, 600});
    turn();
    EXPECT_EQ(y(), end);
}

TEST_F(SessionWindowTest, WarningStandsBelowTheTextWhileLockdownIsMissing) {
    constexpr auto warning = "Lockdown Mode is not in force: Tapalong could not get all of the keyboard for itself. "
                             "Keys may reach other programs or the system.";
    EXPECT_EQ(item(warning), nullptr);
    gui.app.sessionManager().endSession();
    gui.app.settings().kioskMode.set(true);
    gui.desktop.input.setTapsAvailable(false);
    view = std::dynamic_pointer_cast<SessionView>(gui.startSession());
    gui.open(view, {1366, 768});
    ASSERT_NE(item(warning), nullptr);
    EXPECT_EQ(item("Lockdown Mode is off"), nullptr);
    const auto* line = item(warning)->parentItem()->parentItem();
    const auto top = line->mapToScene({0, 0}).y();
    EXPECT_GE(line->mapToScene({0, 0}).x(), SessionView::glowRadius) << "the corner's glow is covered";
    for (int i = 0; i < 40; ++i) {
        gui.desktop.send(simulated::keyEvent(36));
    }
    gui.desktop.time.drain();
    turn();
    const auto* area = typingArea();
    ASSERT_NE(area, nullptr);
    EXPECT_LE(area->mapToScene({0, area->height()}).y(), top) << "the newest line is covered";
    gui.desktop.input.setTapsAvailable(true);
    gui.desktop.time.advance(2);
    turn();
    EXPECT_EQ(item(warning), nullptr);
    EXPECT_EQ(area->height(), 768);
    EXPECT_EQ(area->property("contentY").toDouble(), area->property("contentHeight").toDouble() - 768);
}

TEST_F(SessionWindowTest, OverlaySaysThatLockdownIsMissingForAsLongAsItIs) {
    constexpr auto warning =
        "Lockdown Mode is not in force: what you type may reach another program. If no dots appear "
        "here, a menu may be open: press Escape.";
    bringUpOverlay();
    EXPECT_EQ(item(warning), nullptr) << "of a session without lockdown";
    gui.app.sessionManager().endSession();
    gui.app.settings().kioskMode.set(true);
    gui.desktop.input.setTapsAvailable(false);
    view = std::dynamic_pointer_cast<SessionView>(gui.startSession());
    gui.open(view, {1366, 768});
    EXPECT_EQ(item(warning), nullptr);
    bringUpOverlay();
    ASSERT_NE(item(warning), nullptr);
    EXPECT_TRUE(field()->hasActiveFocus());
    gui.desktop.input.setTapsAvailable(true);
    gui.desktop.time.advance(2);
    turn();
    EXPECT_EQ(item(warning), nullptr);
    EXPECT_TRUE(field()->hasActiveFocus());
}

TEST_F(SessionWindowTest, GlowFollowsTheCorner) {
    gui.app.settings().exitCorner.set(ScreenCorner::bottomLeft);
    turn();
    const auto items = allItems(*gui.window);
    const bool moved = std::any_of(items.begin(), items.end(), [](QQuickItem* candidate) {
        return candidate->width() == 80 && candidate->position() == QPointF(-40, 768 - 40);
    });
    EXPECT_TRUE(moved);
}

TEST_F(SessionWindowTest, BackgroundFollowsTheDesktop) {
    EXPECT_EQ(adapter->backgroundColor(), QColor(0xf3f3f7));
    gui.setDark(true);
    gui.desktop.desktop.appearance = Appearance::darkAqua;
    turn();
    EXPECT_EQ(adapter->backgroundColor().name(), "#12121a");
}

TEST_F(SessionWindowTest, OverlayTakesTheKeyboardAndTheRightPasswordEndsTheSession) {
    bringUpOverlay();
    ASSERT_NE(field(), nullptr);
    EXPECT_TRUE(field()->hasActiveFocus());
    EXPECT_EQ(gui.focusedFields, QList<QObject*>({field()}));
    enter("open");
    press(*gui.window, Qt::Key_Return, "\r");
    EXPECT_FALSE(active());
}

TEST_F(SessionWindowTest, WrongPasswordIsSaidAndTheFieldEmptiedAndFocused) {
    bringUpOverlay();
    enter("shut");
    clickOn("Unlock");
    EXPECT_TRUE(active());
    EXPECT_NE(item("Incorrect password"), nullptr);
    EXPECT_TRUE(field()->isEmpty());
    EXPECT_TRUE(field()->hasActiveFocus());
    enter("open");
    EXPECT_NE(item("Incorrect password"), nullptr);
    clickOn("Unlock");
    EXPECT_FALSE(active());
}

TEST_F(SessionWindowTest, CapsLockIsSaidWhileItIsOn) {
    bringUpOverlay();
    EXPECT_EQ(item("Caps Lock is on"), nullptr);
    gui.desktop.keyboardLocks.setCapsLockOn(true);
    turn();
    EXPECT_NE(item("Caps Lock is on"), nullptr);
    EXPECT_TRUE(field()->hasActiveFocus());
    gui.desktop.keyboardLocks.setCapsLockOn(false);
    turn();
    EXPECT_EQ(item("Caps Lock is on"), nullptr);
}

TEST_F(SessionWindowTest, UnlockPressedWithAKeyGivesTheFocusBackToTheField) {
    bringUpOverlay();
    enter("shut");
    press(*gui.window, Qt::Key_Tab, "\t");
    EXPECT_FALSE(field()->hasActiveFocus());
    press(*gui.window, Qt::Key_Space, " ");
    turn();
    EXPECT_NE(item("Incorrect password"), nullptr);
    EXPECT_TRUE(field()->hasActiveFocus());
}

TEST_F(SessionWindowTest, UnlockIsOffWhileTheFieldIsEmpty) {
    bringUpOverlay();
    EXPECT_FALSE(item("Unlock")->isEnabled());
    enter("x");
    EXPECT_TRUE(item("Unlock")->isEnabled());
}

TEST_F(SessionWindowTest, ReturnInTheEmptyFieldAuthenticates) {
    bringUpOverlay();
    press(*gui.window, Qt::Key_Return, "\r");
    turn();
    EXPECT_NE(item("Incorrect password"), nullptr);
}

TEST_F(SessionWindowTest, CancelFadesTheOverlayOutAndTheNextOneWorksAgain) {
    bringUpOverlay();
    enter("half");
    clickOn("Cancel");
    EXPECT_FALSE(adapter->overlayPresented());
    EXPECT_TRUE(adapter->overlayVisible());
    EXPECT_EQ(gui.focusedFields.size(), 2);
    EXPECT_EQ(gui.focusedFields.last(), nullptr);
    EXPECT_TRUE(waitUntil([this] { return !adapter->overlayVisible(); }));
    bringUpOverlay();
    EXPECT_TRUE(field()->hasActiveFocus());
    EXPECT_TRUE(field()->isEmpty());
    EXPECT_EQ(gui.focusedFields.size(), 3);
    EXPECT_EQ(gui.focusedFields.last(), field());
    enter("open");
    press(*gui.window, Qt::Key_Return, "\r");
    EXPECT_FALSE(active());
}

TEST_F(SessionWindowTest, ClickOnTheBackdropDismissesAndOnThePanelDoesNot) {
    bringUpOverlay();
    clickOn("Exit Tapalong");
    EXPECT_TRUE(adapter->overlayPresented());
    click(*gui.window, {10, 400});
    turn();
    EXPECT_FALSE(adapter->overlayPresented());
    EXPECT_TRUE(active());
}

TEST_F(SessionWindowTest, PanelHasALightEdgeAndAShadowAroundItButNotUnderIt) {
    bringUpOverlay();
    const auto* title = item("Exit Tapalong");
    ASSERT_NE(title, nullptr);
    const auto* panel = title->parentItem()->parentItem();
    const QRect area = panel->mapRectToScene({0, 0, panel->width(), panel->height()}).toRect();
    const auto* screen = panel->parentItem();
    ASSERT_TRUE(waitUntil([screen] { return screen->opacity() == 1; }));
    const QImage shown = gui.window->grabWindow();
    const auto light = [&shown](int x, int y) { return shown.pixelColor(x, y).lightness(); };
    const int row = area.top() + 20;    // above what stands in the panel, and behind it
    const int inside = area.left() + 4; // the edge may lie on half a pixel
    EXPECT_GT(std::max(light(area.left(), row), light(area.left() + 1, row)), light(inside, row) + 10);
    for (int x = inside; x < area.right() - 4; ++x) {
        ASSERT_EQ(shown.pixel(x, row), shown.pixel(inside, row)) << x;
    }
    EXPECT_LT(light(area.left() - 4, row), light(area.left() - 15, row));
    EXPECT_LT(light(area.left() - 15, row), light(area.left() - 100, row));
}

TEST_F(SessionWindowTest, EscapeDoesNothing) {
    bringUpOverlay();
    press(*gui.window, Qt::Key_Escape, "\x1b");
    turn();
    EXPECT_TRUE(adapter->overlayPresented());
}

TEST_F(SessionWindowTest, FingerprintButtonWaitsAndAMissMovesTheFocusToTheField) {
    EXPECT_EQ(item("Use Touch ID"), nullptr);
    gui.app.settings().useTouchID.set(true);
    gui.desktop.biometrics.available = true;
    bringUpOverlay();
    ASSERT_NE(item("Use Touch ID"), nullptr);
    EXPECT_FALSE(item("Use Touch ID")->isEnabled());
    EXPECT_FALSE(field()->hasActiveFocus());
    gui.desktop.biometrics.reply(false, BiometricError{-1, "no match"});
    gui.desktop.time.drain();
    turn();
    EXPECT_TRUE(item("Use Touch ID")->isEnabled());
    EXPECT_TRUE(field()->hasActiveFocus());
    EXPECT_NE(item("no match"), nullptr);
}

TEST_F(SessionWindowTest, TwoQuickClicksOnTheFingerprintButtonAskOnce) {
    gui.app.settings().useTouchID.set(true);
    bringUpOverlay();
    gui.desktop.biometrics.available = true;
    auto* button = item("Use Touch ID");
    ASSERT_NE(button, nullptr);
    const auto middle = button->mapToScene({button->width() / 2, button->height() / 2});
    click(*gui.window, middle);
    click(*gui.window, middle);
    EXPECT_EQ(gui.desktop.biometrics.pendingCount(), 1U);
}

TEST_F(SessionWindowTest, FingerprintIsNotOfferedWhenSwitchedOff) {
    bringUpOverlay();
    EXPECT_EQ(item("Use Touch ID"), nullptr);
    EXPECT_EQ(item("or"), nullptr);
}

} // namespace tapalong
