// Presses chords and says what came of each outside the window that has the keyboard. Commands, one a line:
//
//   daemon core|slaves    start a desktop daemon with shortcuts
//   listen                start a client that listens to each device
//   hotkeys on|off        switch the server's accessibility hot keys
//   plain                 open a full-screen window that grabs nothing, and guard it
//   guard                 guard the window that has the focus
//   play MS TOKEN...      press (see Hands.h), "~MS" waiting in between; watch for MS more; answer what was seen
//   restore               bring the plain window back after whatever was seen
//
// Each answer ends with a line "done".

#include "desktop/siege/client/Daemon.h"
#include "desktop/siege/client/DeviceListener.h"
#include "desktop/siege/client/Hands.h"
#include "desktop/siege/client/HotKeys.h"
#include "desktop/siege/client/PlainWindow.h"
#include "desktop/siege/client/Watcher.h"

#include "base/Fatal.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <optional>
#include <sstream>
#include <thread>
#include <utility>

namespace tapalong::siege {

namespace {

using std::chrono::milliseconds;

class Sweep {
public:
    void obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        if (command == "daemon") {
            std::string level;
            words >> level;
            m_daemons.push_back(std::make_unique<Daemon>(level == "core" ? GrabLevel::core : GrabLevel::slaves));
        } else if (command == "listen") {
            m_listener.emplace();
        } else if (command == "hotkeys") {
            std::string position;
            words >> position;
            (position == "on" ? switchHotKeysOn : switchHotKeysOff)(m_watcher.server());
        } else if (command == "plain") {
            m_plain = std::make_unique<PlainWindow>();
            restore();
        } else if (command == "guard") {
            m_watcher.guard(m_watcher.server().focus());
        } else if (command == "play") {
            play(words);
        } else if (command == "restore") {
            restore();
        } else {
            fatal("there is no such command");
        }
        std::cout << "done" << std::endl;
    }

private:
    void play(std::istringstream& words) {
        int quiet = 0;
        words >> quiet;
        std::string token;
        while (words >> token) {
            if (token.front() == '~') {
                watchFor(milliseconds(std::stoi(token.substr(1))));
            } else {
                m_hands.play(token);
                collect();
            }
        }
        m_hands.rest();
        watchFor(milliseconds(quiet));
        for (const auto& each : std::exchange(m_sightings, {})) {
            std::cout << each << '\n';
        }
    }

    void watchFor(milliseconds time) {
        const auto end = std::chrono::steady_clock::now() + time;
        collect();
        while (std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(milliseconds(1));
            collect();
        }
    }

    void collect() {
        std::vector<std::string> sightings;
        m_watcher.collect(sightings);
        for (const auto& each : m_daemons) {
            each->collect(sightings);
        }
        if (m_listener) {
            m_listener->collect(sightings);
        }
        for (auto& each : sightings) {
            if (std::find(m_sightings.begin(), m_sightings.end(), each) == m_sightings.end()) {
                m_sightings.push_back(std::move(each));
            }
        }
    }

    void restore() {
        verify(m_plain != nullptr, "only the plain window is brought back");
        verify(m_plain->restore(m_hands), "the plain window gets the screen and the focus back");
        watchFor(milliseconds(30));
        m_sightings.clear();
        m_watcher.guard(m_plain->window());
    }

    Hands m_hands;
    Watcher m_watcher;
    std::vector<std::unique_ptr<Daemon>> m_daemons;
    std::optional<DeviceListener> m_listener;
    std::unique_ptr<PlainWindow> m_plain;
    std::vector<std::string> m_sightings;
};

} // namespace

} // namespace tapalong::siege

int main() {
    tapalong::siege::Sweep sweep;
    for (std::string line; std::getline(std::cin, line);) {
        sweep.obey(line);
    }
}
