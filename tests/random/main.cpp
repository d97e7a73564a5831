// Random sessions of the whole application, checked against a model after every event.
//
//   random_session [SEED]      TAPALONG_SEED does the same; without either the seed is random. It is always printed.
//   random_session --self-test breaks the model's rules one by one: each must be noticed
//
// TAPALONG_EVENTS: how many events. TAPALONG_LONG: as many as the long test has.

#include "random/RandomSession.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string_view>

namespace {

using namespace tapalong::testing;

/// The build says how many: equal where a long test would take too long.
constexpr std::uint64_t usualEvents = TAPALONG_USUAL_EVENTS;
constexpr std::uint64_t eventsInLongTest = TAPALONG_LONG_EVENTS;

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

/// From so many events on, a run that did not reach everything was not the test it claims to be.
constexpr std::uint64_t enoughToReachAll = 100000;

bool hasReachedAll(const RandomSession& session) {
    const auto& counts = session.counts();
    const auto& reached = session.milestones();
    return counts.processes > 1 && counts.sessions > 10 && counts.overlays > 10 && counts.waysOut > 10 &&
           counts.waysOutOfCopies > 100 && counts.byKind.size() == eventKinds && reached.trims > 0 &&
           reached.trimsAtLineBreaks > 0 && reached.wipes > 0 && reached.tenthDraws > 0 && reached.tapsHadLater > 0 &&
           reached.tapsLost > 0 && reached.sessionsWithoutLockdown > 0 && reached.recordings > 0 &&
           reached.shortcutStarts > 0 && reached.passwordEnds > 0 && reached.fingerEnds > 0;
}

int explore(std::uint64_t seed, std::uint64_t events) {
    std::cout << "seed " << seed << ", " << events << " events" << std::endl;
    RandomSession session(seed, Broken::nothing);
    constexpr std::uint64_t mostCopies = 20000; // each costs about a millisecond
    session.eventsBetweenCopies = std::max(std::uint64_t{50}, events / mostCopies);
    const auto difference = session.run(events);
    const auto& counts = session.counts();
    const auto& reached = session.milestones();
    std::cout << counts.events << " events in " << counts.processes << " processes and " << counts.sessions
              << " sessions; the overlay came up " << counts.overlays << " times; the way out was taken "
              << counts.waysOut << " times, and in a copy of the process " << counts.waysOutOfCopies << " times\n"
              << reached.trims << " trims, " << reached.trimsAtLineBreaks << " of them at a line break; "
              << reached.longestText << " characters at most; " << reached.wipes << " wipes; " << reached.tenthDraws
              << " tenth draws; " << reached.tapsHadLater << " taps had later, " << reached.tapsLost << " lost; "
              << reached.sessionsWithoutLockdown << " sessions without their lockdown; " << reached.recordings
              << " recordings; " << reached.shortcutStarts << " starts by shortcut; " << reached.passwordEnds
              << " ends by password, " << reached.fingerEnds << " by finger\n";
    if (difference) {
        std::cout << "seed " << seed << ", " << *difference;
        return 1;
    }
    if (events >= enoughToReachAll && !hasReachedAll(session)) {
        std::cout << "seed " << seed << ": too little was reached for the run to mean anything\n";
        return 1;
    }
    return 0;
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
    const auto unasked = std::getenv("TAPALONG_LONG") != nullptr ? eventsInLongTest : usualEvents;
    return explore(given.value_or(std::random_device{}()), events.value_or(unasked));
}
