// A child that leans on the keyboard: ten keys held down, and thirty more a second. Prints a line for each period, by
// which one sees whether anything queues up or grows. Before that the text is filled beyond its limit, with each key in
// each colour: text and pictures that are still wanting would look like a leak.
//
// usage: held_keys PROCESS LIMIT PERIODS SECONDS

#include "Costs.h"
#include "Process.h"
#include "ScreenWatch.h"
#include "TestKeyboard.h"

#include <linux/input-event-codes.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <utility>

namespace tapalong::bench {
namespace {

using namespace std::chrono_literals;
using Clock = ScreenWatch::Clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::array<std::uint8_t, 10> held{KEY_A, KEY_S, KEY_D, KEY_F, KEY_G, KEY_H, KEY_J, KEY_K, KEY_L, KEY_B};
constexpr std::array<std::uint8_t, 8> typed{KEY_Q, KEY_W, KEY_E, KEY_R, KEY_T, KEY_Y, KEY_U, KEY_SPACE};
constexpr auto pace = std::chrono::nanoseconds(1s) / 30;

void fill(const std::string& process, std::size_t limit) {
    TestKeyboard keyboard;
    std::vector<std::uint8_t> keys(held.begin(), held.end());
    keys.insert(keys.end(), typed.begin(), typed.end());
    for (std::size_t i = 0; i < limit + limit / 10; ++i) {
        // One further each time: the colours recur with the keys.
        keyboard.tap(keys.at((i + i / keys.size()) % keys.size()));
        if (i % keys.size() == 0) {
            std::this_thread::sleep_for(20ms);
        }
    }
    waitForRest(process);
}

/// Milliseconds that the process goes on working after the last key: what had queued up.
double untilRest(const std::string& process) {
    constexpr auto slice = 20ms;
    constexpr double idling = 1; // CPU milliseconds in a slice: less than a key takes
    const auto began = Clock::now();
    double before = cpuMilliseconds(process);
    while (true) {
        std::this_thread::sleep_for(slice);
        const double now = cpuMilliseconds(process);
        if (now - before < idling) {
            return Milliseconds(Clock::now() - began - slice).count();
        }
        before = now;
    }
}

class Period {
public:
    Period(std::string process, std::chrono::seconds length) : m_process(std::move(process)), m_length(length) {}

    void run(std::size_t number) {
        const auto began = Clock::now();
        const double cpuBefore = cpuMilliseconds(m_process);
        for (const auto key : held) {
            m_keyboard.press(key);
        }
        auto next = Clock::now();
        std::size_t keys = 0;
        while (next - began < m_length) {
            type(typed.at(keys % typed.size()));
            ++keys;
            next += pace;
            std::this_thread::sleep_until(next);
        }
        for (const auto key : held) {
            m_keyboard.release(key);
        }
        const double rest = untilRest(m_process);
        const double wall = Milliseconds(Clock::now() - began).count();
        const double cpu = 100 * (cpuMilliseconds(m_process) - cpuBefore) / wall;
        const Costs times = costsOf(std::exchange(m_samples, {}));
        std::printf("%6zu %8zu %10.2f %10.2f %10.2f %12.1f %10.1f %12.1f\n", number, keys, times.median, times.slow,
                    times.dearest, rest, cpu, residentMebibytes(m_process));
        std::fflush(stdout);
    }

private:
    void type(std::uint8_t key) {
        m_screen.catchUp();
        const auto pressed = Clock::now();
        m_keyboard.tap(key);
        if (key == KEY_SPACE) {
            return; // it changes no pixel while the cursor is in its hidden phase
        }
        if (const auto changed = m_screen.waitForChange(5s)) {
            m_samples.push_back(Milliseconds(*changed - pressed).count());
        }
    }

    const std::string m_process;
    const std::chrono::seconds m_length;
    ScreenWatch m_screen;
    TestKeyboard m_keyboard;
    std::vector<double> m_samples;
};

} // namespace
} // namespace tapalong::bench

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fputs("usage: held_keys PROCESS LIMIT PERIODS SECONDS\n", stderr);
        return EXIT_FAILURE;
    }
    tapalong::bench::Period period(argv[1], std::chrono::seconds(std::stoul(argv[4])));
    tapalong::bench::fill(argv[1], std::stoul(argv[2]));
    for (std::size_t number = 1; number <= std::stoul(argv[3]); ++number) {
        period.run(number);
    }
    return EXIT_SUCCESS;
}
