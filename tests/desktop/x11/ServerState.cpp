#include "desktop/x11/ServerState.h"

#include <sys/uio.h>
#include <xcb/xcbext.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <span>

namespace tapalong::test {

namespace {

constexpr std::uint16_t wholeMap = 0xFF;

template <class Reply> std::vector<std::uint8_t> bytesOf(const XcbReply<Reply>& reply) {
    if (!reply) {
        return {};
    }
    constexpr std::size_t fixedSize = 32;
    reply->sequence = 0;
    const auto* const first = reinterpret_cast<const std::uint8_t*>(reply.get());
    return {first, first + fixedSize + std::size_t{reply->length} * 4};
}

XcbReply<xcb_xkb_get_map_reply_t> mapOf(xcb_connection_t* xcb, DeviceId device, std::uint16_t parts) {
    return own(xcb_xkb_get_map_reply(
        xcb, xcb_xkb_get_map(xcb, device, parts, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0), nullptr));
}

XcbReply<xcb_xkb_get_controls_reply_t> controlsOf(xcb_connection_t* xcb, DeviceId device) {
    return own(xcb_xkb_get_controls_reply(xcb, xcb_xkb_get_controls(xcb, device), nullptr));
}

void forEachDevice(xcb_connection_t* xcb, const std::function<void(const xcb_input_xi_device_info_t&)>& visit) {
    const auto reply =
        own(xcb_input_xi_query_device_reply(xcb, xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL), nullptr));
    for (auto each = xcb_input_xi_query_device_infos_iterator(reply.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        visit(*each.data);
    }
}

bool isKeyboard(const xcb_input_xi_device_info_t& device) {
    return device.type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD || device.type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD;
}

template <class Request> void send(xcb_connection_t* xcb, Request request) {
    constexpr xcb_protocol_request_t protocol{
        .count = 1, .ext = &xcb_input_id, .opcode = XCB_INPUT_XI_CHANGE_HIERARCHY, .isvoid = 1};
    std::array<iovec, 3> pieces{};
    pieces[2] = {.iov_base = &request, .iov_len = sizeof request};
    xcb_send_request(xcb, 0, &pieces[2], &protocol);
    (void)own(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
}

} // namespace

ServerState ServerState::read(xcb_connection_t* xcb) {
    ServerState result;
    for (const DeviceId device : keyboardDevices(xcb)) {
        const std::string of = " of " + std::to_string(device);
        auto& parts = result.m_parts;
        parts["keymap" + of] = bytesOf(mapOf(xcb, device, wholeMap));
        parts["controls" + of] = bytesOf(controlsOf(xcb, device));
        parts["state" + of] = bytesOf(own(xcb_xkb_get_state_reply(xcb, xcb_xkb_get_state(xcb, device), nullptr)));
        parts["lights" + of] =
            bytesOf(own(xcb_xkb_get_indicator_state_reply(xcb, xcb_xkb_get_indicator_state(xcb, device), nullptr)));
        parts["focus" + of] =
            bytesOf(own(xcb_input_xi_get_focus_reply(xcb, xcb_input_xi_get_focus(xcb, device), nullptr)));
    }
    for (const DeviceId device : pointingDevices(xcb)) {
        result.m_parts["buttons of " + std::to_string(device)] = buttonMap(xcb, device);
    }
    return result;
}

std::string ServerState::differencesTo(const ServerState& other) const {
    std::string names;
    for (const auto& [name, bytes] : m_parts) {
        const auto found = other.m_parts.find(name);
        if (bytes.empty() || found == other.m_parts.end() || found->second != bytes) {
            names += name + "; ";
        }
    }
    return m_parts.size() == other.m_parts.size() ? names : names + "not the same devices";
}

std::vector<DeviceId> keyboardDevices(xcb_connection_t* xcb) {
    std::vector<DeviceId> devices;
    forEachDevice(xcb, [&devices](const auto& device) {
        if (isKeyboard(device)) {
            devices.push_back(device.deviceid);
        }
    });
    return devices;
}

std::size_t countActions(xcb_connection_t* xcb, DeviceId device, const std::vector<std::uint8_t>& types) {
    const auto reply = mapOf(xcb, device, XCB_XKB_MAP_PART_KEY_ACTIONS);
    if (!reply) {
        return 0;
    }
    xcb_xkb_get_map_map_t map{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(reply.get()), 0, 0, reply->nKeyActions, reply->totalActions, 0, 0, 0,
                               0, 0, reply->present, &map);
    const std::span actions(map.acts_rtrn_acts, reply->totalActions);
    return static_cast<std::size_t>(std::count_if(actions.begin(), actions.end(), [&types](const auto& action) {
        return std::find(types.begin(), types.end(), action.type) != types.end();
    }));
}

std::size_t countActions(xcb_connection_t* xcb, const std::vector<std::uint8_t>& types) {
    std::size_t count = 0;
    for (const DeviceId device : keyboardDevices(xcb)) {
        count += countActions(xcb, device, types);
    }
    return count;
}

std::uint32_t controlsOn(xcb_connection_t* xcb) {
    std::uint32_t on = 0;
    for (const DeviceId device : keyboardDevices(xcb)) {
        if (const auto controls = controlsOf(xcb, device)) {
            on |= controls->enabledControls;
        }
    }
    return on;
}

void setControls(xcb_connection_t* xcb, std::uint32_t which, std::uint32_t enabled) {
    constexpr std::array<std::uint8_t, 32> repeats{};
    for (const DeviceId device : keyboardDevices(xcb)) {
        xcb_xkb_set_controls(xcb, device, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, which, enabled,
                             XCB_XKB_CONTROL_CONTROLS_ENABLED, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                             repeats.data());
    }
    (void)controlsOn(xcb); // an answer, so it is done
}

std::vector<DeviceId> pointingDevices(xcb_connection_t* xcb) {
    std::vector<DeviceId> devices;
    forEachDevice(xcb, [&devices](const auto& device) {
        if (device.type == XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER) {
            devices.push_back(device.deviceid);
        }
    });
    return devices;
}

ButtonMap buttonMap(xcb_connection_t* xcb, DeviceId device) {
    const auto request = xcb_input_get_device_button_mapping(xcb, static_cast<std::uint8_t>(device));
    const auto reply = own(xcb_input_get_device_button_mapping_reply(xcb, request, nullptr));
    if (!reply) {
        return {};
    }
    const std::span map(xcb_input_get_device_button_mapping_map(reply.get()), reply->map_size);
    return {map.begin(), map.end()};
}

bool setButtonMap(xcb_connection_t* xcb, DeviceId device, const ButtonMap& map) {
    const auto request = xcb_input_set_device_button_mapping(xcb, static_cast<std::uint8_t>(device),
                                                             static_cast<std::uint8_t>(map.size()), map.data());
    const auto reply = own(xcb_input_set_device_button_mapping_reply(xcb, request, nullptr));
    return reply && reply->status == XCB_MAPPING_STATUS_SUCCESS;
}

DeviceId clickingDevice(xcb_connection_t* xcb) {
    DeviceId found = 0;
    forEachDevice(xcb, [&found](const auto& device) {
        const std::string name(xcb_input_xi_device_info_name(&device), device.name_len);
        if (name == "Virtual core XTEST pointer") {
            found = device.deviceid;
        }
    });
    return found;
}

DeviceBinding DeviceBinding::ofKey(std::uint32_t kernelCode) {
    return {XCB_INPUT_GRAB_TYPE_KEYCODE, kernelCode + 8, XCB_INPUT_KEY_PRESS};
}

DeviceBinding DeviceBinding::ofButton(std::uint8_t button) {
    return {XCB_INPUT_GRAB_TYPE_BUTTON, button, XCB_INPUT_BUTTON_PRESS};
}

DeviceBinding::DeviceBinding(std::uint8_t grabType, std::uint32_t detail, std::uint16_t pressEvent)
    : m_xcb(xcb_connect(nullptr, nullptr), &xcb_disconnect), m_pressEvent(pressEvent) {
    auto* xcb = m_xcb.get();
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
    const auto version = own(xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
    const auto wanted = grabType == XCB_INPUT_GRAB_TYPE_KEYCODE ? XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD
                                                                : XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER;
    const std::uint32_t events = 1U << pressEvent | 1U << (pressEvent + 1U);
    constexpr std::uint32_t anyModifier = XCB_INPUT_MODIFIER_MASK_ANY;
    forEachDevice(xcb, [&](const auto& device) {
        if (device.type == wanted) {
            const auto request = xcb_input_xi_passive_grab_device(
                xcb, XCB_CURRENT_TIME, root, XCB_NONE, detail, device.deviceid, 1, 1, grabType,
                XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_GRAB_MODE_ASYNC, 1, &events, &anyModifier);
            (void)own(xcb_input_xi_passive_grab_device_reply(xcb, request, nullptr));
        }
    });
}

std::size_t DeviceBinding::presses() {
    auto* xcb = m_xcb.get();
    (void)own(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
    while (const auto event = own(xcb_poll_for_event(xcb))) {
        const bool isPress =
            kindOf(*event) == XCB_GE_GENERIC && as<xcb_ge_generic_event_t>(*event).event_type == m_pressEvent;
        m_presses += isPress ? 1 : 0;
    }
    return m_presses;
}

PluggedSeat::PluggedSeat(xcb_connection_t* xcb) : m_xcb(xcb) {
    const auto before = keyboardDevices(xcb);
    // The library leaves the changes of a hierarchy to its users to put together.
    struct {
        std::uint8_t opcodes[2];
        std::uint16_t length;
        std::uint8_t changes = 1;
        std::uint8_t pad[3];
        std::uint16_t type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_ADD_MASTER;
        std::uint16_t words = 3;
        std::uint16_t nameLength = 4;
        std::uint8_t sendCore = 1;
        std::uint8_t enable = 1;
        char name[4] = {'s', 'e', 'a', 't'};
    } request{};
    send(xcb, request);
    for (const DeviceId device : keyboardDevices(xcb)) {
        if (std::find(before.begin(), before.end(), device) == before.end()) {
            m_keyboards.push_back(device);
        }
    }
    forEachDevice(xcb, [this](const auto& device) {
        const std::string name(xcb_input_xi_device_info_name(&device), device.name_len);
        if (device.type == XCB_INPUT_DEVICE_TYPE_MASTER_POINTER && name == "seat pointer") {
            m_pointer = device.deviceid;
        }
    });
}

void PluggedSeat::focus(xcb_window_t window) const {
    xcb_input_xi_set_focus(m_xcb, window, XCB_CURRENT_TIME, m_keyboards.at(0));
    xcb_flush(m_xcb);
}

void PluggedSeat::tap(std::uint32_t kernelCode) const {
    const auto firstEvent = xcb_get_extension_data(m_xcb, &xcb_input_id)->first_event;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(m_xcb)).data->root;
    for (const int type : {XCB_INPUT_DEVICE_KEY_PRESS, XCB_INPUT_DEVICE_KEY_RELEASE}) {
        xcb_test_fake_input(m_xcb, static_cast<std::uint8_t>(firstEvent + type),
                            static_cast<std::uint8_t>(kernelCode + 8), XCB_CURRENT_TIME, root, 0, 0,
                            static_cast<std::uint8_t>(m_keyboards.at(0)));
    }
    xcb_flush(m_xcb);
}

bool PluggedSeat::grab() const {
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(m_xcb)).data->root;
    constexpr std::uint32_t noEvents = 0;
    const auto request = xcb_input_xi_grab_device(m_xcb, root, XCB_CURRENT_TIME, XCB_NONE, m_keyboards.at(0),
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, 0, 1, &noEvents);
    const auto reply = own(xcb_input_xi_grab_device_reply(m_xcb, request, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void PluggedSeat::ungrab() const {
    xcb_input_xi_ungrab_device(m_xcb, XCB_CURRENT_TIME, m_keyboards.at(0));
    xcb_flush(m_xcb);
}

void PluggedSeat::unplug() {
    if (m_pointer == 0) {
        return;
    }
    struct {
        std::uint8_t opcodes[2];
        std::uint16_t length;
        std::uint8_t changes = 1;
        std::uint8_t pad[3];
        std::uint16_t type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_REMOVE_MASTER;
        std::uint16_t words = 3;
        std::uint16_t device;
        std::uint8_t returnMode = XCB_INPUT_CHANGE_MODE_FLOAT;
        std::uint8_t pad1;
        std::uint16_t returns[2];
    } request{};
    request.device = m_pointer;
    send(m_xcb, request);
    m_pointer = 0;
}

} // namespace tapalong::test
