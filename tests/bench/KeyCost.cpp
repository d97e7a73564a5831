// Types into the session that has the keyboard of this display, and prints what a key costs the program there: CPU time
// of all its threads, from the key to rest, at each of the given lengths of text, and then where the text is cut.
//
// usage: key_cost PROCESS LIMIT LENGTH...

#include "Costs.h"
#include "Process.h"
#include "TestKeyboard.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>

namespace tapalong::bench {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t warmUp = 20;
constexpr std::size_t measured = 200;
constexpr std::size_t aroundCut = 6;
constexpr auto untilRest = 40ms; ///< long enough for the dearest key, short enough for a table in a few minutes

/// One character per key: one in ten an emoji (the Shift key types one), one in nine a blank, else a letter.
class Typist {
public:
    void type() {
        constexpr std::uint8_t shift = 42;
        constexpr std::uint8_t space = 57;
        constexpr std::array<std::uint8_t, 26> letters{16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 30, 31, 32,
                                                       33, 34, 35, 36, 37, 38, 44, 45, 46, 47, 48, 49, 50};
        const auto roll = m_random() % 90;
        m_keyboard.tap(roll < 9 ? shift : roll < 19 ? space : letters.at(m_random() % letters.size()));
        ++m_typed;
    }

    /// At a pace that is no child's, until the text is so long.
    void fill(std::size_t length) {
        while (m_typed < length) {
            type();
            if (m_typed % 20 == 0) {
                std::this_thread::sleep_for(20ms);
            }
        }
    }

private:
    TestKeyboard m_keyboard;
    std::mt19937 m_random{7}; // NOLINT(cert-msc51-cpp): the same text in every run
    std::size_t m_typed = 0;
};

void waitForRest(const std::string& process) {
    constexpr double blinking = 5; // CPU milliseconds that are no work left over
    double spent = 0;
    do {
        const double before = cpuMilliseconds(process);
        std::this_thread::sleep_for(300ms);
        spent = cpuMilliseconds(process) - before;
    } while (spent > blinking);
}

Costs measure(Typist& typist, const std::string& process, std::size_t unmeasured, std::size_t keys) {
    std::vector<double> samples;
    double before = cpuMilliseconds(process);
    for (std::size_t i = 0; i < unmeasured + keys; ++i) {
        typist.type();
        std::this_thread::sleep_for(untilRest);
        const double now = cpuMilliseconds(process);
        if (i >= unmeasured) {
            samples.push_back(now - before);
        }
        before = now;
    }
    return costsOf(std::move(samples));
}

/// The dearest of the keys around the one that passes the limit.
double measureCut(Typist& typist, const std::string& process, std::size_t limit) {
    typist.fill(limit - aroundCut);
    waitForRest(process);
    return measure(typist, process, 0, 2 * aroundCut).dearest;
}

void run(const std::string& process, std::size_t limit, const std::vector<std::size_t>& lengths) {
    Typist typist;
    std::vector<double> medians;
    std::vector<double> memory;
    printCostsHeader();
    for (const std::size_t length : lengths) {
        typist.fill(length);
        waitForRest(process);
        const Costs costs = measure(typist, process, warmUp, measured);
        printCosts("the program in a session", length, measured, costs);
        medians.push_back(costs.median);
        memory.push_back(residentMebibytes(process));
    }
    std::printf("key at %zu / key at %zu %33.2f\n", lengths.back(), lengths.front(), medians.back() / medians.front());
    std::printf("memory of the program, MiB, at %zu: %.1f, at %zu: %.1f\n", lengths.front(), memory.front(),
                lengths.back(), memory.back());
    const double cut = measureCut(typist, process, limit);
    std::printf("the key that cuts the text at %zu, ms: %.2f, in keys: %.1f\n", limit, cut, cut / medians.back());
}

} // namespace
} // namespace tapalong::bench

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fputs("usage: key_cost PROCESS LIMIT LENGTH...\n", stderr);
        return EXIT_FAILURE;
    }
    std::vector<std::size_t> lengths;
    for (int i = 3; i < argc; ++i) {
        lengths.push_back(std::stoul(argv[i]));
    }
    tapalong::bench::run(argv[1], std::stoul(argv[2]), lengths);
    return EXIT_SUCCESS;
}
