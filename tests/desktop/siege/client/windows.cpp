// Opens windows over a session and asks the window manager things, and says what came of it. Commands, one a line:
//
//   session               the session is the window that has the focus
//   open MS KIND          open such a window for MS; keys, clicks and (for some kinds) its own insisting come meanwhile
//   alone MS KIND         the same where nothing is in its way: they come when it shows
//   desktops              see to it that there are two and that the first is shown; answer how many there are
//   underlay              open a desktop's own window, and an ordinary one that stays, for requests to bring to light
//   request MS KIND       ask the window manager something about the session's window
//   control MS KIND       ask it the same about a window like any other, that has opened above the underlay
//
// The other answers are a line "shown-ms focus-ms keys clicks shown-at-end focus-at-end in-place". The first two are the
// longest that the window was on the screen, or had the focus, without a break; the last says whether the session's
// window is the top-most and covers the screen. The window is the one opened, or the underlay; in a control the one
// above it.

#include "desktop/siege/client/ForeignWindow.h"
#include "desktop/siege/client/Hands.h"

#include "base/Fatal.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <map>
#include <sstream>
#include <thread>

namespace tapalong::siege {

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr auto betweenLooks = 1ms;
constexpr auto untilShown = 3s; // guards against waiting for ever
constexpr auto untilUndone = 200ms;
constexpr auto betweenPokes = 100ms;
constexpr int pokes = 5;
constexpr std::string_view someKey = "38";   // typed into the session
constexpr std::string_view deleteKey = "22"; // and taken back again
constexpr std::uint32_t colour = 0xE0218A;   // which nothing else has
constexpr std::uint32_t colourAbove = 0x21E08A;
constexpr std::uint32_t colourOfDesktop = 0x8A21E0;
constexpr auto moveAsideOfPanel = "m400,560"; // where such a window is and the exit panel is not

enum class Poking : std::uint8_t { atOnce, whenShown };

/// The longest time that something held, from looks at it.
class Longest {
public:
    void look(bool holds, Clock::time_point now) {
        if (holds && !m_holds) {
            m_since = now;
        }
        if (m_holds) {
            m_longest = std::max(m_longest, now - m_since);
        }
        m_holds = holds;
    }
    [[nodiscard]] auto inMs() const { return std::chrono::duration_cast<milliseconds>(m_longest).count(); }
    [[nodiscard]] bool holdsNow() const { return m_holds; }

private:
    bool m_holds = false;
    Clock::time_point m_since;
    Clock::duration m_longest{0};
};

class Siege {
public:
    void obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        int time = 0;
        words >> command;
        if (command == "session") {
            m_session = m_server.focus();
        } else if (command == "desktops") {
            makeDesktops();
        } else if (command == "underlay") {
            m_backdrop = std::make_unique<ForeignWindow>(m_server, "desktop", colourOfDesktop);
            m_underlay = std::make_unique<ForeignWindow>(m_server, "ordinary", colour);
            std::this_thread::sleep_for(500ms);
        } else {
            words >> time >> std::ws;
            std::string kind;
            std::getline(words, kind);
            watch(command, kind, milliseconds(time));
        }
        std::cout << "done" << std::endl;
    }

private:
    void watch(const std::string& command, const std::string& kind, milliseconds time) {
        if (command == "open" || command == "alone") {
            open(kind, time, command == "alone" ? Poking::whenShown : Poking::atOnce);
        } else if (command == "request") {
            request(kind, time);
        } else if (command == "control") {
            control(kind, time);
        } else {
            fatal("there is no such command");
        }
    }

    void makeDesktops() {
        m_server.request(m_server.root(), "_NET_NUMBER_OF_DESKTOPS", {2});
        undo();
        const auto count = m_server.property(m_server.root(), m_server.atom("_NET_NUMBER_OF_DESKTOPS"));
        std::cout << (count.empty() ? 0 : count.front()) << '\n';
    }

    void open(const std::string& kind, milliseconds time, Poking poking) {
        const ForeignWindow window(m_server, kind, colour);
        if (poking == Poking::whenShown) {
            waitUntilShown(window); // or what lies below gets the first of it, and opens a menu, say
        }
        // A right click: a left one beside the exit panel dismisses the overlay.
        watch(window, time, [&](int poke) {
            window.insist();
            type(poke % 2 == 0 ? someKey : deleteKey);
            m_hands.play(window.isSmall() ? moveTo(window.spot()) : moveAsideOfPanel);
            m_hands.play("b+3");
            m_hands.play("b-3");
        });
    }

    void request(const std::string& kind, milliseconds time) {
        verify(m_underlay != nullptr, "there is a window for a request to bring to light");
        watch(*m_underlay, time, [&](int) { ask(kind, m_session); });
        undo();
    }

    void control(const std::string& kind, milliseconds time) {
        verify(m_underlay != nullptr, "there is a window for a request to bring to light");
        // What fills the screen is neither moved nor put below others.
        const bool isOfOrdinary = kind == "move" || kind == "lower";
        const ForeignWindow window(m_server, isOfOrdinary ? "ordinary" : "full-screen", colourAbove);
        waitUntilShown(window);
        watch(window, time, [&](int) { ask(kind, window.window()); });
        undo();
    }

