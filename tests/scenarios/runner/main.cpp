// Plays scenarios: folders with settings, input and expect. See ../README.md.

#include "scenarios/runner/Expectations.h"
#include "scenarios/runner/Player.h"
#include "scenarios/runner/Settings.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <vector>

namespace {

using namespace tapalong::testing;
namespace fs = std::filesystem;

/// All that is wrong with a scenario; nothing when it holds.
std::vector<std::string> problemsOf(const fs::path& folder) {
    try {
        const auto input = readLines(folder / "input");
        const auto expectations = readLines(folder / "expect");
        if (input.empty() || expectations.empty()) {
            throw ScriptError("a scenario needs an input and an expect file that say something");
        }
        Player player(readSettings(readLines(folder / "settings")));
        player.play(input);
        for (const auto& line : expectations) {
            try {
                if (const auto difference = differenceFrom(line.text, player)) {
                    player.problems().push_back(line.where + ": " + *difference);
                }
            } catch (const ScriptError& error) {
                throw ScriptError(line.where + ": " + error.what());
            }
        }
        return player.problems();
    } catch (const ScriptError& error) {
        return {error.what()};
    }
}

bool holds(const fs::path& folder) {
    const auto problems = problemsOf(folder);
    std::cout << (problems.empty() ? "ok      " : "FAILED  ") << folder.string() << '\n';
    for (const auto& problem : problems) {
        std::cout << "    " << problem << '\n';
    }
    return problems.empty();
}

/// Whether the scenario is rejected, and for the reason that its file `message` tells.
bool isRejected(const fs::path& folder) {
    const auto message = readLines(folder / "message");
    const auto problems = problemsOf(folder);
    const bool asTold =
        message.size() == 1 && problems.size() == 1 && problems.front().find(message.front().text) != std::string::npos;
    std::cout << (asTold ? "ok      " : "FAILED  ") << folder.string() << '\n';
    if (!asTold) {
        std::cout << "    should be rejected with: " << (message.size() == 1 ? message.front().text : "(one line)")
                  << '\n';
        for (const auto& problem : problems) {
            std::cout << "    found: " << problem << '\n';
        }
    }
    return asTold;
}

/// The folder itself when it is a scenario, else those within it, in alphabetical order.
std::vector<fs::path> scenariosIn(const fs::path& folder) {
    if (fs::is_regular_file(folder / "input") || fs::is_regular_file(folder / "expect")) {
        return {folder};
    }
    std::vector<fs::path> subfolders;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.is_directory()) {
            subfolders.push_back(entry.path());
        }
    }
    std::sort(subfolders.begin(), subfolders.end());
    std::vector<fs::path> scenarios;
    for (const auto& subfolder : subfolders) {
        const auto within = scenariosIn(subfolder);
        scenarios.insert(scenarios.end(), within.begin(), within.end());
    }
    return scenarios;
}

int run(const std::vector<std::string>& arguments) {
    bool mustFail = false;
    std::size_t atLeast = 1;
    std::vector<fs::path> scenarios;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--must-fail") {
            mustFail = true;
        } else if (arguments[i] == "--at-least" && i + 1 < arguments.size()) {
            atLeast = Words(arguments[++i]).nextCount("the number of scenarios");
        } else {
            const auto found = scenariosIn(arguments[i]);
            scenarios.insert(scenarios.end(), found.begin(), found.end());
        }
    }
    const auto failed = std::count_if(scenarios.begin(), scenarios.end(), [mustFail](const fs::path& folder) {
        return mustFail ? !isRejected(folder) : !holds(folder);
    });
    std::cout << scenarios.size() << " scenarios, " << failed << " failed\n";
    if (scenarios.size() < atLeast) {
        std::cout << "There should be at least " << atLeast << ".\n";
    }
    return failed == 0 && scenarios.size() >= atLeast ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::cerr << "scenario_runner: " << error.what()
                  << "\nusage: scenario_runner [--must-fail] [--at-least N] FOLDER...\n";
        return 2;
    }
}
