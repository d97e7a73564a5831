#include "platform/simulated/SimulatedPlatform.h"

#include "platform/MainQueue.h"
#include "platform/StandardOutput.h"

#include <gtest/gtest.h>

namespace tapalong::simulated {
namespace {

TEST(SimulatedPlatform, KeysGoToWhoeverHasTheKeyboard) {
    SimulatedPlatform world;
    EXPECT_EQ(world.send(keyEvent(0, 0, "a")), SimulatedInput::Receiver::ownWindow);
    world.desktop.active = false;
    EXPECT_EQ(world.send(keyEvent(0, 0, "a")), SimulatedInput::Receiver::otherApplication);
}

TEST(SimulatedPlatform, TheApplicationObjectCanBeLeftOut) {
    SimulatedPlatform world;
    EXPECT_EQ(world.platform().application, &world.desktop);
    EXPECT_EQ(world.platform(false).application, nullptr);
}

TEST(SimulatedPlatform, AllServicesWriteIntoOneLog) {
    SimulatedPlatform world;
    const auto platform = world.platform();
    platform.standardOutput.print("one");
    platform.application->activateIgnoringOtherApps();
    platform.notificationCenter.post("three");
    platform.mainQueue.asyncAfter(4, [] {});
    EXPECT_EQ(world.effects.all(),
              (std::vector<std::string>{"print one", "app.activate", "notification.post three", "queue.after 4"}));
}

TEST(SimulatedPlatform, AKeyEventCarriesItsText) {
    const auto typed = keyEvent(11, Modifier::shift, "B");
    EXPECT_EQ(typed.type, EventType::keyDown);
    EXPECT_EQ(typed.keyCode, 11);
    EXPECT_EQ(typed.modifierFlags, Modifier::shift);
    EXPECT_EQ(typed.text(), "B");
    EXPECT_EQ(keyEvent(56, Modifier::shift, std::nullopt, EventType::flagsChanged).text(), std::nullopt);
}

} // namespace
} // namespace tapalong::simulated
