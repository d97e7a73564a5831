#include "platform/linux/x11/WindowManagerName.h"

#include <cstring>
#include <string_view>

namespace tapalong {

namespace {

std::string property(xcb_connection_t* xcb, xcb_window_t window, std::string_view name) {
    constexpr std::uint32_t words = 64; // more than any name needs
    const auto atom = own(xcb_intern_atom_reply(
        xcb, xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
    if (!atom) {
        return {};
    }
    const auto reply = own(xcb_get_property_reply(
        xcb, xcb_get_property(xcb, 0, window, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, words), nullptr));
    if (!reply) {
        return {};
    }
    const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return {bytes, static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

} // namespace

std::string windowManagerName(xcb_connection_t* xcb, xcb_window_t root) {
    const auto check = property(xcb, root, "_NET_SUPPORTING_WM_CHECK");
    xcb_window_t window = XCB_NONE;
    if (check.size() != sizeof window) {
        return {};
    }
    std::memcpy(&window, check.data(), sizeof window);
    return property(xcb, window, "_NET_WM_NAME");
}

} // namespace tapalong
