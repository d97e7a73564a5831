#include "platform/linux/x11guard/Devices.h"

#include <algorithm>

namespace tapalong {

namespace {

bool hasClass(const xcb_input_xi_device_info_t& device, std::uint16_t type) {
    for (auto each = xcb_input_xi_device_info_classes_iterator(&device); each.rem > 0;
         xcb_input_device_class_next(&each)) {
        if (each.data->type == type) {
            return true;
        }
    }
    return false;
}

bool isMaster(const xcb_input_xi_device_info_t& device) {
    return device.type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD || device.type == XCB_INPUT_DEVICE_TYPE_MASTER_POINTER;
}

} // namespace

std::optional<std::vector<Device>> inputDevices(xcb_connection_t* xcb) {
    const auto reply =
        own(xcb_input_xi_query_device_reply(xcb, xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL), nullptr));
    if (!reply) {
        return std::nullopt;
    }
    std::vector<Device> found;
    for (auto each = xcb_input_xi_query_device_infos_iterator(reply.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        found.push_back({.id = each.data->deviceid,
                         .isMaster = isMaster(*each.data),
                         .hasKeys = hasClass(*each.data, XCB_INPUT_DEVICE_CLASS_TYPE_KEY),
                         .hasButtons = hasClass(*each.data, XCB_INPUT_DEVICE_CLASS_TYPE_BUTTON)});
    }
    std::stable_partition(found.begin(), found.end(), [](const Device& each) { return each.isMaster; });
    return found;
}

} // namespace tapalong
