#pragma once

#include "desktop/siege/client/Server.h"

#include <map>

namespace tapalong::siege {

/// Another program with a window, that also watches the desktop as a pager does. Whatever input does outside the
/// guarded window shows here: keys and buttons that others get, grabs that fire (the guarded window is told of them as
/// a change of focus, whoever's they are), changes of the active window, the workspace, and the windows on the screen.
class Watcher {
public:
    Watcher();

    /// From now on `window` is the one whose keys these are; all that was seen before is forgotten.
    void guard(xcb_window_t window);

    /// Appends what was seen since the last call.
    void collect(std::vector<std::string>& sightings);

    [[nodiscard]] xcb_window_t guarded() const { return m_guarded; }
    [[nodiscard]] const Server& server() const { return m_server; }

private:
    void openBystander();
    [[nodiscard]] std::string seen(const xcb_generic_event_t& event);
    [[nodiscard]] std::string seenOfInput(const xcb_generic_event_t& event) const;
    [[nodiscard]] std::string seenOfFocus(const xcb_focus_in_event_t& event, bool isIn) const;
    [[nodiscard]] std::string seenOfWindows(const xcb_generic_event_t& event) const;
    [[nodiscard]] std::string seenOfDesktop(const xcb_property_notify_event_t& event);

    Server m_server;
    xcb_window_t m_bystander = XCB_NONE;
    xcb_window_t m_guarded = XCB_NONE;
    std::map<xcb_atom_t, std::string> m_desktopProperties;
    std::map<xcb_atom_t, std::vector<std::uint32_t>> m_desktop;
};

} // namespace tapalong::siege
