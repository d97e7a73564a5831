#include "scenarios/runner/Player.h"

#include "scenarios/runner/Expectations.h"
#include "scenarios/runner/Settings.h"

#include <algorithm>
#include <utility>

namespace tapalong::testing {

namespace {

/// The line after the `end` that belongs to the `repeat` at `begin`.
std::size_t blockEnd(const std::vector<Line>& lines, std::size_t begin) {
    int depth = 0;
    for (std::size_t i = begin; i < lines.size(); ++i) {
        if (lines[i].text.starts_with("repeat ")) {
            ++depth;
        } else if (lines[i].text == "end" && --depth == 0) {
            return i + 1;
        }
    }
    throw ScriptError(lines[begin].where + ": this repeat lacks its end");
}

std::size_t timesOf(const Line& repeat) {
    try {
        Words words(repeat.text);
        words.skip("repeat");
        const auto times = words.nextCount("how often");
        words.mustEnd();
        return times;
    } catch (const ScriptError& error) {
        throw ScriptError(repeat.where + ": " + error.what());
    }
}

} // namespace

Player::Player(SimulatedApplication::Stored settings) {
    m_application.emplace(std::move(settings));
}

const std::map<std::string_view, Player::Command>& Player::commands() {
    static const std::map<std::string_view, Command> table{
        {"check", &Player::check},
        {"forget", &Player::forget},
        {"restart", &Player::restart},
        {"set", &Player::set},
        {"random", &Player::random},
        {"key", &Player::pressKey},
        {"key-up", &Player::releaseKey},
        {"type", &Player::type},
        {"hold", &Player::hold},
        {"modifier", &Player::modifier},
        {"event", &Player::event},
        {"pointer", &Player::pointer},
        {"drag", &Player::drag},
        {"start", &Player::start},
        {"click", &Player::click},
        {"overlay", &Player::overlay},
        {"tap", &Player::tap},
        {"disable", &Player::disable},
        {"secure", &Player::secure},
        {"permission", &Player::permission},
        {"reader", &Player::reader},
        {"finger", &Player::finger},
        {"close", &Player::closeWindow},
        {"front", &Player::front},
        {"screen", &Player::screen},
        {"appearance", &Player::appearance},
        {"sound", &Player::sound},
        {"shortcut", &Player::shortcut},
        {"caps-lock", &Player::capsLock},
    };
    return table;
}

void Player::play(const std::vector<Line>& lines) {
    playRange(lines, 0, lines.size());
}

void Player::playRange(const std::vector<Line>& lines, std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end;) {
        if (lines[i].text == "repeat" || lines[i].text.starts_with("repeat ")) {
            const auto after = blockEnd(lines, i);
            const auto times = timesOf(lines[i]);
            for (std::size_t round = 0; round < times; ++round) {
                playRange(lines, i + 1, after - 1);
            }
            i = after;
        } else {
            playLine(lines[i]);
            ++i;
        }
    }
}

void Player::playLine(const Line& line) {
    const auto problemsBefore = m_problems.size();
    try {
        execute(line.text);
    } catch (const ScriptError& error) {
        throw ScriptError(line.where + ": " + error.what());
    }
    for (auto i = problemsBefore; i < m_problems.size(); ++i) {
        m_problems[i] = line.where + ": " + m_problems[i];
    }
}

void Player::execute(std::string_view text) {
    Words words(text);
    auto command = words.next("a command");
    if (command == "at" || command.front() == '+') {
        const double now = m_earlierProcesses + application().platform.time.now();
        const double target =
            command == "at" ? words.nextNumber("a time") : now + toNumber(std::string_view(command).substr(1));
        moveClockTo(target);
        if (words.atEnd()) {
            return;
        }
        command = words.next("a command");
    }
    const auto found = commands().find(command);
    if (found == commands().end()) {
        throw ScriptError("unknown word \"" + command + "\"");
    }
    (this->*found->second)(words);
    words.mustEnd();
    application().platform.time.drain();
}

void Player::moveClockTo(double seconds) {
    auto& time = application().platform.time;
    const double step = seconds - m_earlierProcesses - time.now();
    if (step < 0) {
        throw ScriptError("time does not go back");
    }
    time.advance(step);
}

void Player::check(Words& words) {
    if (auto difference = differenceFrom(words.rest(), *this)) {
        m_problems.push_back(std::move(*difference));
    }
}

void Player::forget(Words& words) {
    words.skip("effects");
    application().platform.effects.clear();
    m_effects.clear();
}

void Player::restart(Words&) {
    std::ignore = effects();
    auto& platform = application().platform;
    m_earlierProcesses += platform.time.now();
    auto stored = platform.defaults.stored;
    m_application.emplace(std::move(stored));
}

void Player::set(Words& words) {
    auto [key, value] = parsedSetting(words.rest());
    // As a control of the settings window does it: announced, then written.
    application().settings().sendObjectWillChange();
    application().platform.defaults.setValue(key, std::move(value));
}

void Player::random(Words& words) {
    do {
        application().platform.random.scripted.push_back(words.nextCount("a number"));
    } while (!words.atEnd());
}

const std::vector<std::string>& Player::effects() {
    auto& log = application().platform.effects;
    m_effects.insert(m_effects.end(), log.all().begin(), log.all().end());
    log.clear();
    return m_effects;
}

std::size_t Player::countOf(Receiver receiver) const {
    const auto found = m_received.find(receiver);
    return found != m_received.end() ? found->second : 0;
}

} // namespace tapalong::testing
