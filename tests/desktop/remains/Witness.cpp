// Another program on the display, led by a test: it types, gets keys, and tells in which state the server is. One
// command per line of standard input; each answer ends with a line that holds a full stop alone.

#include "desktop/remains/DeviceChanges.h"
#include "desktop/remains/ProgramsClients.h"
#include "desktop/remains/Replies.h"
#include "desktop/remains/ServerState.h"
#include "desktop/support/XClient.h"

#include <chrono>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <thread>

namespace tapalong::test {
namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t keyThatIsTyped = 38; // L

class Witness {
public:
    void obey(const std::string& command, std::istream& words) {
        const auto found = m_commands.find(command);
        std::cout << (found != m_commands.end() ? found->second(words) : "no such command\n") << '.' << std::endl;
    }

private:
    std::string state() {
        std::ostringstream out;
        writeServerState(m_client.xcb(), m_client.root(), out);
        return out.str();
    }

    /// Whether a key that is typed into another program's window arrives there. Leaves the focus where it was.
    std::string getsKeys() {
        if (m_window == XCB_NONE) {
            m_window = m_client.openWindow(0, 0, 8, 8);
        }
        auto* const xcb = m_client.xcb();
        const auto before = own(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
        m_client.focus(m_window);
        m_client.forget();
        m_client.tap(keyThatIsTyped);
        const auto end = std::chrono::steady_clock::now() + 100ms;
        while (m_client.count(XCB_KEY_PRESS, keyThatIsTyped) == 0 && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(2ms);
        }
        xcb_set_input_focus(xcb, before->revert_to, before->focus, XCB_CURRENT_TIME);
        m_client.sync();
        return m_client.count(XCB_KEY_PRESS, keyThatIsTyped) == 1 ? "yes\n" : "no\n";
    }

    /// Whether something covers the whole screen.
    std::string isCovered() {
        const auto geometry = [this](xcb_window_t window) {
            return own(xcb_get_geometry_reply(m_client.xcb(), xcb_get_geometry(m_client.xcb(), window), nullptr));
        };
        const auto top = geometry(m_client.topWindow());
        const auto whole = geometry(m_client.root());
        return top && whole && top->width == whole->width && top->height == whole->height ? "yes\n" : "no\n";
    }

    std::string chord(std::istream& words) {
        std::vector<std::uint32_t> keys;
        for (std::uint32_t key = 0; words >> key;) {
            keys.push_back(key);
        }
        m_client.chord(keys);
        return {};
    }

    /// Taps these keys as soon as the guard of the server's keys has noted what there was, if it does within a moment.
    /// Nobody can put anything back between the look and the keys: the server serves us alone for so long.
    std::string tapOnceNoted(std::istream& words) {
        std::vector<std::uint32_t> keys;
        for (std::uint32_t key = 0; words >> key;) {
            keys.push_back(key);
        }
        const auto end = std::chrono::steady_clock::now() + 20ms;
        while (!hasProperty(m_client.xcb(), m_client.root(), guardsNote)) {
            if (std::chrono::steady_clock::now() > end) {
                return "no\n";
            }
            std::this_thread::sleep_for(1ms);
        }
        xcb_grab_server(m_client.xcb());
        const bool isNoted = hasProperty(m_client.xcb(), m_client.root(), guardsNote);
        for (const auto key : isNoted ? keys : std::vector<std::uint32_t>()) {
            m_client.tap(key);
        }
        xcb_ungrab_server(m_client.xcb());
        m_client.sync();
        return isNoted ? "yes\n" : "no\n";
    }

    std::string move(std::istream& words) {
        std::int16_t x = 0;
        std::int16_t y = 0;
        words >> x >> y;
        m_client.movePointer(x, y);
        return {};
    }

    std::string changeDevice(std::istream& words) {
        std::string what;
        std::uint16_t device = 0;
        std::uint32_t value = 0;
        words >> what >> device >> value;
        if (what == "focus") {
            setDeviceFocus(m_client.xcb(), device, value);
        } else if (what == "locks") {
            setLockedModifiers(m_client.xcb(), device, static_cast<std::uint8_t>(value));
        } else if (what == "latches") {
            setLatchedModifiers(m_client.xcb(), device, static_cast<std::uint8_t>(value));
        } else if (what == "middle-button") {
            setMiddleButton(m_client.xcb(), device, static_cast<std::uint8_t>(value));
        } else if (what == "hot-keys") {
            setHotKeys(m_client.xcb(), device, value != 0 ? HotKeys::on : HotKeys::off);
        }
        return {};
    }

    std::string resources(std::istream& words) {
        pid_t pid = 0;
        words >> pid;
        std::ostringstream out;
        for (const auto& [name, number] : ProgramsClients(m_client.xcb(), pid).resources()) {
            out << name << ": " << number << '\n';
        }
        return out.str();
    }

    XClient m_client;
    xcb_window_t m_window = XCB_NONE;
    const std::map<std::string, std::function<std::string(std::istream&)>> m_commands{
        {"state", [this](std::istream&) { return state(); }},
        {"gets-keys", [this](std::istream&) { return getsKeys(); }},
        {"covered", [this](std::istream&) { return isCovered(); }},
        {"chord", [this](std::istream& words) { return chord(words); }},
        {"tap-once-noted", [this](std::istream& words) { return tapOnceNoted(words); }},
        {"move", [this](std::istream& words) { return move(words); }},
        {"change-device", [this](std::istream& words) { return changeDevice(words); }},
        {"resources", [this](std::istream& words) { return resources(words); }},
    };
};

} // namespace
} // namespace tapalong::test

int main() {
    tapalong::test::Witness witness;
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        witness.obey(command, words);
    }
    return 0;
}
