#pragma once

#include "random/EventSource.h"
#include "random/Model.h"
#include "scenarios/runner/SimulatedApplication.h"

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>

namespace tapalong::testing {

/// The whole application and the model of it, living through the same random events.
class RandomSession {
public:
    struct Counts {
        std::uint64_t events = 0, sessions = 0, overlays = 0, waysOut = 0, waysOutOfCopies = 0, processes = 1;
        std::map<Event::Kind, std::uint64_t> byKind{};
    };

    RandomSession(std::uint64_t seed, Broken broken);

    /// What went wrong, with the latest events; none when all went as the model says.
    [[nodiscard]] std::optional<std::string> run(std::uint64_t events);

    /// How many events lie between two tries of the way out in a copy of the process. Zero for no such tries.
    std::uint64_t eventsBetweenCopies = 0;

    [[nodiscard]] const Counts& counts() const { return m_counts; }
    [[nodiscard]] const Model::Milestones& milestones() const { return m_model.milestones; }

private:
    using Receiver = simulated::SimulatedInput::Receiver;

    // RandomSession.cpp
    [[nodiscard]] std::optional<std::string> step(const Event& event);
    [[nodiscard]] std::optional<Receiver> apply(const Event& event);
    void applyToDesktop(const Event& event);
    void applyToOverlay(const Event& event);
    void closeSettings();
    void countChanges(bool wasActive, bool wasShown);
    [[nodiscard]] std::string report(const std::string& difference) const;

    // WayOut.cpp
    [[nodiscard]] std::optional<std::string> leave();
    [[nodiscard]] bool copyCanLeave();
    [[nodiscard]] std::vector<Event> stepsToTheOverlay() const;
    [[nodiscard]] std::vector<Event> stepsThroughTheOverlay() const;

    EventSource m_source;
    Model m_model;
    std::optional<SimulatedApplication> m_application;
    std::deque<std::string> m_latest;
    Counts m_counts;
};

} // namespace tapalong::testing
