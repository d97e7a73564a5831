#include "clips/Recipe.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tapalong::clips {

namespace {

double steady(double /*seconds*/) {
    return 1.0;
}

/// A hump from 0 over 1 back to 0 between `from` and `to`, and 0 outside.
double hump(double seconds, double from, double to) {
    if (seconds <= from || seconds >= to) {
        return 0.0;
    }
    return std::sin(std::numbers::pi * (seconds - from) / (to - from));
}

/// A bubble's pitch climbs as it shrinks towards the surface.
double bubblePitch(double seconds) {
    return 340.0 * std::exp(std::min(seconds, 0.07) * 16.0);
}

/// Two syllables, the second higher: rib-bit.
double ribbitPitch(double seconds) {
    return seconds < 0.13 ? 150.0 + 250.0 * seconds : 185.0 + 300.0 * (seconds - 0.13);
}

double ribbitLoudness(double seconds) {
    const double croak = 0.55 - 0.45 * std::cos(2.0 * std::numbers::pi * 42.0 * seconds);
    return croak * (0.8 * hump(seconds, 0.0, 0.12) + hump(seconds, 0.135, 0.29));
}

/// A spring that was let go: the pitch swings around a slow rise, ever less.
double boingPitch(double seconds) {
    const double swing = std::exp(-seconds / 0.16) * std::sin(2.0 * std::numbers::pi * 11.0 * seconds);
    return (185.0 + 130.0 * seconds) * (1.0 + 0.32 * swing);
}

} // namespace

const std::vector<Recipe>& allRecipes() {
    static const std::vector<Recipe> recipes = {
        {"Tink",
         0.12,
         0.002,
         0.03,
         [](double) { return 1568.0; },
         steady,
         {{1.0, 1.0, 0.030}, {2.76, 0.25, 0.012}, {0.5, 0.2, 0.020}}},
        {"Pop", 0.10, 0.003, 0.03, bubblePitch, steady, {{1.0, 1.0, 0.035}, {2.0, 0.12, 0.020}}},
        {"Frog",
         0.30,
         0.004,
         0.02,
         ribbitPitch,
         ribbitLoudness,
         {{1.0, 0.5, 9.0, 0.0},
          {2.0, 0.7, 9.0, 0.1},
          {3.0, 0.9, 9.0, 0.35},
          {4.0, 1.0, 9.0, 0.75},
          {5.0, 0.7, 9.0, 0.25},
          {6.0, 0.35, 9.0, 0.9},
          {8.0, 0.12, 9.0, 0.6}}},
        {"Funk",
         0.36,
         0.004,
         0.06,
         boingPitch,
         steady,
         {{1.0, 1.0, 0.140}, {2.0, 0.45, 0.100}, {3.0, 0.25, 0.070}, {5.0, 0.10, 0.040}}},
        {"Glass",
         0.40,
         0.003,
         0.10,
         [](double) { return 1046.5; },
         steady,
         {{1.0, 1.0, 0.130}, {2.32, 0.35, 0.080}, {4.25, 0.12, 0.035}}},
        {"Morse",
         0.10,
         0.006,
         0.008,
         [](double) { return 660.0; },
         steady,
         {{1.0, 1.0, 9.0}, {2.0, 0.10, 9.0}, {3.0, 0.12, 9.0}},
         0.6},
    };
    return recipes;
}

} // namespace tapalong::clips
