// What the event tap's callback costs per event: it stands between the keyboard and every program, so a slow one would
// be felt everywhere. The simulated desktop hands the events over; what the callback posts for later is not counted.

#include "lockdown/KioskManager.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "settings/SessionSettings.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

namespace tapalong {
namespace {

void addPercentiles(benchmark::State& state, std::vector<double>& nanoseconds) {
    std::sort(nanoseconds.begin(), nanoseconds.end());
    state.counters["median_ns"] = nanoseconds.at(nanoseconds.size() / 2);
    state.counters["p99_ns"] = nanoseconds.at(nanoseconds.size() * 99 / 100);
}

void tapCallback(benchmark::State& state, const InputEvent& event) {
    simulated::SimulatedPlatform world;
    SessionSettings settings(world.defaults, &world.desktop);
    settings.kioskMode.set(true);
    const auto kiosk = std::make_shared<KioskManager>(settings, world.platform());
    kiosk->activate([](const KeyEvent& key) { benchmark::DoNotOptimize(&key); });
    std::vector<double> nanoseconds;
    nanoseconds.reserve(static_cast<std::size_t>(state.max_iterations));
    for (auto _ : state) {
        const auto before = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(world.send(event));
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - before;
        state.SetIterationTime(took.count());
        nanoseconds.push_back(took.count() * 1e9);
        world.time.drain();
        world.effects.clear();
    }
    addPercentiles(state, nanoseconds);
    kiosk->deactivate();
}

using simulated::keyEvent;

BENCHMARK_CAPTURE(tapCallback, letter, keyEvent(0, 0, "a"))->UseManualTime();
BENCHMARK_CAPTURE(tapCallback, several_code_points, keyEvent(0, 0, "\u0928\u094D\u0926\u0940"))->UseManualTime();
BENCHMARK_CAPTURE(tapCallback, function_key, keyEvent(122, Modifier::function))->UseManualTime();
BENCHMARK_CAPTURE(tapCallback, chord, keyEvent(12, Modifier::command, "q"))->UseManualTime();
BENCHMARK_CAPTURE(tapCallback, modifier_key, keyEvent(56, Modifier::shift, std::nullopt, EventType::flagsChanged))
    ->UseManualTime();
BENCHMARK_CAPTURE(tapCallback, key_release, keyEvent(0, 0, "a", EventType::keyUp))->UseManualTime();

} // namespace
} // namespace tapalong
