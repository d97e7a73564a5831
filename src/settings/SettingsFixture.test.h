#pragma once

#include "app/ApplicationDelegate.h"
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

/// Stands in for the application delegate for as long as it lives, and writes down what is asked of it.
class RecordingDelegate final : public ApplicationDelegate {
public:
    explicit RecordingDelegate(simulated::EffectLog& effects) : m_effects(effects) { setShared(this); }
    ~RecordingDelegate() { setShared(nullptr); }

    void registerGlobalShortcut() override { m_effects.record("delegate.registerGlobalShortcut"); }
    void showSessionWindow() override { m_effects.record("delegate.showSessionWindow"); }
    void dismissSessionWindow() override { m_effects.record("delegate.dismissSessionWindow"); }

private:
    simulated::EffectLog& m_effects;
};

/// A simulated desktop with a settings store on it, and no application yet.
struct SettingsFixture : testing::Test {
    simulated::SimulatedPlatform world;
    Platform platform = world.platform();
    SessionSettings settings{world.defaults, &world.desktop};
};

} // namespace tapalong
