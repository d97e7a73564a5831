#pragma once

#include <xcb/xcb.h>
#include <xcb/xinput.h>

// A field of this C header is named by a C++ keyword.
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace tapalong {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); } // NOLINT(cppcoreguidelines-no-malloc): xcb's own rule
};

/// What xcb allocates and the caller frees: replies, events, errors.
template <class T> using XcbReply = std::unique_ptr<T, FreeReply>;

/// Takes over a reply of xcb.
template <class T> XcbReply<T> own(T* reply) {
    return XcbReply<T>{reply};
}

/// The event's kind without the mark of events that were sent by a client.
inline std::uint8_t kindOf(const xcb_generic_event_t& event) {
    return event.response_type & 0x7FU;
}

/// The event under the type that its kind stands for.
template <class T> const T& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const T&>(event); // NOLINT(cppcoreguidelines-pro-type-reinterpret-cast): xcb's design
}

/// The XInput 2 event type, or 0 for any other event.
inline std::uint16_t xinputTypeOf(const xcb_generic_event_t& event, std::uint8_t xinputOpcode) {
    const auto& generic = as<xcb_ge_generic_event_t>(event);
    return kindOf(event) == XCB_GE_GENERIC && generic.extension == xinputOpcode ? generic.event_type : 0U;
}

} // namespace tapalong
