#include "platform/desktop/QtWindows.h"

#include "platform/NotificationCenter.h"
#include "platform/desktop/DesktopTest.test.h"
#include "platform/desktop/QtApplication.h"
#include "platform/desktop/QtScreens.h"
#include "platform/desktop/StandIns.test.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QQuickItem>
#include <QScreen>

namespace tapalong {

namespace {

constexpr int contentHeight = 650;

struct RecordingView final : HostedView {
    void onAppear() override { calls += 'a'; }
    void onDisappear() override { calls += 'd'; }

    std::string calls;
};

struct RecordingResponder final : WindowResponder {
    [[nodiscard]] bool canBecomeKey() const override { return true; }
    [[nodiscard]] bool canBecomeMain() const override { return true; }
    void keyDown(const InputEvent& event) override { codes.push_back(event.keyCode); }
    void flagsChanged(const InputEvent&) override { ++flagChanges; }

    std::vector<std::int64_t> codes;
    int flagChanges = 0;
};

struct ClickCounter final : QQuickItem {
    ClickCounter() { setAcceptedMouseButtons(Qt::AllButtons); }
    void mousePressEvent(QMouseEvent*) override { ++clicks; }

    int clicks = 0;
};

class QtWindowsTest : public DesktopTest {
protected:
    [[nodiscard]] WindowTraits traits() {
        WindowTraits result;
        result.makeContent = [this](QQuickView& window, const std::shared_ptr<HostedView>& view) {
            contents.emplace_back(view);
            auto* const root = new ClickCounter;
            root->setImplicitHeight(contentHeight);
            window.setContent({}, nullptr, root);
        };
        result.takeKeyboard = [this](QWindow& window) { keyboardTakenBy.push_back(&window); };
        result.borderlessWindowMade = [this](QWindow& window) { borderless = &window; };
        result.translateKey = [](const QKeyEvent& event) {
            const bool isPress = event.type() == QEvent::KeyPress;
            return InputEvent{.type = isPress ? EventType::keyDown : EventType::flagsChanged, .keyCode = event.key()};
        };
        return result;
    }

    [[nodiscard]] std::shared_ptr<Window> makeSessionWindow() {
        const auto frame = QtScreens(notices, {}).mainScreenFrame().value();
        auto window = windows.makeWindow(frame, StyleMask::borderless, BackingStore::buffered, false, responder);
        window->setContentView(sessionView);
        window->setLevel(screenSaverWindowLevel);
        return window;
    }

    void openSettings() {
        windows.openScene({.title = "Tapalong Settings",
                           .identifier = "settings",
                           .content = settingsView,
                           .width = 500,
                           .minHeight = 600,
                           .centred = true},
                          [this] {
                              ++timesAsked;
                              return false;
                          });
    }

    /// What the window's content has seen of it.
    static int clicksAfterOneIn(QQuickView& window) {
        const QPointF place(50, 50);
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent click(type, place, window.mapToGlobal(place), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &click);
        }
        return static_cast<ClickCounter*>(window.rootObject())->clicks;
    }

    [[nodiscard]] QQuickView& settingsWindow() const { return windows.frontWindow()->quickView(); }

