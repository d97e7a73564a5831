// From a key to the first pixel that it changes, seen from outside: another program on the display presses the key, and
// yet another looks at the screen. Types into whatever has the keyboard.
//
// usage: key_to_pixel NAME KEYS

#include "Costs.h"
#include "ScreenWatch.h"
#include "TestKeyboard.h"

#include <linux/input-event-codes.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>

namespace tapalong::bench {
namespace {

using namespace std::chrono_literals;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto notAnswered = 2s;

int run(const char* name, std::size_t keys) {
    ScreenWatch screen;
    TestKeyboard keyboard;
    std::mt19937 random(7); // NOLINT(cert-msc51-cpp): the same pauses in every run
    std::vector<double> samples;
    std::size_t unanswered = 0;
    for (std::size_t i = 0; i < keys; ++i) {
        // No fixed pace, or it would keep time with a blinking cursor or with the display's frames.
        std::this_thread::sleep_for(60ms + std::chrono::milliseconds(random() % 90));
        screen.catchUp();
        const auto pressed = ScreenWatch::Clock::now();
        keyboard.press(KEY_A);
        const auto changed = screen.waitForChange(notAnswered);
        keyboard.release(KEY_A);
        if (changed) {
            samples.push_back(Milliseconds(*changed - pressed).count());
        } else {
            ++unanswered;
        }
    }
    if (samples.empty()) {
        std::fprintf(stderr, "%s: no key changed a pixel\n", name);
        return EXIT_FAILURE;
    }
    const std::size_t answered = samples.size();
    const Costs times = costsOf(std::move(samples));
    std::printf("%-36s %8zu %10.2f %12.2f %10.2f %10zu\n", name, answered, times.median, times.slow, times.dearest,
                unanswered);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace tapalong::bench

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: key_to_pixel NAME KEYS\n", stderr);
        return EXIT_FAILURE;
    }
    return tapalong::bench::run(argv[1], std::stoul(argv[2]));
}
