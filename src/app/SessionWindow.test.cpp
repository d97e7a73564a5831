#include "app/SessionWindow.h"

#include "settings/SettingsFixture.test.h"

namespace tapalong {
namespace {

struct SessionWindowTest : SettingsFixture {
    SessionWindow window{{10, 20, 300, 200}, StyleMask::borderless, BackingStore::buffered, false, platform};
};

TEST_F(SessionWindowTest, ItHandsItsArgumentsOnAndDoesNothingElse) {
    EXPECT_EQ(world.effects.all(), Effects{"window.make 10,20 300x200 style=0 backing=2 defer=no"});
}

TEST_F(SessionWindowTest, ItCanBecomeKeyAndMain) {
    EXPECT_TRUE(window.canBecomeKey());
    EXPECT_TRUE(window.canBecomeMain());
}

TEST_F(SessionWindowTest, UnhandledKeysEndInIt) {
    EXPECT_TRUE(effectsOf(world, [this] {
                    window.keyDown(simulated::keyEvent(0, 0, "a"));
                    window.flagsChanged(
                        simulated::keyEvent(56, Modifier::shift, std::nullopt, EventType::flagsChanged));
                    world.time.drain();
                }).empty());
}

TEST_F(SessionWindowTest, ItAnswersForTheWindowOnTheDesktop) {
    window.window().makeKeyAndOrderFront();
    ASSERT_NE(world.desktop.shownWindow(), nullptr);
    EXPECT_EQ(world.desktop.shownWindow()->responder(), &window);
}

} // namespace
} // namespace tapalong
