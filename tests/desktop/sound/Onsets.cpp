#include "Onsets.h"

#include <algorithm>
#include <utility>

namespace tapalong::test {

namespace {

constexpr std::size_t covered = std::size_t{48} * 3;
constexpr std::size_t compared = std::size_t{48} * 20;
constexpr double tolerance = 0.05;

double energyOf(const std::vector<float>& clip, std::size_t from, std::size_t to) {
    double energy = 0.0;
    for (std::size_t i = from; i < to; ++i) {
        energy += static_cast<double>(clip[i]) * clip[i];
    }
    return energy;
}

/// The energy of the difference; gives up once it is above `limit`, since most places differ at their first samples.
double differingEnergy(const std::vector<float>& recording, std::size_t start, const std::vector<float>& clip,
                       std::size_t from, std::size_t to, double limit) {
    double energy = 0.0;
    for (std::size_t i = from; i < to && energy <= limit; ++i) {
        const double difference = static_cast<double>(recording[start + i]) - clip[i];
        energy += difference * difference;
    }
    return energy;
}

} // namespace

double difference(const std::vector<float>& recording, std::size_t start, const std::vector<float>& clip,
                  std::size_t from, std::size_t to) {
    const double energy = energyOf(clip, from, to);
    return differingEnergy(recording, start, clip, from, to, 1e9) / energy;
}

std::vector<std::size_t> findOnsets(const std::vector<float>& recording, const std::vector<float>& clip,
                                    std::size_t apart) {
    constexpr std::size_t end = covered + compared;
    const double limit = tolerance * energyOf(clip, covered, end);
    std::vector<std::pair<double, std::size_t>> candidates;
    for (std::size_t start = 0; start + end <= recording.size(); ++start) {
        const double energy = differingEnergy(recording, start, clip, covered, end, limit);
        if (energy <= limit) {
            candidates.emplace_back(energy, start);
        }
    }
    // The best ones first: a tone resembles itself one wave later, but not as well.
    std::sort(candidates.begin(), candidates.end());
    std::vector<std::size_t> onsets;
    for (const auto& candidate : candidates) {
        const std::size_t place = candidate.second;
        const bool near = std::any_of(onsets.begin(), onsets.end(), [&](std::size_t onset) {
            return std::max(onset, place) - std::min(onset, place) < apart;
        });
        if (!near) {
            onsets.push_back(place);
        }
    }
    std::sort(onsets.begin(), onsets.end());
    return onsets;
}

} // namespace tapalong::test
