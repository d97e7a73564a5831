#include "clips/Synthesis.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tapalong::clips {

namespace {

/// Half a cosine from 0 to 1: a straight ramp has corners, which are heard as ticks.
double ramp(double seconds, double rampSeconds) {
    const double share = std::clamp(seconds / rampSeconds, 0.0, 1.0);
    return 0.5 - 0.5 * std::cos(std::numbers::pi * share);
}

double timbre(const Recipe& recipe, double seconds, double turns) {
    double sum = 0.0;
    for (const Partial& partial : recipe.partials) {
        sum += partial.gain * std::exp(-seconds / partial.decaySeconds) *
               std::sin(2.0 * std::numbers::pi * (partial.ratio * turns + partial.phase));
    }
    return sum;
}

std::vector<double> waveform(const Recipe& recipe) {
    std::vector<double> samples(static_cast<std::size_t>(std::lround(recipe.seconds * sampleRate)));
    const double end = static_cast<double>(samples.size() - 1) / sampleRate;
    double turns = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double seconds = static_cast<double>(i) / sampleRate;
        samples[i] = timbre(recipe, seconds, turns) * recipe.loudness(seconds) * ramp(seconds, recipe.attackSeconds) *
                     ramp(end - seconds, recipe.releaseSeconds);
        turns += recipe.pitch(seconds) / sampleRate;
    }
    return samples;
}

} // namespace

std::vector<std::int16_t> synthesise(const Recipe& recipe) {
    const std::vector<double> wave = waveform(recipe);
    double peak = 0.0;
    for (const double sample : wave) {
        peak = std::max(peak, std::abs(sample));
    }
    std::vector<std::int16_t> samples;
    samples.reserve(wave.size());
    for (const double sample : wave) {
        samples.push_back(static_cast<std::int16_t>(std::lround(sample / peak * recipe.level * peakLevel * 32'767.0)));
    }
    return samples;
}

} // namespace tapalong::clips
