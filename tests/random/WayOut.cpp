// The rule that an adult can always leave, tried for real from whatever state the random events have led to.

#include "random/RandomSession.h"

#include "base/Fatal.h"
#include "text/Character.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <iostream>

namespace tapalong::testing {

namespace {

using Kind = Event::Kind;

Event plain(Kind kind, bool on = true) {
    Event event;
    event.kind = kind;
    event.on = on;
    return event;
}

/// At least that long, on the grid of the events' times.
Event wait(double seconds) {
    Event event;
    event.seconds = std::ceil(seconds * 16) / 16;
    return event;
}

Event pointerAt(Point point) {
    Event event = plain(Kind::pointer);
    event.point = point;
    return event;
}

Event press(std::int64_t code, std::string text) {
    constexpr std::int64_t returnKey = 36;
    Event event = plain(Kind::key);
    event.press.code = code;
    event.press.meaning = code == returnKey ? KeyPress::Meaning::enter : KeyPress::Meaning::text;
    event.press.character = text;
    event.press.text = std::move(text);
    return event;
}

} // namespace

std::vector<Event> RandomSession::stepsToTheOverlay() const {
    constexpr double poll = 0.25;
    return {plain(Kind::screen), pointerAt({960, 540}), wait(poll), pointerAt(m_model.session->middleOfCorner()),
            wait(poll + std::max(m_model.session->dwell, poll))};
}

std::vector<Event> RandomSession::stepsThroughTheOverlay() const {
    // By now the overlay asks for the finger or has the focus; a click into the field is right in either case, and
    // brings secure input with it.
    std::vector<Event> steps{wait(0.125), plain(Kind::overlayField), plain(Kind::secureInput)};
    if (m_model.isRecording()) {
        // Behind the session nobody can begin a recording; random events can, and it takes every key.
        auto escape = press(53, "\x1B");
        escape.press.meaning = KeyPress::Meaning::fixed;
        steps.push_back(escape);
    }
    steps.push_back(plain(Kind::overlayPassword)); // the field is emptied
    std::string left = m_model.settings.exitPassword;
    while (const auto character = Character::first(left)) {
        steps.push_back(press(400, character->utf8()));
        left.erase(0, character->utf8().size());
    }
    steps.push_back(press(36, "\r"));
    steps.push_back(plain(Kind::secureInput, false));
    return steps;
}

std::optional<std::string> RandomSession::leave() {
    ++m_counts.waysOut;
    if (m_model.overlay() == nullptr) {
        for (const auto& event : stepsToTheOverlay()) {
            if (auto difference = step(event)) {
                return difference;
            }
        }
        if (!m_application->overlay()) {
            return report("the pointer rested in the corner and no overlay came up");
        }
    }
    for (const auto& event : stepsThroughTheOverlay()) {
        if (auto difference = step(event)) {
            return difference;
        }
    }
    if (m_application->manager().isSessionActive()) {
        return report("the right password was typed and the session goes on");
    }
    return std::nullopt;
}

// In a copy of this process, so that the session itself goes on and reaches what only long sessions reach.
bool RandomSession::copyCanLeave() {
    ++m_counts.waysOutOfCopies;
    std::cout.flush();
    const pid_t copy = fork();
    verify(copy >= 0, "a copy of the process must be had");
    if (copy == 0) {
        const auto stuck = leave();
        std::cout << stuck.value_or("") << std::flush;
        _exit(stuck ? EXIT_FAILURE : EXIT_SUCCESS);
    }
    int status = 0;
    verify(waitpid(copy, &status, 0) == copy, "the copy's end must be seen");
    return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

} // namespace tapalong::testing
