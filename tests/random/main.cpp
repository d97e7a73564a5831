// Random sessions of the whole application, checked against a model after every event.
//
//   random_session [SEED]      TAPALONG_SEED does the same; without either the seed is random. It is always printed.
//   random_session --self-test breaks the model's rules one by one: each must be noticed
//
// TAPALONG_EVENTS: how many events.

#include "random/RandomSession.h"

#include <charconv>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string_view>

namespace {

using namespace tapalong::testing;

std::optional<std::uint64_t> number(std::string_view text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = !text.empty() && error == std::errc{} && end == text.data() + text.size();
    return whole ? std::optional(value) : std::nullopt;
}

/// Ends the program when the text is there and is no number.
std::optional<std::uint64_t> numberFrom(const char* text) {
    if (text == nullptr) {
        return std::nullopt;
    }
    const auto value = number(text);
    if (!value) {
        std::cerr << "random_session: \"" << text << "\" is no number\n";
        std::exit(2);
    }
    return value;
}

int explore(std::uint64_t seed, std::uint64_t events) {
    std::cout << "seed " << seed << ", " << events << " events" << std::endl;
    RandomSession session(seed, Broken::nothing);
    const auto difference = session.run(events);
    const auto& counts = session.counts();
    std::cout << counts.events << " events in " << counts.processes << " processes and " << counts.sessions
              << " sessions; the overlay came up " << counts.overlays << " times; the way out was taken "
              << counts.waysOut << " times\n";
    if (difference) {
        std::cout << "seed " << seed << ", " << *difference;
        return 1;
    }
    // A run that reached nothing has shown nothing.
    const bool reached = events < 10000 || (counts.sessions > 10 && counts.overlays > 10 && counts.waysOut > 2);
    return reached ? 0 : 1;
}

int testItself() {
    constexpr std::uint64_t seed = 1;
    constexpr std::uint64_t events = 60000;
    int unnoticed = 0;
    for (int rule = 1; rule <= brokenRules; ++rule) {
        RandomSession session(seed, static_cast<Broken>(rule));
        const auto difference = session.run(events);
        std::cout << "broken rule " << rule << ": "
                  << (difference ? difference->substr(0, difference->find('\n')) : "NOT NOTICED") << '\n';
        unnoticed += difference ? 0 : 1;
    }
    return unnoticed == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::string_view(argv[1]) == "--self-test") {
        return testItself();
    }
    const auto given = numberFrom(argc > 1 ? argv[1] : std::getenv("TAPALONG_SEED"));
    const auto events = numberFrom(std::getenv("TAPALONG_EVENTS"));
    return explore(given.value_or(std::random_device{}()), events.value_or(TAPALONG_DEFAULT_EVENTS));
}
