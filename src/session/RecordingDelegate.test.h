#pragma once

#include "platform/simulated/EffectLog.h"
#include "session/ApplicationDelegate.h"

namespace tapalong {

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

} // namespace tapalong
