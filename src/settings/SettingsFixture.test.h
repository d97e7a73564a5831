#pragma once

#include "platform/simulated/SimulatedPlatform.h"
#include "settings/SessionSettings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tapalong {

/// Lines of the effect log, in order.
using Effects = std::vector<std::string>;

/// Runs `action` and tells what it did to the desktop.
template <class Action> Effects effectsOf(simulated::SimulatedPlatform& world, Action action) {
    world.effects.clear();
    action();
    return world.effects.all();
}

/// A simulated desktop with a settings store on it, and no application yet.
struct SettingsFixture : testing::Test {
    simulated::SimulatedPlatform world;
    Platform platform = world.platform();
    SessionSettings settings{world.defaults, &world.desktop};
};

} // namespace tapalong
