#include "platform/linux/x11guard/Buttons.h"

#include "platform/linux/x11/XcbHeaders.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tapalong {

namespace {

constexpr std::uint8_t silent = 0;
constexpr std::uint8_t leftClick = 1;
constexpr std::uint8_t rightClick = 3;

/// What each button of a device stands for, the first button first.
using ButtonMap = std::vector<std::uint8_t>;

// These requests are of the input extension's first version, where a device's number is a byte.

std::uint8_t numberOf(std::uint16_t device) {
    return static_cast<std::uint8_t>(device);
}

std::uint8_t buttonAt(std::size_t index) {
    return static_cast<std::uint8_t>(index + 1);
}

/// None of a device that has left.
std::optional<ButtonMap> readMap(xcb_connection_t* xcb, std::uint16_t device) {
    const auto request = xcb_input_get_device_button_mapping(xcb, numberOf(device));
    const auto reply = own(xcb_input_get_device_button_mapping_reply(xcb, request, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    const auto* const first = xcb_input_get_device_button_mapping_map(reply.get());
    return ButtonMap(first, first + reply->map_size);
}

bool writeMap(xcb_connection_t* xcb, std::uint16_t device, const ButtonMap& map) {
    const auto request =
        xcb_input_set_device_button_mapping(xcb, numberOf(device), static_cast<std::uint8_t>(map.size()), map.data());
    const auto reply = own(xcb_input_set_device_button_mapping_reply(xcb, request, nullptr));
    return reply && reply->status == XCB_MAPPING_STATUS_SUCCESS;
}

std::uint8_t eventBase(xcb_connection_t* xcb) {
    return xcb_get_extension_data(xcb, &xcb_input_id)->first_event;
}

} // namespace

bool silenceButtons(xcb_connection_t* xcb, std::uint16_t device, Snapshot& snapshot, const SnapshotNote& note) {
    auto map = readMap(xcb, device);
    if (!map) {
        return false;
    }
    bool isChanged = false;
    for (std::size_t i = 0; i < map->size(); ++i) {
        auto& meaning = map->at(i);
        if (meaning == leftClick || meaning == rightClick || meaning == silent) {
            continue;
        }
        if (!snapshot.keep({.device = device, .button = buttonAt(i), .meaning = meaning})) {
            return false;
        }
        meaning = silent;
        isChanged = true;
    }
    if (!isChanged) {
        return true;
    }
    note.write(snapshot);
    return writeMap(xcb, device, *map);
}

bool putBackButtons(xcb_connection_t* xcb, std::uint16_t device, const Snapshot& snapshot) {
    auto map = readMap(xcb, device);
    if (!map) {
        return false;
    }
    bool isChanged = false;
    for (std::size_t i = 0; i < map->size(); ++i) {
        const auto meaning = snapshot.meaning(device, buttonAt(i));
        if (map->at(i) == silent && meaning) {
            map->at(i) = *meaning;
            isChanged = true;
        }
    }
    return !isChanged || writeMap(xcb, device, *map);
}

void watchButtons(xcb_connection_t* xcb, std::uint16_t device) {
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
    const auto kind = static_cast<std::uint32_t>(eventBase(xcb) + XCB_INPUT_DEVICE_MAPPING_NOTIFY);
    const xcb_input_event_class_t ofDevice = std::uint32_t{device} << 8U | kind;
    xcb_input_select_extension_event(xcb, root, 1, &ofDevice);
}

bool tellsOfButtons(xcb_connection_t* xcb, const xcb_generic_event_t& event) {
    return kindOf(event) == eventBase(xcb) + XCB_INPUT_DEVICE_MAPPING_NOTIFY;
}

} // namespace tapalong
