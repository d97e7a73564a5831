#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace tapalong::bench {

/// CPU milliseconds per key.
struct Costs {
    double median = 0;
    double slow = 0; ///< 95th percentile
    double dearest = 0;
};

inline Costs costsOf(std::vector<double> samples) {
    std::sort(samples.begin(), samples.end());
    const auto at = [&](double part) {
        return samples[std::min(samples.size() - 1,
                                static_cast<std::size_t>(part * static_cast<double>(samples.size())))];
    };
    return {at(0.5), at(0.95), samples.back()};
}

inline void printCostsHeader() {
    std::printf("CPU ms per key                 length   keys     median    95 in 100    dearest\n");
}

inline void printCosts(const char* what, std::size_t length, std::size_t keys, const Costs& costs) {
    std::printf("%-28s %8zu %6zu %10.2f %12.2f %10.2f\n", what, length, keys, costs.median, costs.slow, costs.dearest);
    std::fflush(stdout);
}

} // namespace tapalong::bench
