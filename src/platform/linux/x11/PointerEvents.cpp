#include "platform/linux/x11/PointerEvents.h"

namespace tapalong {

namespace {

constexpr std::uint32_t leftButton = 1;
constexpr std::uint32_t rightButton = 3;
constexpr std::uint32_t firstWheelButton = 4;
constexpr std::uint32_t lastWheelButton = 7;

EventType motionType(bool leftIsDown) {
    return leftIsDown ? EventType::leftMouseDragged : EventType::mouseMoved;
}

bool leftIsDown(const xcb_input_motion_event_t& event) {
    return event.buttons_len > 0 && (*xcb_input_button_press_button_mask(&event) >> leftButton & 1U) != 0;
}

// Qt gets each event twice, of the mouse and of the pointer that it moves, and disregards the former.
bool isOfSlaveDevice(const xcb_input_button_press_event_t& event) {
    return event.deviceid == event.sourceid;
}

std::optional<EventType> typeOf(const xcb_generic_event_t& event, std::uint8_t xinputOpcode) {
    switch (kindOf(event)) {
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
        return buttonEventType(as<xcb_button_press_event_t>(event).detail, kindOf(event) == XCB_BUTTON_PRESS);
    case XCB_MOTION_NOTIFY:
        return motionType((as<xcb_motion_notify_event_t>(event).state & XCB_BUTTON_MASK_1) != 0);
    default:
        break;
    }
    const std::uint16_t xinputType = xinputTypeOf(event, xinputOpcode);
    if (xinputType != 0 && isOfSlaveDevice(as<xcb_input_button_press_event_t>(event))) {
        return std::nullopt;
    }
    switch (xinputType) {
    case XCB_INPUT_BUTTON_PRESS:
        return buttonEventType(as<xcb_input_button_press_event_t>(event).detail, true);
    case XCB_INPUT_BUTTON_RELEASE:
        return buttonEventType(as<xcb_input_button_press_event_t>(event).detail, false);
    case XCB_INPUT_MOTION:
        return motionType(leftIsDown(as<xcb_input_motion_event_t>(event)));
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<EventType> buttonEventType(std::uint32_t button, bool isPress) {
    if (button == leftButton) {
        return isPress ? EventType::leftMouseDown : EventType::leftMouseUp;
    }
    if (button == rightButton) {
        return isPress ? EventType::rightMouseDown : EventType::rightMouseUp;
    }
    if (button >= firstWheelButton && button <= lastWheelButton) {
        return isPress ? std::optional(EventType::scrollWheel) : std::nullopt;
    }
    return isPress ? EventType::otherMouseDown : EventType::otherMouseUp;
}

std::optional<InputEvent> pointerEventOf(const xcb_generic_event_t& event, std::uint8_t xinputOpcode,
                                         ModifierFlags keyboardFlags) {
    const auto type = typeOf(event, xinputOpcode);
    if (!type) {
        return std::nullopt;
    }
    return InputEvent{.type = *type, .modifierFlags = keyboardFlags};
}

} // namespace tapalong