    NotificationCenter notices;
    std::vector<std::weak_ptr<HostedView>> contents;
    std::vector<QWindow*> keyboardTakenBy;
    QPointer<QWindow> borderless;
    RecordingResponder responder;
    std::shared_ptr<RecordingView> sessionView = std::make_shared<RecordingView>();
    std::shared_ptr<RecordingView> settingsView = std::make_shared<RecordingView>();
    int timesAsked = 0;
    QtWindows windows{traits()};
};

TEST_F(QtWindowsTest, DeclaredWindowHasItsTitleItsWidthAndTheHeightOfItsContent) {
    openSettings();
    const auto& window = settingsWindow();
    EXPECT_EQ(window.title(), "Tapalong Settings");
    EXPECT_EQ(window.width(), 500);
    EXPECT_EQ(window.minimumWidth(), 500);
    EXPECT_EQ(window.maximumWidth(), 500);
    EXPECT_EQ(window.minimumHeight(), 600);
    EXPECT_EQ(window.height(), contentHeight);
    const auto room = window.screen()->availableGeometry();
    EXPECT_EQ(window.x(), room.x() + (room.width() - 500) / 2);
    EXPECT_EQ(settingsView->calls, "a");
}

TEST_F(QtWindowsTest, ContentThatComesToWantLessRoomStillFillsItsWindow) {
    openSettings();
    auto* const content = settingsWindow().rootObject();
    content->setImplicitHeight(contentHeight - 100);
    EXPECT_EQ(content->height(), settingsWindow().height());
    EXPECT_EQ(content->width(), settingsWindow().width());
}

TEST_F(QtWindowsTest, ClosingTheDeclaredWindowHidesItAndAsksWhetherToQuit) {
    openSettings();
    auto& window = settingsWindow();
    QCloseEvent close;
    QCoreApplication::sendEvent(&window, &close);
    EXPECT_FALSE(close.isAccepted());
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(settingsView->calls, "ad");
    EXPECT_EQ(timesAsked, 1);
    ASSERT_EQ(windows.windows().size(), 1U);
    windows.windows().front()->makeKeyAndOrderFront();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(settingsView->calls, "ada");
}

TEST_F(QtWindowsTest, ClosingTheDeclaredWindowBesideAnotherAsksNothing) {
    openSettings();
    auto& window = settingsWindow();
    const auto session = makeSessionWindow();
    session->makeKeyAndOrderFront();
    QCloseEvent close;
    QCoreApplication::sendEvent(&window, &close);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(timesAsked, 0);
}

TEST_F(QtWindowsTest, SessionWindowCoversTheMainScreenOutOfTheWindowManagersReach) {
    const auto window = makeSessionWindow();
    ASSERT_NE(borderless, nullptr);
    EXPECT_TRUE(borderless->flags().testFlag(Qt::BypassWindowManagerHint));
    EXPECT_TRUE(borderless->flags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(borderless->geometry(), QGuiApplication::primaryScreen()->geometry());
    EXPECT_FALSE(borderless->isVisible());
    EXPECT_EQ(sessionView->calls, "");
}

TEST_F(QtWindowsTest, WindowOfTheScreensSizeCoversItWithOrWithoutTheFractionOfAPoint) {
    const auto window = makeSessionWindow();
    const auto screen = QGuiApplication::primaryScreen()->geometry();
    window->setFrame({0, 0, 200, 100}, true);
    EXPECT_EQ(borderless->geometry(), QRect(screen.x(), screen.y() + screen.height() - 100, 200, 100));
    for (const double fraction : {-0.5, 0.43, 0.5}) {
        window->setFrame({0, 0, screen.width() + fraction, screen.height() - fraction}, true);
        EXPECT_EQ(borderless->geometry(), screen) << fraction;
        window->setFrame({0, 0, 200, 100}, true);
    }
}

TEST_F(QtWindowsTest, HowAScreenIsCoveredIsTheDisplaySystemsMatter) {
    auto described = traits();
    std::vector<const QScreen*> covered;
    described.coverScreen = [&covered](QWindow& window, const QScreen& screen) {
        covered.push_back(&screen);
        window.setGeometry(1, 2, 3, 4);
    };
    QtWindows others(described);
    const auto frame = QtScreens(notices, {}).mainScreenFrame().value();
    const auto window = others.makeWindow(frame, StyleMask::borderless, BackingStore::buffered, false, responder);
    window->setFrame(frame, true);
    EXPECT_EQ(covered, std::vector<const QScreen*>(2, QGuiApplication::primaryScreen()));
    EXPECT_EQ(borderless->geometry(), QRect(1, 2, 3, 4));
}

TEST_F(QtWindowsTest, AFullScreenWindowOfTheCompositorIsOneAlsoOnAScreenThatAppearsLater) {
    auto described = traits();
    described.cover = Cover::fullScreen;
    QtWindows others(described);
    const auto window =
        others.makeWindow({0, 0, 200, 100}, StyleMask::borderless, BackingStore::buffered, false, responder);
    window->makeKeyAndOrderFront();
    EXPECT_EQ(borderless->visibility(), QWindow::Windowed);
    window->setFrame(QtScreens(notices, {}).mainScreenFrame().value(), true);
    EXPECT_EQ(borderless->visibility(), QWindow::FullScreen);
}

TEST_F(QtWindowsTest, WindowBehindTakesClicksExceptInLockdown) {
    openSettings();
    auto& settings = settingsWindow();
    const LightDesktop light;
    RecordingGuard guard;
    QtApplication application(windows, light, guard);
    const auto session = makeSessionWindow();
    session->makeKeyAndOrderFront();
    EXPECT_EQ(clicksAfterOneIn(settings), 1);
    application.setPresentationOptions(Presentation::lockdown);
    EXPECT_EQ(clicksAfterOneIn(settings), 1) << "it may lie on a second screen, where the child can reach it";
    session->orderOut();
    EXPECT_EQ(clicksAfterOneIn(settings), 2) << "no window is in front of it";
    session->makeKeyAndOrderFront();
    application.setPresentationOptions(Presentation::none);
    EXPECT_EQ(clicksAfterOneIn(settings), 3);
}

TEST_F(QtWindowsTest, SessionWindowComesUpWithTheKeyboardAndIgnoresCloseRequests) {
    const auto window = makeSessionWindow();
    window->makeKeyAndOrderFront();
    window->orderFrontRegardless();
    EXPECT_EQ(sessionView->calls, "a");
    EXPECT_EQ(keyboardTakenBy, std::vector<QWindow*>{borderless});
    QCloseEvent close;
    QCoreApplication::sendEvent(borderless, &close);
    EXPECT_TRUE(borderless->isVisible());
    window->orderOut();
    window->orderOut();
    EXPECT_EQ(sessionView->calls, "ad");
}

TEST_F(QtWindowsTest, WindowLetGoOfIsHiddenAtOnceAndLeavesNothingBehind) {
    openSettings();
    auto window = makeSessionWindow();
    window->makeKeyAndOrderFront();
    EXPECT_EQ(windows.windows().size(), 2U);
    window.reset();
    EXPECT_EQ(sessionView->calls, "ad");
    ASSERT_NE(borderless, nullptr);
    EXPECT_FALSE(borderless->isVisible());
    EXPECT_EQ(windows.windows().size(), 1U);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(borderless, nullptr);
    sessionView.reset();
    EXPECT_TRUE(contents.back().expired());
}

TEST_F(QtWindowsTest, KeysThatNothingTookReachTheResponder) {
    const auto window = makeSessionWindow();
    window->makeKeyAndOrderFront();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    press.ignore();
    QCoreApplication::sendEvent(borderless, &press);
    EXPECT_EQ(responder.codes, std::vector<std::int64_t>{Qt::Key_A});
}

TEST_F(QtWindowsTest, ActivationGivesTheKeyboardToTheWindowOfTheHighestLevel) {
    openSettings();
    const LightDesktop light;
    RecordingGuard guard;
    QtApplication application(windows, light, guard);
    application.activateIgnoringOtherApps();
    EXPECT_EQ(keyboardTakenBy.back()->title(), "Tapalong Settings");
    const auto window = makeSessionWindow();
    window->makeKeyAndOrderFront();
    windows.windows().front()->makeKeyAndOrderFront();
    application.activateIgnoringOtherApps();
    EXPECT_EQ(keyboardTakenBy.back(), borderless);
    EXPECT_EQ(application.effectiveAppearance(), Appearance::aqua);
    application.setPresentationOptions(Presentation::lockdown);
    EXPECT_EQ(application.presentationOptions(), 0x1FAU);
}

TEST_F(QtWindowsTest, PointsGrowUpwardsFromTheBottomLeftOfTheMainScreen) {
    const auto screen = QGuiApplication::primaryScreen()->geometry();
    std::optional<QPointF> pointer = QPointF(screen.topLeft()) + QPointF(10.5, 20);
    const QtScreens screens(notices, {.pointer = [&] { return pointer; }});
    EXPECT_EQ(screens.mainScreenFrame(), (Rect{0, 0, 1.0 * screen.width(), 1.0 * screen.height()}));
    EXPECT_EQ(screens.mouseLocation(), (Point{10.5, screen.height() - 20.0}));
    pointer.reset();
    EXPECT_FALSE(screens.mainScreenFrame()->contains(screens.mouseLocation()));
    EXPECT_EQ(QtScreens::toQt({0, 0, 100, 50}), QRect(screen.x(), screen.y() + screen.height() - 50, 100, 50));
}

TEST_F(QtWindowsTest, PointsHaveTheFractionThatTheToolkitRoundsAway) {
    const auto screen = QGuiApplication::primaryScreen()->geometry();
    const QSizeF exact(screen.width() - 0.25, screen.height() + 0.5);
    const QPointF lastPixel(screen.x() + exact.width() - 0.5, screen.y());
    const QtScreens screens(notices,
                            {.pointer = [&] { return lastPixel; }, .size = [&](const QScreen&) { return exact; }});
    EXPECT_EQ(screens.mainScreenFrame(), (Rect{0, 0, exact.width(), exact.height()}));
    EXPECT_EQ(screens.mouseLocation(), (Point{exact.width() - 0.5, exact.height()}));
    EXPECT_TRUE(screens.mainScreenFrame()->contains(screens.mouseLocation()));
}

TEST_F(QtWindowsTest, EveryChangeOfTheMainScreenIsSaid) {
    int said = 0;
    const auto observer = notices.addObserver(screenParametersChangedNotification, [&said] { ++said; });
    auto* const screen = QGuiApplication::primaryScreen();
    {
        const QtScreens screens(notices, {});
        emit screen->geometryChanged(screen->geometry());
        EXPECT_EQ(said, 1);
        emit qGuiApp->primaryScreenChanged(nullptr);
        EXPECT_EQ(said, 2);
        emit screen->geometryChanged(screen->geometry());
        EXPECT_EQ(said, 3) << "watched once, not once for each change";
    }
    emit screen->geometryChanged(screen->geometry());
    EXPECT_EQ(said, 3);
    notices.removeObserver(observer);
}

} // namespace

} // namespace tapalong
