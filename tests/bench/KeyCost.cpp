// Types into sessions, each of which has the keyboard of a display of its own, and prints what a key costs the program
// there: CPU time of all its threads, from the key to rest, at the length that the session's text was given, and then
// where the last one's is cut. The sessions are measured in turn, a few keys each: what else the machine does then
// falls on all alike.
//
// usage: key_cost LIMIT (PROCESS DISPLAY LENGTH)...

#include "Costs.h"
#include "Process.h"
#include "TestKeyboard.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <utility>

namespace tapalong::bench {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t rounds = 10;
constexpr std::size_t keysOfRound = 20; ///< after as many that are not measured, in the first round
constexpr std::size_t aroundCut = 6;
constexpr auto untilRest = 40ms; ///< long enough for the dearest key, short enough for a table in a few minutes

class Session {
public:
    Session(std::string process, const char* display, std::size_t length)
        : m_process(std::move(process)), m_keyboard(display), m_length(length) {}

    [[nodiscard]] std::size_t length() const { return m_length; }
    [[nodiscard]] double memory() const { return residentMebibytes(m_process); }
    [[nodiscard]] Costs costs() const { return costsOf(m_samples); }

    /// At a pace that is no child's, until the text is so long.
    void fill(std::size_t length) {
        while (m_typed < length) {
            type();
            if (m_typed % 20 == 0) {
                std::this_thread::sleep_for(20ms);
            }
        }
        waitForRest(m_process);
    }

    void measure(std::size_t keys) {
        double before = cpuMilliseconds(m_process);
        for (std::size_t i = 0; i < keys; ++i) {
            type();
            std::this_thread::sleep_for(untilRest);
            const double now = cpuMilliseconds(m_process);
            m_samples.push_back(now - before);
            before = now;
        }
    }

    void forgetCosts() { m_samples.clear(); }

private:
    /// One character per key: one in ten an emoji (the Shift key types one), one in nine a blank, else a letter.
    void type() {
        constexpr std::uint8_t shift = 42;
        constexpr std::uint8_t space = 57;
        constexpr std::array<std::uint8_t, 26> letters{16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 30, 31, 32,
                                                       33, 34, 35, 36, 37, 38, 44, 45, 46, 47, 48, 49, 50};
        const auto roll = m_random() % 90;
        m_keyboard.tap(roll < 9 ? shift : roll < 19 ? space : letters.at(m_random() % letters.size()));
        ++m_typed;
    }

    const std::string m_process;
    TestKeyboard m_keyboard;
    const std::size_t m_length;
    std::mt19937 m_random{7}; // NOLINT(cert-msc51-cpp): the same text in every run
    std::size_t m_typed = 0;
    std::vector<double> m_samples;
};

using Sessions = std::vector<std::unique_ptr<Session>>;

void measureInTurn(const Sessions& sessions) {
    for (const auto& session : sessions) {
        session->fill(session->length());
        session->measure(keysOfRound);
        session->forgetCosts();
    }
    for (std::size_t round = 0; round < rounds; ++round) {
        for (const auto& session : sessions) {
            session->measure(keysOfRound);
        }
    }
    printCostsHeader();
    for (const auto& session : sessions) {
        printCosts("the program in a session", session->length(), rounds * keysOfRound, session->costs());
    }
}

void run(std::size_t limit, const Sessions& sessions) {
    const Session& shortest = *sessions.front();
    Session& longest = *sessions.back();
    longest.fill(shortest.length());
    const double memory = longest.memory();
    measureInTurn(sessions);
    const double key = longest.costs().median;
    std::printf("key at the last / first length: %.2f\n", key / shortest.costs().median);
    std::printf("memory at %zu characters, MiB: %.1f\n", shortest.length(), memory);
    std::printf("memory at %zu characters, MiB: %.1f\n", longest.length(), longest.memory());
    longest.fill(limit - aroundCut);
    longest.forgetCosts();
    longest.measure(2 * aroundCut); // the key that passes the limit is the dearest of these
    const double cut = longest.costs().dearest;
    std::printf("the key that cuts the text at %zu, ms: %.2f\n", limit, cut);
    std::printf("the key that cuts the text, in keys: %.1f\n", cut / key);
}

} // namespace
} // namespace tapalong::bench

int main(int argc, char** argv) {
    constexpr int argumentsOfSession = 3;
    if (argc < 2 + argumentsOfSession || (argc - 2) % argumentsOfSession != 0) {
        std::fputs("usage: key_cost LIMIT (PROCESS DISPLAY LENGTH)...\n", stderr);
        return EXIT_FAILURE;
    }
    tapalong::bench::Sessions sessions;
    for (int i = 2; i < argc; i += argumentsOfSession) {
        sessions.push_back(std::make_unique<tapalong::bench::Session>(argv[i], argv[i + 1], std::stoul(argv[i + 2])));
    }
    tapalong::bench::run(std::stoul(argv[1]), sessions);
    return EXIT_SUCCESS;
}
