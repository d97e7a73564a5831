#include "desktop/siege/client/Server.h"

#include "base/Fatal.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace tapalong::siege {

Server::Server() : m_xcb(xcb_connect(nullptr, nullptr), &xcb_disconnect) {
    verify(xcb_connection_has_error(xcb()) == 0, "the display of the tests can be opened");
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(xcb())).data;
    m_xinputOpcode = xcb_get_extension_data(xcb(), &xcb_input_id)->major_opcode;
    (void)own(xcb_input_xi_query_version_reply(xcb(), xcb_input_xi_query_version(xcb(), 2, 2), nullptr));
    m_xkbEventBase = xcb_get_extension_data(xcb(), &xcb_xkb_id)->first_event;
    (void)own(xcb_xkb_use_extension_reply(xcb(), xcb_xkb_use_extension(xcb(), 1, 0), nullptr));
}

xcb_atom_t Server::atom(const std::string& name) const {
    const auto request = xcb_intern_atom(xcb(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    return own(xcb_intern_atom_reply(xcb(), request, nullptr))->atom;
}

std::vector<std::uint32_t> Server::property(xcb_window_t window, xcb_atom_t name) const {
    const auto request = xcb_get_property(xcb(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 1024);
    const auto reply = own(xcb_get_property_reply(xcb(), request, nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}

void Server::setProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                         const std::vector<std::uint32_t>& values) const {
    xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, window, name, type, 32, static_cast<std::uint32_t>(values.size()),
                        values.data());
}

xcb_window_t Server::focus() const {
    return own(xcb_get_input_focus_reply(xcb(), xcb_get_input_focus(xcb()), nullptr))->focus;
}

std::vector<xcb_input_device_id_t> Server::devices(std::uint16_t type) const {
    const auto request = xcb_input_xi_query_device(xcb(), XCB_INPUT_DEVICE_ALL);
    const auto reply = own(xcb_input_xi_query_device_reply(xcb(), request, nullptr));
    std::vector<xcb_input_device_id_t> found;
    for (auto each = xcb_input_xi_query_device_infos_iterator(reply.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        if (each.data->type == type) {
            found.push_back(each.data->deviceid);
        }
    }
    return found;
}

void Server::request(xcb_window_t window, const std::string& what, const std::vector<std::uint32_t>& data) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(what);
    std::copy(data.begin(), data.end(), message.data.data32);
    constexpr std::uint32_t toWindowManager = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_send_event(xcb(), 0, root(), toWindowManager, reinterpret_cast<const char*>(&message));
    xcb_flush(xcb());
}

void Server::select(xcb_window_t window, std::uint32_t events) const {
    const auto attributes =
        own(xcb_get_window_attributes_reply(xcb(), xcb_get_window_attributes(xcb(), window), nullptr));
    if (attributes) {
        const std::uint32_t mask = attributes->your_event_mask | events;
        xcb_change_window_attributes(xcb(), window, XCB_CW_EVENT_MASK, &mask);
    }
}

void Server::sync() const {
    (void)own(xcb_get_input_focus_reply(xcb(), xcb_get_input_focus(xcb()), nullptr));
}

std::string hex(std::uint32_t number) {
    std::ostringstream text;
    text << "0x" << std::hex << number;
    return text.str();
}

std::string keyName(std::uint32_t keycode) {
    return "key " + std::to_string(keycode);
}

} // namespace tapalong::siege
