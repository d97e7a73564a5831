#include "platform/linux/x11guard/OtherSeats.h"

#include "platform/linux/x11/XcbHeaders.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tapalong {

namespace {

/// None when the server does not say.
std::optional<std::vector<xcb_input_device_id_t>> devicesOfOtherSeats(xcb_connection_t* xcb) {
    // The server chooses a client's pointer, and says which, once the client has asked for what goes by one.
    (void)own(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
    const auto ours =
        own(xcb_input_xi_get_client_pointer_reply(xcb, xcb_input_xi_get_client_pointer(xcb, XCB_NONE), nullptr));
    const auto all =
        own(xcb_input_xi_query_device_reply(xcb, xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL_MASTER), nullptr));
    if (!ours || ours->set == 0 || !all) {
        return std::nullopt;
    }
    std::vector<xcb_input_device_id_t> found;
    for (auto each = xcb_input_xi_query_device_infos_iterator(all.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        // The two of a pair name each other.
        if (each.data->deviceid != ours->deviceid && each.data->attachment != ours->deviceid) {
            found.push_back(each.data->deviceid);
        }
    }
    return found;
}

bool grab(xcb_connection_t* xcb, xcb_input_device_id_t device) {
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
    constexpr std::uint32_t noEvents = 0;
    const auto request = xcb_input_xi_grab_device(xcb, root, XCB_CURRENT_TIME, XCB_NONE, device, XCB_GRAB_MODE_ASYNC,
                                                  XCB_GRAB_MODE_ASYNC, 0, 1, &noEvents);
    const auto reply = own(xcb_input_xi_grab_device_reply(xcb, request, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

} // namespace

bool grabOtherSeats(xcb_connection_t* xcb) {
    const auto devices = devicesOfOtherSeats(xcb);
    if (!devices) {
        return false;
    }
    bool areAllHeld = true;
    for (const auto device : *devices) {
        areAllHeld = grab(xcb, device) && areAllHeld;
    }
    return areAllHeld;
}

void releaseOtherSeats(xcb_connection_t* xcb) {
    for (const auto device : devicesOfOtherSeats(xcb).value_or(std::vector<xcb_input_device_id_t>{})) {
        xcb_input_xi_ungrab_device(xcb, XCB_CURRENT_TIME, device);
    }
}

} // namespace tapalong