    void waitUntilShown(const ForeignWindow& window) const {
        const auto end = Clock::now() + untilShown;
        while (!isShown(window) && Clock::now() < end) {
            std::this_thread::sleep_for(betweenLooks);
        }
    }

    /// Goes back to the first desktop, and shows its windows.
    void undo() {
        m_server.request(m_server.root(), "_NET_SHOWING_DESKTOP", {0});
        m_server.request(m_server.root(), "_NET_CURRENT_DESKTOP", {0, XCB_CURRENT_TIME});
        std::this_thread::sleep_for(untilUndone);
    }

    template <class Poke> void watch(const ForeignWindow& window, milliseconds time, const Poke& poke) {
        Longest shown;
        Longest focused;
        ForeignWindow::Input input;
        const auto began = Clock::now();
        int poked = 0;
        for (auto now = began; now < began + time; now = Clock::now()) {
            shown.look(isShown(window), now);
            focused.look(window.hasFocus(), now);
            if (poked < pokes && now > began + poked * betweenPokes) {
                poke(poked++);
            }
            const auto more = window.takeInput();
            input.keys += more.keys;
            input.clicks += more.clicks;
            std::this_thread::sleep_for(betweenLooks);
        }
        type(poked % 2 == 1 ? deleteKey : "");
        std::cout << shown.inMs() << ' ' << focused.inMs() << ' ' << input.keys << ' ' << input.clicks << ' '
                  << shown.holdsNow() << ' ' << focused.holdsNow() << ' ' << isSessionInPlace() << '\n';
    }

    void type(std::string_view key) {
        if (!key.empty()) {
            for (const char direction : {'+', '-'}) {
                m_hands.play(std::string(1, direction).append(key));
            }
        }
    }

    void ask(const std::string& kind, xcb_window_t window) {
        constexpr std::uint32_t fromPager = 2;
        constexpr std::uint32_t iconic = 3;
        constexpr std::uint32_t remove = 0;
        constexpr std::uint32_t xAndYAndSize = 0xF00;
        constexpr std::uint32_t below = 1;
        if (kind == "close") {
            m_server.request(window, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, fromPager});
        } else if (kind == "minimise") {
            m_server.request(window, "WM_CHANGE_STATE", {iconic});
        } else if (kind == "un-fullscreen") {
            m_server.request(window, "_NET_WM_STATE",
                             {remove, m_server.atom("_NET_WM_STATE_FULLSCREEN"), 0, fromPager});
        } else if (kind == "move") {
            m_server.request(window, "_NET_MOVERESIZE_WINDOW", {xAndYAndSize | fromPager << 12U, 300, 300, 200, 200});
        } else if (kind == "lower") {
            m_server.request(window, "_NET_RESTACK_WINDOW", {fromPager, XCB_NONE, below});
        } else if (kind == "show-desktop") {
            m_server.request(m_server.root(), "_NET_SHOWING_DESKTOP", {1});
        } else if (kind == "switch-desktop") {
            m_server.request(m_server.root(), "_NET_CURRENT_DESKTOP", {1, XCB_CURRENT_TIME});
        } else {
            fatal("there is no such request");
        }
    }

    [[nodiscard]] static std::string moveTo(ForeignWindow::Point point) {
        std::ostringstream token;
        token << 'm' << point.x << ',' << point.y;
        return token.str();
    }

    [[nodiscard]] bool isShown(const ForeignWindow& window) const {
        const auto spot = window.spot();
        const auto request =
            xcb_get_image(m_server.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_server.root(), spot.x, spot.y, 1, 1, ~0U);
        const auto reply = own(xcb_get_image_reply(m_server.xcb(), request, nullptr));
        constexpr std::uint32_t withoutAlpha = 0xFFFFFF;
        return reply && (*reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(reply.get())) & withoutAlpha) ==
                            window.colour();
    }

    [[nodiscard]] bool isSessionInPlace() const {
        const auto tree =
            own(xcb_query_tree_reply(m_server.xcb(), xcb_query_tree(m_server.xcb(), m_server.root()), nullptr));
        const auto* windows = xcb_query_tree_children(tree.get());
        for (int i = xcb_query_tree_children_length(tree.get()) - 1; i >= 0; --i) {
            const auto attributes = own(xcb_get_window_attributes_reply(
                m_server.xcb(), xcb_get_window_attributes(m_server.xcb(), windows[i]), nullptr));
            const bool isSeen = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                                attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
            if (isSeen) {
                return windows[i] == m_session && coversScreen(windows[i]);
            }
        }
        return false;
    }

    [[nodiscard]] bool coversScreen(xcb_window_t window) const {
        const auto geometry =
            own(xcb_get_geometry_reply(m_server.xcb(), xcb_get_geometry(m_server.xcb(), window), nullptr));
        return geometry && geometry->x == 0 && geometry->y == 0 &&
               geometry->width == m_server.screen().width_in_pixels &&
               geometry->height == m_server.screen().height_in_pixels;
    }

    Server m_server;
    Hands m_hands;
    xcb_window_t m_session = XCB_NONE;
    std::unique_ptr<ForeignWindow> m_backdrop; // without which some window managers have no desktop to show
    std::unique_ptr<ForeignWindow> m_underlay;
};

} // namespace

} // namespace tapalong::siege

int main() {
    tapalong::siege::Siege siege;
    for (std::string line; std::getline(std::cin, line);) {
        siege.obey(line);
    }
}
