#include "platform/linux/x11/Xwayland.h"

#include <xcb/randr.h>

#include <algorithm>
#include <string_view>

namespace tapalong {

namespace {

/// Since version 23.
bool hasItsExtension(xcb_connection_t* xcb) {
    constexpr std::string_view name = "XWAYLAND";
    const auto request = xcb_query_extension(xcb, name.size(), name.data());
    const auto reply = own(xcb_query_extension_reply(xcb, request, nullptr));
    return reply && reply->present != 0;
}

/// What it makes of the keyboards and pointers that the compositor offers. A compositor may offer none.
bool hasItsDevices(xcb_connection_t* xcb) {
    const auto request = xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL);
    const auto reply = own(xcb_input_xi_query_device_reply(xcb, request, nullptr));
    if (!reply) {
        return false;
    }
    for (auto each = xcb_input_xi_query_device_infos_iterator(reply.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        const std::string_view name(xcb_input_xi_device_info_name(each.data), each.data->name_len);
        if (name.starts_with("xwayland-")) {
            return true;
        }
    }
    return false;
}

bool isItsOutput(xcb_connection_t* xcb, xcb_randr_output_t output) {
    const auto request = xcb_randr_get_output_info(xcb, output, XCB_CURRENT_TIME);
    const auto reply = own(xcb_randr_get_output_info_reply(xcb, request, nullptr));
    if (!reply) {
        return false;
    }
    const auto* const bytes = reinterpret_cast<const char*>(xcb_randr_get_output_info_name(reply.get()));
    return std::string_view(bytes, reply->name_len).starts_with("XWAYLAND");
}

/// Later versions may call them as the compositor does.
bool hasItsOutputs(xcb_connection_t* xcb) {
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
    const auto request = xcb_randr_get_screen_resources_current(xcb, root);
    const auto reply = own(xcb_randr_get_screen_resources_current_reply(xcb, request, nullptr));
    if (!reply) {
        return false;
    }
    const auto* const first = xcb_randr_get_screen_resources_current_outputs(reply.get());
    return std::any_of(first, first + reply->num_outputs,
                       [xcb](xcb_randr_output_t output) { return isItsOutput(xcb, output); });
}

bool isPresent(xcb_connection_t* xcb, xcb_extension_t* extension) {
    const auto* const data = xcb_get_extension_data(xcb, extension);
    return data != nullptr && data->present != 0;
}

} // namespace

bool isXwayland(xcb_connection_t* xcb) {
    return hasItsExtension(xcb) || (isPresent(xcb, &xcb_input_id) && hasItsDevices(xcb)) ||
           (isPresent(xcb, &xcb_randr_id) && hasItsOutputs(xcb));
}

} // namespace tapalong
