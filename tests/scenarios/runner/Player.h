#pragma once

#include "scenarios/runner/SimulatedApplication.h"
#include "scenarios/runner/Words.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tapalong::testing {

/// Plays the lines of an input script on an application of its own.
class Player {
public:
    using Receiver = simulated::SimulatedInput::Receiver;

    explicit Player(SimulatedApplication::Stored settings);

    /// Adds what `check` lines found to problems(). Throws ScriptError where a line cannot be understood.
    void play(const std::vector<Line>& lines);

    // What expectations look at.
    [[nodiscard]] SimulatedApplication& application() { return *m_application; }
    /// All that was done to the desktop since the start, or since `forget effects`.
    [[nodiscard]] const std::vector<std::string>& effects();
    [[nodiscard]] std::size_t countOf(Receiver receiver) const;
    [[nodiscard]] std::optional<Receiver> lastReceiver() const { return m_lastReceiver; }
    /// What the application answered when its settings window was last closed.
    [[nodiscard]] std::optional<bool> quits() const { return m_quits; }
    [[nodiscard]] std::vector<std::string>& problems() { return m_problems; }

private:
    using Command = void (Player::*)(Words&);
    static const std::map<std::string_view, Command>& commands();

    // Player.cpp
    void playRange(const std::vector<Line>& lines, std::size_t begin, std::size_t end);
    void playLine(const Line& line);
    void execute(std::string_view text);
    void moveClockTo(double seconds);
    void check(Words& words);
    void forget(Words& words);
    void restart(Words& words);
    void set(Words& words);
    void random(Words& words);

    // Player+Keys.cpp
    void send(const InputEvent& event);
    void pressKey(Words& words);
    void releaseKey(Words& words);
    void type(Words& words);
    void hold(Words& words);
    void modifier(Words& words);

    // Player+Desktop.cpp
    void event(Words& words);
    void pointer(Words& words);
    void drag(Words& words);
    void movePointer(Words& words, EventType type);
    void start(Words& words);
    void click(Words& words);
    void overlay(Words& words);
    void tap(Words& words);
    void disable(Words& words);
    void secure(Words& words);
    void capsLock(Words& words);
    void permission(Words& words);
    void reader(Words& words);
    void finger(Words& words);
    void closeWindow(Words& words);
    void front(Words& words);
    void screen(Words& words);
    void appearance(Words& words);
    void sound(Words& words);
    void shortcut(Words& words);

    std::optional<SimulatedApplication> m_application;
    double m_earlierProcesses = 0; ///< the script's time at the last restart
    ModifierFlags m_modifiers = 0; ///< those held down
    std::vector<std::string> m_effects;
    std::map<Receiver, std::size_t> m_received;
    std::optional<Receiver> m_lastReceiver;
    std::optional<bool> m_quits;
    std::vector<std::string> m_problems;
};

} // namespace tapalong::testing
