#include "desktop/siege/client/DeviceListener.h"

#include "base/Fatal.h"

namespace tapalong::siege {

DeviceListener::DeviceListener() {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{.head = {.deviceid = XCB_INPUT_DEVICE_ALL, .mask_len = 1},
                .mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS};
    const auto request = xcb_input_xi_select_events_checked(m_server.xcb(), m_server.root(), 1, &selection.head);
    verify(own(xcb_request_check(m_server.xcb(), request)) == nullptr, "every client may listen to the devices");
}

void DeviceListener::collect(std::vector<std::string>& sightings) {
    m_server.sync();
    while (const auto event = m_server.poll()) {
        const auto type = xinputTypeOf(*event, m_server.xinputOpcode());
        if (type != XCB_INPUT_KEY_PRESS && type != XCB_INPUT_BUTTON_PRESS) {
            continue;
        }
        const auto& input = as<xcb_input_key_press_event_t>(*event);
        // What a device does is told once more as what the pointer and keyboard do that all programs share.
        if (input.deviceid == input.sourceid) {
            sightings.push_back(
                "a client listening to each device got " +
                (type == XCB_INPUT_KEY_PRESS ? keyName(input.detail) : "button " + std::to_string(input.detail)));
        }
    }
}

} // namespace tapalong::siege
