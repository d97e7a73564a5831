#include "platform/simulated/SimulatedDesktop.h"

#include <gtest/gtest.h>

namespace tapalong::simulated {
namespace {

struct Content final : HostedView {
    int appearances = 0;
    int disappearances = 0;

    void onAppear() override { ++appearances; }
    void onDisappear() override { ++disappearances; }
};

struct Responder final : WindowResponder {
    [[nodiscard]] bool canBecomeKey() const override { return true; }
    [[nodiscard]] bool canBecomeMain() const override { return true; }
    void keyDown(const InputEvent&) override {}
    void flagsChanged(const InputEvent&) override {}
};

struct SimulatedDesktopTest : testing::Test {
    EffectLog effects;
    SimulatedDesktop desktop{effects};
    Responder responder;
    std::shared_ptr<Content> content = std::make_shared<Content>();

    std::shared_ptr<Window> makeWindow() {
        auto window =
            desktop.makeWindow({0, 0, 800, 600}, StyleMask::borderless, BackingStore::buffered, false, responder);
        window->setContentView(content);
        return window;
    }
};

TEST_F(SimulatedDesktopTest, AWindowTellsItsContentWhenItComesAndGoes) {
    const auto window = makeWindow();
    EXPECT_EQ(content->appearances, 0);
    window->makeKeyAndOrderFront();
    window->makeKeyAndOrderFront();
    EXPECT_EQ(content->appearances, 1);
    window->orderOut();
    window->orderOut();
    EXPECT_EQ(content->disappearances, 1);
}

TEST_F(SimulatedDesktopTest, AWindowThatIsLetGoWhileShownTakesItsContentDown) {
    auto window = makeWindow();
    window->makeKeyAndOrderFront();
    window.reset();
    EXPECT_EQ(content->disappearances, 1);
    EXPECT_TRUE(desktop.windows().empty());
}

TEST_F(SimulatedDesktopTest, OnlyAShownWindowIsFoundOnScreen) {
    const auto window = makeWindow();
    EXPECT_EQ(desktop.shownWindow(), nullptr);
    window->makeKeyAndOrderFront();
    ASSERT_EQ(desktop.shownWindow(), window);
    EXPECT_EQ(desktop.shownWindow()->contentView(), content);
    EXPECT_EQ(desktop.shownWindow()->responder(), &responder);
    window->orderOut();
    EXPECT_EQ(desktop.shownWindow(), nullptr);
}

TEST_F(SimulatedDesktopTest, ClosingTheScenesWindowHidesItAndKeepsItInTheList) {
    desktop.closeScene();
    EXPECT_FALSE(desktop.isSceneOpen());
    desktop.openScene({.title = "Options", .identifier = "options", .content = content});
    EXPECT_TRUE(desktop.isSceneOpen());
    EXPECT_EQ(content->appearances, 1);
    desktop.closeScene();
    EXPECT_FALSE(desktop.isSceneOpen());
    EXPECT_EQ(content->disappearances, 1);
    ASSERT_EQ(desktop.windows().size(), 1U);
    EXPECT_EQ(desktop.windows().front()->title(), "Options");
}

TEST_F(SimulatedDesktopTest, WindowsAreListedOldestFirstHiddenOnesIncluded) {
    desktop.openScene({.title = "Options", .identifier = "options", .content = content});
    const auto first = makeWindow();
    const auto second = makeWindow();
    second->makeKeyAndOrderFront();
    const auto windows = desktop.windows();
    ASSERT_EQ(windows.size(), 3U);
    EXPECT_EQ(windows[0]->title(), "Options");
    EXPECT_EQ(windows[1], first);
    EXPECT_EQ(windows[2], second);
}

TEST_F(SimulatedDesktopTest, ActivationBringsTheApplicationToTheFront) {
    desktop.active = false;
    desktop.activateIgnoringOtherApps();
    EXPECT_TRUE(desktop.isActive());
    desktop.setPresentationOptions(Presentation::lockdown);
    EXPECT_EQ(desktop.presentationOptions, 0x1FAU);
    EXPECT_EQ(effects.all(), (std::vector<std::string>{"app.activate", "app.presentationOptions 506"}));
}

TEST_F(SimulatedDesktopTest, TheAnswersAreWhatTheTestSets) {
    desktop.trusted = false;
    EXPECT_FALSE(desktop.isProcessTrusted());
    EXPECT_FALSE(desktop.isProcessTrustedWithPrompt());
    EXPECT_EQ(effects.all(), std::vector<std::string>{"accessibility.prompt"}) << "only the question is an effect";
    desktop.appearance = Appearance::darkAqua;
    EXPECT_EQ(desktop.effectiveAppearance(), Appearance::darkAqua);
    desktop.mainScreen.reset();
    EXPECT_EQ(desktop.mainScreenFrame(), std::nullopt);
    desktop.mouse = {3, 4};
    EXPECT_EQ(desktop.mouseLocation(), (Point{3, 4}));
}

TEST_F(SimulatedDesktopTest, EverythingDoneToAWindowIsRecorded) {
    const auto window = makeWindow();
    window->setLevel(screenSaverWindowLevel);
    window->setCollectionBehavior(Collection::stationary);
    window->setOpaqueOnBlack();
    window->setIgnoresMouseEvents(false);
    window->setAcceptsMouseMovedEvents(true);
    window->setFrame({1, 2, 30, 40}, true);
    window->makeKeyAndOrderFront();
    window->orderFrontRegardless();
    window->orderOut();
    EXPECT_EQ(effects.all(),
              (std::vector<std::string>{"window.make 0,0 800x600 style=0 backing=2 defer=no", "window.contentView",
                                        "window.level 1000", "window.collectionBehavior 16", "window.opaqueOnBlack",
                                        "window.ignoresMouseEvents no", "window.acceptsMouseMovedEvents yes",
                                        "window.frame 1,2 30x40 display=yes", "window.makeKeyAndOrderFront",
                                        "window.orderFrontRegardless", "window.orderOut"}));
}

} // namespace
} // namespace tapalong::simulated
